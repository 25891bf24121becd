#pragma once

/// Commands whose replies are read, not only judged. Each is to be given in the context of the
/// server's command-line interface that knows it.

/// Has every listener that `list_command` lists removed from the current context, up to ten of
/// them, and commits that. A listener is a row of the table behind a line that contains "-----": a
/// line that contains "|" and begins with the address. Returns 0; 1 when a removal or the commit
/// fails, the list has no "+OK:" or a line can't be read.
int cli_reset_listeners(const char* list_command);

/// The list of services to start from, as `command` shows whether the server logs: a malloc'ed text
/// in a 512-byte buffer that the caller frees. What is listed otherwise is not kept. Null when a
/// line can't be read, the reply has no "OK:" or shows no services.
char* cli_read_services(const char* command);

/// The path of the SMTP filters script as `command` shows it, the quoted value without its blanks:
/// a malloc'ed text in a 512-byte buffer that the caller frees, empty when the reply shows none.
/// Null when a line can't be read.
char* cli_read_filters_file(const char* command);
