#pragma once

#include "ui/terminal/colours.h"
