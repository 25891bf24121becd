#pragma once

class Window;

/// The boxes that stay on the screen while slow work runs. Only one can be open at a time, in
/// `on_screen.pending`; while it is, `screen_state` is that of a pending box.

/// Shows a box as wide as its message. A message longer than the terminal is wide, less four
/// columns, is broken into lines under the title "Error!" instead of `title`. Returns at once.
void showPending(const char* message, const char* title);

/// Shows the box in which the progress of the apply sequence is listed, 18 lines by 60 columns.
/// Returns at once.
void showApplyPending(const char* message, const char* title);

/// Takes the box, if there is one, off the screen without closing it.
void hidePending();

/// Takes the box, if there is one, away and puts the former `screen_state` back.
void closePending();

/// Puts the box, if there is one, where the terminal's present size wants it and draws it.
/// The caller shows it, once what stands in it has been moved too: beyond the edge of a terminal
/// that has become narrower curses reads what is not there.
void placePending();

/// The frame of the box that is open, null where none is; owned by the box.
Window* pending_frame();
