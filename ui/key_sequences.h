#pragma once

/// Teaches curses what keyboards send beside what the terminal's description has; to be called when
/// keypad is on. Many a terminal is not quite the one that TERM names, or keeps to the other mode
/// of its cursor keys, and what it sends would then be typed into a field, unseen where that is for
/// a password. A cursor key, backspace or Enter of the description stays what it is.
void learn_key_sequences();
