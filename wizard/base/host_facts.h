#pragma once

#include "wizard/base/relay_networks.h"
#include "wizard/base/tel_help.h"

/// Where the server is installed on one operating system, and the password that the CLI login
/// sends. Every field is a NUL-terminated text.
struct InstallProfile {
    char config_file[256];     ///< the server's configuration file
    char server_binary[256];   ///< the server executable; only ever the front of a shell command
    char pid_file[256];        ///< the server's pid file
    char admin_password[256];  ///< a placeholder until the password that was typed is in force
    char domains_dir[256];     ///< default location of domains; ends in "/"
    char doc_dir[256];         ///< documentation directory; ends in "/" until start-up extends it
};

/// Rows of `install_profiles`, as values of `os_kind`.
enum OsKind { os_linux, os_freebsd, os_netbsd, os_openbsd, os_sunos, os_kind_count };

/// What start-up finds out about the host, for the screens, the apply sequence and the summary.
struct HostFacts {
    /// The table of interfaces() and its number of entries; null and 0 before start-up.
    interf_addr* interface_table;
    int interface_count;

    /// The list of relay_networks() and its number of networks; null and 0 before start-up.
    relay_network* relay_network_list;
    int relay_network_count;

    /// The server's paths on every supported system, filled by select_install_profile(), and the
    /// row of the running system: 0 (Linux) until detect_os() has found another.
    InstallProfile install_profiles[os_kind_count];
    int os_kind;

    char readme_path[256];  ///< the document that tells how to start the server

    /// The document that tells how to stop other mail programs: the documentation field of the
    /// selected profile, which start-up extends in place.
    char* others_doc_path;
};

inline HostFacts host_facts{};

// Its parts by the names that they have everywhere.
inline interf_addr*& interface_table = host_facts.interface_table;
inline int& interface_count = host_facts.interface_count;
inline relay_network*& relay_network_list = host_facts.relay_network_list;
inline int& relay_network_count = host_facts.relay_network_count;
inline InstallProfile (&install_profiles)[os_kind_count] = host_facts.install_profiles;
inline int& os_kind = host_facts.os_kind;
inline char (&readme_path)[256] = host_facts.readme_path;
inline char*& others_doc_path = host_facts.others_doc_path;

/// Finds out all these facts. Where the interfaces can't be had, the table holds only the entry for
/// all of them, so that every listener screen has a row.
void discover_host();

/// Releases the lists of interfaces and networks and leaves null and 0; a second call does nothing.
void release_networks();

/// Fills all five rows of `install_profiles` and selects that of the running system. Returns 0, or
/// 1, with the selection as it was, when the system's name could not be asked for.
int select_install_profile();

/// The selected row's `doc_dir` field itself, not a copy: start-up appends to it in place.
char* profile_doc_dir();

/// A malloc'ed copy of the selected row's `domains_dir`; the caller frees it.
char* profile_domains_dir();
