// As much of wide ncurses' header as tells it from another curses.
#pragma once

#include <wchar.h>

extern "C" {
#if NCURSES_WIDECHAR
int get_wch(wint_t* character);
#endif
int key_defined(const char* sequence);
}
