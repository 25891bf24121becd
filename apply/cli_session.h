#pragma once

#include <cstddef>
#include <functional>
#include <string>

/// Talking to the server's command-line interface, 8-bit text in both directions. A command is a
/// line ended by CR LF. A reply is a series of such lines and, at its end, a prompt: a fragment
/// that ends in "> " without CR LF. Where something has to wait, signals are let in.

/// The longest command and the longest line of a reply, in characters.
constexpr std::size_t cli_command_limit = 997;
constexpr std::size_t cli_line_limit = 256;

/// Sends `text` and CR LF on `descriptor`, all of it. Returns 0, or the errno of the first write
/// that failed; EMSGSIZE for a text that is too long, of which nothing is sent.
int cli_send_line(int descriptor, const char* text);

/// Reads one line of a reply, without its CR LF, or the prompt. A CR not followed by LF is left out
/// together with what follows it, and so is a ">" not followed by a space. Returns a malloc'ed text
/// that the caller frees, or null when the connection ended or failed or the line is too long.
char* cli_read_line(int descriptor);

/// The others use `server_session.socket`.

/// Connects to the host and port that the configuration names, two seconds after it is called, in
/// one attempt that lasts as long as the host makes it. Returns 0, or the errno of what failed; the
/// session has no socket then.
int cli_connect();

/// Whether a line of a reply holds this text.
inline bool holds(const std::string& line, const char* text) {
    return line.find(text) != std::string::npos;
}

/// What the server has answered; none when the command can't be sent or a line can't be read.
enum class Reply { none, refused, accepted };

/// True for a line that is a row of a table: what it holds neither ends a reply nor decides it.
using TakesLine = std::function<bool(const std::string&)>;

/// Sends a command, unless it is null, and hands the lines that come to `take`, up to the one that
/// holds `prompt`. The reply is accepted when one of them, that one included, holds `success`.
Reply cli_ask(
    const char* command, const TakesLine& take = [](const std::string&) { return false; },
    const char* prompt = "> ", const char* success = "+OK:");

/// Reads the greeting up to its prompt. Returns 0, or 1 when a line can't be read.
int cli_wait_prompt();

/// Sends a command and reads its reply. Returns 0 when that is accepted, else 1.
int cli_command(const char* text);

/// Waits up to four seconds until the server's process id is known, connects and logs in as the
/// administrator with the password in the selected installation profile. Returns 0 when logged in,
/// else 1. Nothing is sent, and the session closed, where the other end turns out, in at most two
/// seconds after the greeting, to belong to another user than the wizard's own or the server's
/// account.
int cli_login();
