#pragma once

#include "ui/main_window.h"  // moved
