#pragma once

/// The one session that the wizard has with the server's command-line interface. It is opened after
/// the server has been restarted and stays open until the program ends.

/// The session's socket; -1 while there is none.
extern int cli_socket;

/// Connects to `cli_host` and `cli_port`, two seconds after it is called, in one attempt that lasts
/// as long as the host makes it, letting signals in. Returns 0, or the errno of what failed; the
/// session has no socket then.
int cli_connect();

/// Reads lines until one contains "> ". Returns 0, or 1 when a line can't be read.
int cli_wait_prompt();

/// Sends a command and reads its reply up to the prompt. Returns 0 when a line of it, the prompt's
/// included, contains "+OK:"; 1 when none does, or when the command can't be sent or a line can't
/// be read.
int cli_command(const char* text);

/// The same for a command put together as printf(3) does; 1 for one that is too long.
int cli_command_format(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Waits up to four seconds until the server's process id is known, connects and logs in as the
/// administrator with the password in the selected installation profile. Nothing is sent, and the
/// session closed, where the other end turns out, in at most two seconds behind the greeting, to
/// belong to another user than the wizard's own end or the server's account. Returns 0 when logged
/// in, else 1.
int cli_login();

/// Whether the session's other end has been seen to belong to the wizard's own user, root; false
/// where that is the user "teluma", or where nothing could be looked at.
bool cli_server_is_root();
