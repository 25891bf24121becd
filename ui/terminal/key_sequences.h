#pragma once

#include <curses.h>

/// Teaches curses what keyboards send beside what the terminal's description has; to be called when
/// keypad is on. Many a terminal is not quite the one that TERM names, or keeps to the other mode
/// of its cursor keys, and what it sends would then be typed into a field, unseen where that is for
/// a password. A cursor key, backspace or Enter of the description stays what it is.
void learn_key_sequences();

/// To be called when wgetch(3X) has just read ESC from `window`: takes away the rest of a control
/// sequence (ESC [ parameters and a last byte, or ESC O and one) that curses does not know, as far
/// as it arrives in one piece, that is, ESCDELAY milliseconds after the byte before at most. False
/// if no whole sequence follows, as after the key Escape; everything is then there to be read.
/// Changes the time that the window waits for a key.
bool skip_control_sequence(WINDOW* window);
