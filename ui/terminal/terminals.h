#pragma once

/// The terminals that the wizard was started on, one to three: those among its standard input,
/// output and error. Curses sets the modes of one of them, which need not be the one that the keys
/// come from, and waits for all output before it gives them back, which may last for ever. So the
/// wizard sees to the modes itself. While it is in the background they are somebody else's: it
/// stops before it takes them.

/// Remembers the terminals' modes, the ones to go back to, once the wizard is in the foreground.
/// Anything may become of the standard descriptors from then on.
void remember_terminals();

/// Takes the modes that curses has set for the wizard's own, with echo off and keys that come one
/// by one wherever curses didn't reach, and sets them.
void keep_terminals();

/// Sets these modes again; stops first while the wizard is in the background (MayStop). Does
/// nothing before keep_terminals(). False if a terminal can't be had any more.
bool retake_terminals();

/// False while one of the terminals has somebody else in its foreground.
bool are_terminals_in_front();

/// Sets the remembered modes without waiting for output, and throws away what has been typed and
/// not been read: it was meant for the wizard, not for the program that reads next. In the
/// background the modes that somebody else has set stay, and so does the input. To be called as
/// often as one likes; async-signal-safe.
void give_terminals_back();

/// A descriptor of the terminal that tells the size of the screen: standard output, else standard
/// error, as curses has it, else standard input; -1 if none of them is a terminal. It stays the
/// module's.
int screen_terminal();
