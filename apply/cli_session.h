#pragma once

#include <functional>
#include <string>

/// Talking to the server's command-line interface over `server_session.socket`.

/// Connects to the host and port that the configuration names, two seconds after it is called, in
/// one attempt that lasts as long as the host makes it, letting signals in. Returns 0, or the errno
/// of what failed; the session has no socket then.
int cli_connect();

/// Hands each line of a reply to `take`, up to the one for which that returns true. Returns 0, or 1
/// when a line can't be read.
int cli_read_reply(const std::function<bool(const std::string&)>& take);

/// Sends a command first. Returns 1 also when it can't be sent.
int cli_ask(const char* command, const std::function<bool(const std::string&)>& take);

/// Reads lines until one contains "> ". Returns 0, or 1 when a line can't be read.
int cli_wait_prompt();

/// Sends a command and reads its reply up to the prompt. Returns 0 when a line of it, the prompt's
/// included, contains "+OK:"; 1 when none does, or when the command can't be sent or a line can't
/// be read.
int cli_command(const char* text);

/// Waits up to four seconds until the server's process id is known, connects and logs in as the
/// administrator with the password in the selected installation profile. Nothing is sent, and the
/// session closed, where the other end turns out, in at most two seconds after the greeting, to
/// belong to another user than the wizard's own or the server's account. Returns 0 when logged in,
/// else 1.
int cli_login();

/// Whether a line of a reply holds this text.
inline bool holds(const std::string& line, const char* text) {
    return line.find(text) != std::string::npos;
}
