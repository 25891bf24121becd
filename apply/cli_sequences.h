#pragma once

/// The command sequences by which the wizard configures the server over its command-line interface.
/// A sequence stops at the first command that fails and returns 1, leaving the server in the
/// context that it has reached; 0 when all of it succeeded. Addresses and texts are sent as they
/// stand. What is read out of a reply comes as a malloc'ed text that the caller frees.

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

/// The path of the server's SMTP filters script, empty when it shows none; null on any failure.
char* cli_get_filters_file();

/// Adds the aliases whose flag is 1: "root" to the domain's postmaster account, the other two to
/// the domain itself. Sends nothing when all flags are 0.
int cli_update_domain_aliases(int root, int localhost, int localdomain, const char* domain);

/// The steps of these sequences that read replies, in the context that knows their command.

/// Removes the listeners that `list_command` lists, up to ten, from the context and commits that. A
/// listener is a row of the table after a line that contains "-----": a line that contains "|" and
/// begins with the address. Fails at once where the list can't be read, and after the commit where
/// it was not accepted.
int cli_reset_listeners(const char* list_command);

/// The list of services to start from, in 512 bytes: the server's own, with "log" where the list
/// that `command` shows holds that. Null when the reply can't be read, has no "OK:" or shows none.
char* cli_read_services(const char* command);

/// The quoted path that `command` shows of the SMTP filters script, without its spaces, in 512
/// bytes; empty when the reply shows none. Null when that can't be read.
char* cli_read_filters_file(const char* command);
