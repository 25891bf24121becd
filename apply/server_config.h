#pragma once

#include <string>

class FileRewrite;

/// The server's configuration file, as far as the wizard reads and rewrites it: lines of the form
/// `key = value`, first the list of services, later the `cli` section with its listeners. A line
/// that holds a "#" anywhere is a comment, but for the listeners and the address of that section,
/// which may have one after them.

/// Rewrites the configuration file `path` so that the server's command-line interface is among its
/// services, and reads where that listens into `server_session`. All else is copied as it stands
/// but for the last line, which may come to be there twice or not at all (docs/reliability.md, "A
/// file may end otherwise than before"). Returns 0, or 1 when the file or its working copy can't be
/// opened, read or installed, or there is no memory. The address is unknown afterwards when the
/// file is exchanged meanwhile.
int config_prepare(const char* path);

/// The part of it that writes the working copy.
void config_rewrite(FileRewrite& config);

/// The key of a line, the first 255 characters before its first "=" but for spaces and tabs, in a
/// zero-filled 256-byte buffer that the caller frees; empty for a line without "=". Sets
/// `server_session.key_indent`. Returns null, and notes that in `server_session`, when there is no
/// memory.
char* config_key_of(const char* line);

/// True when the line holds a "#".
bool config_line_is_comment(const char* line);

/// Adds "cli" to the list of services in `line` unless the list already holds these letters or has
/// no end. Returns 0, or 1 when the line's key is not "services".
int config_ensure_cli_service(std::string& line);

/// Reads a line `address = host:port`, whose key has just been extracted, into `server_session`; a
/// host is cut to 255 characters, and what follows a "#" does not count.
void config_read_cli_address(const char* line);
