#pragma once

/// The stock dialogs that wait for an answer. Each stands in the middle of the terminal, breaks its
/// message between words and reads keys until Enter or space; other keys but TAB do nothing.

/// Shows a message with an "OK" button.
void showMessage(const char* message, const char* title);

/// Asks a question; "No" has the focus at first. Returns 1 for "Yes" and 0 for "No".
int askYesNo(const char* message, const char* title);

/// Tells that a port is taken; "Retry" has the focus at first and probes `port` (0 to 65535) on
/// `host`, a dotted address, again under a pending box. Returns 0 for "Back", 1 when the port was
/// found free on "Retry", -1 when it was not.
int askRetryOrBack(const char* message, const char* title, const char* host, int port);
