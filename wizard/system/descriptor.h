#pragma once

// For includes of before the owner of a descriptor moved.
#include "wizard/system/descriptor.h"
