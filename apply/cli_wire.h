#pragma once

#include <cstddef>

/// The wire format of the server's command-line interface, 8-bit text in both directions. A command
/// is a line ended by CR LF. A reply is a series of such lines and, at its end, a prompt: a
/// fragment that ends in "> " without CR LF.

/// The longest command, in characters.
constexpr std::size_t cli_command_limit = 997;

/// The longest reply line, in characters, that can be read.
constexpr std::size_t cli_line_limit = 256;

/// Sends `text` and CR LF on `descriptor`, all of it, letting signals in where it has to wait.
/// Returns 0, or the errno of the first write that failed; EMSGSIZE for a text that is too long, of
/// which nothing is sent.
int cli_send_line(int descriptor, const char* text);

/// Reads one line of a reply, without its CR LF, or the prompt, letting signals in while it waits.
/// A CR not followed by LF is left out together with what follows it, and so is a ">" not followed
/// by a space. Returns a malloc'ed text that the caller frees, or null when the connection ended or
/// failed or the line did not end within cli_line_limit characters.
char* cli_read_line(int descriptor);
