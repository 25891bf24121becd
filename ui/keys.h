#pragma once

#include <curses.h>

class Window;

/// The keys that every key loop knows.
constexpr int key_tab = 9;
constexpr int key_enter = 10;
constexpr int key_space = 32;

/// True for the keys that press a button and end a dialog: Enter and space.
bool is_press(int key);

/// Waits for a key and returns it as wgetch(3X) does, with keypad on, but the keypad's Enter as
/// `key_enter`, and a control sequence that nobody knows as one key that no screen knows. Ctrl-L
/// has everything drawn anew first. Reads from the curses window of `widget`, or from the standard
/// screen if it has none; keeps the window's no-delay mode, but waits, without processor time, in
/// that mode too. Signals are let in only while no key is there. When the input has come to its end
/// the process sends itself SIGHUP.
int read_key(const Window& widget);

/// Reads and forgets one key of `window` without waiting, and without showing what has changed in
/// it. Switches its keypad on, and its no-delay mode on if `stay_in_no_delay`, else off.
void drain_key(WINDOW* window, bool stay_in_no_delay);
