#pragma once

#include "screens/screen.h"

/// The screens that choose the interface and the port of a listener of the server: one for
/// WebAdmin, and one that SMTP, POP3, IMAP and WebMail share in turn. Each is built on its first
/// visit and keeps what was typed.
extern Screen webadmin_screen;
extern Screen service_screen;

/// Shows the screen of the listener that `screen_state` names until a button has been pressed.
/// "OK" checks the port, probes it and asks back where a loopback interface was chosen, before it
/// goes on; see Listener for what is stored when.
void listener_screen_entry();
