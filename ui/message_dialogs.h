#pragma once

class Window;

/// The stock dialogs that wait for an answer. Each stands in the middle of the terminal on top of
/// everything else, breaks its message between words and reads keys until Enter or space; other
/// keys but TAB do nothing. Only one can be open at a time; while it is, `screen_state` is its own.

/// Shows a message with an "OK" button.
void showMessage(const char* message, const char* title);

/// Asks a question; "No" has the focus at first. Returns 1 for "Yes" and 0 for "No".
int askYesNo(const char* message, const char* title);

/// Tells that a port is taken; "Retry" has the focus at first and probes it again, as below.
/// Returns 0 for "Back", 1 when the port was found free on "Retry", -1 when it was not.
int askRetryOrBack(const char* message, const char* title, const char* host, int port);

/// Probes `port` (0 to 65535) on `host`, a dotted address, under a pending box. Returns true when
/// it is free.
bool probe_port_visibly(const char* host, int port);

/// Puts the dialog, if there is one, into the middle of the terminal's present size and shows it.
void place_dialog();

/// The boxes that stay on the screen while slow work runs. Only one can be open at a time; while it
/// is, `screen_state` is that of a pending box.

/// Shows a box four columns wider than its message, but at least 8 wide. A message that leaves less
/// than four columns of the terminal is broken into lines under the title "Error!", not `title`.
void showPending(const char* message, const char* title);

/// Shows the box in which the progress of the apply sequence is listed, 18 lines by 60 columns.
void showApplyPending(const char* message, const char* title);

/// Takes the box, if there is one, off the screen without closing it.
void hidePending();

/// Takes the box, if there is one, away and puts the former `screen_state` back.
void closePending();

/// Puts the box, if there is one, where the terminal's present size wants it and draws it.
/// The caller shows it, once what stands in it has been moved too.
void placePending();

/// The frame of the box that is open, null where none is; owned by the box.
Window* pending_frame();
