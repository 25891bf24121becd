#include "ui/main_window.h"

Window* main_window = nullptr;
