#pragma once

#include <curses.h>

struct PANEL;

extern "C" PANEL* panel_above(const PANEL* panel);
