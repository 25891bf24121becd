#pragma once

#include "ui/text_field.h"  // moved
#include "wizard/base/heap_text.h"
