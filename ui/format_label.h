#pragma once

#include "ui/label.h"  // moved
