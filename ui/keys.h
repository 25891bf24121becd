#pragma once

#include <curses.h>

class Window;

/// The keys that every key loop knows.
constexpr int key_tab = 9;
constexpr int key_enter = 10;
constexpr int key_space = 32;

/// True for the keys that press a button and end a dialog: Enter and space.
bool is_press(int key);

/// Waits for a key, reading from the curses window of `widget` with keypad on, and returns it as
/// wgetch(3X) does, but the keypad's Enter as `key_enter`; from the standard screen should the
/// widget have no curses window. A control sequence that is known to nobody is one key, which no
/// screen knows; Ctrl-L has everything drawn anew before it is returned. A key that curses already
/// holds comes first; signals are let in only while none is there. While it waits it uses no
/// processor time, also where the window is in no-delay mode, which it keeps. When the input has
/// come to its end the process sends itself SIGHUP.
int read_key(const Window& widget);

/// Reads and forgets one key of `window` without waiting, and without showing anything of a window
/// that has changed since it was last shown. Switches the window's keypad on and leaves it in
/// no-delay mode if `stay_in_no_delay`, else out of it.
void drain_key(WINDOW* window, bool stay_in_no_delay);
