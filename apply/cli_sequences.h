#pragma once

/// The command sequences by which the wizard configures the server over its command-line interface.
/// A sequence stops at the first command that fails and returns 1, leaving the server in the
/// context that it has reached; 0 when all of it succeeded. Addresses and texts are sent as they
/// stand.

/// Creates a domain and makes it the primary one.
int cli_create_domain(const char* domain, const char* location, const char* postmaster_password);

/// Replaces the listeners of the WebAdmin service by one. After a failure, the next call first
/// leaves the contexts in which the failed one may have stopped.
int cli_config_webadmin(const char* address, int port);

/// Replaces the listeners of a service, named as the server names it, by one, and enables it. The
/// mail services are given the server's certificate.
int cli_config_listener(const char* address, int port, const char* service);

/// Sets the server's list of services: its own and those of the three that are not null.
int cli_set_services(const char* first, const char* second, const char* third);

/// The path of the server's SMTP filters script: a malloc'ed text that the caller frees, empty when
/// the server shows none; null on any failure.
char* cli_get_filters_file();

/// Adds the chosen aliases: "root" to the domain's postmaster account, the other two to the domain
/// itself. Sends nothing when none is chosen. Flags are 1 for chosen.
int cli_update_domain_aliases(int root, int localhost, int localdomain, const char* domain);

/// What the sequences read out of replies, in the context of the server that knows the command.

/// Has every listener that `list_command` lists removed from the current context, up to ten of
/// them, and commits that. A listener is a row of the table after a line that contains "-----": a
/// line that contains "|" and begins with the address. Returns 0; 1 when a removal or the commit
/// fails, the list has no "+OK:" or a line can't be read.
int cli_reset_listeners(const char* list_command);

/// The list of services to start from, as `command` shows whether the server logs: a malloc'ed text
/// in a 512-byte buffer that the caller frees. What is listed otherwise is not kept. Null when a
/// line can't be read, the reply has no "OK:" or shows no services.
char* cli_read_services(const char* command);

/// The path of the SMTP filters script as `command` shows it, the quoted value without its spaces:
/// a malloc'ed text in a 512-byte buffer that the caller frees, empty when the reply shows none.
/// Null when a line can't be read.
char* cli_read_filters_file(const char* command);
