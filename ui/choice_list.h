#pragma once

#include "ui/list.h"  // moved
#include "wizard/base/heap_text.h"
