#include "wizard/base/screen_size.h"

int screen_rows = -1;
int screen_cols = -1;
