#pragma once

/// Where the server is installed on one operating system, and the password that the CLI login
/// sends. Every field is a NUL-terminated text of at most 255 characters.
struct InstallProfile {
    char config_file[256];     ///< the server's configuration file
    char server_binary[256];   ///< the server executable; only ever the front of a shell command
    char pid_file[256];        ///< the server's pid file
    char admin_password[256];  ///< sent at CLI login; replaced by the password that was typed
    char domains_dir[256];     ///< default location of domains; ends in "/"
    char doc_dir[256];         ///< documentation directory; ends in "/" until start-up extends it
};

/// Rows of `install_profiles`, as values of `os_kind`.
enum OsKind { os_linux = 0, os_freebsd = 1, os_netbsd = 2, os_openbsd = 3, os_sunos = 4 };

constexpr int os_kind_count = 5;

/// The server's paths on every supported system; filled by select_install_profile().
extern InstallProfile install_profiles[os_kind_count];

/// The row of the running system; 0 (Linux) until detect_os() has found another.
extern int os_kind;

/// Fills all five rows and selects the one of the running system. Returns 0, or 1 when the system's
/// name could not be asked for; then the selection stays as it was.
int select_install_profile();

/// The selected row's `doc_dir` field itself, not a copy: start-up appends to it in place.
char* profile_doc_dir();

/// A malloc'ed copy of the selected row's `domains_dir`; the caller frees it.
char* profile_domains_dir();
