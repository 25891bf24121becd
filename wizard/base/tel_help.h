#pragma once

#include <csignal>
#include <cstddef>

/// What the wizard asks the host for: its operating system, its domain name, its network
/// interfaces. Whatever differs between Linux, the BSDs and SunOS stands in this module.

/// One IPv4 network interface, every field a NUL-terminated text.
struct interf_addr {
    char name[256];     ///< as the kernel reports it, for example eth0
    char address[256];  ///< dotted decimal
    char netmask[256];  ///< dotted decimal; empty in entry 0
};

/// Entries of an interface table: "all" and at most 29 interfaces.
constexpr int interface_table_size = 30;

/// Sets `os_kind` from the exact system name of uname(3); another name leaves it alone. Returns 0,
/// or 1 when uname failed.
int detect_os();

/// Copies the host's NIS domain name, cut to size - 1 characters, into `name`: empty, or "(none)"
/// on some systems, where none is set.
void host_domain_name(char* name, std::size_t size);

/// A nameless file for reading and writing, close-on-exec, that takes no room on any disk and goes
/// when it is closed: memfd_create(2), on Linux, FreeBSD, and NetBSD after 10. Returns its
/// descriptor, or -1 where the system has no such files.
int nameless_file();

/// Whether the superuser is the only user there is, so that nobody could gain any right: in a user
/// namespace of Linux, user_namespaces(7), as an ordinary user can make it.
bool has_one_user();

/// In a child process: from now on it, and the programs that it runs, can make and remove no file,
/// and open none for writing but the one that `descriptor` has open and /dev/null. By landlock(7),
/// on Linux from 5.13 on; where the kernel has none, it can do what it could before.
void confine_writing_in_child(int descriptor);

/// Makes all that is open now but the standard streams close-on-exec, by close_range(2) where the
/// system can do that.
void keep_open_files_from_children();

/// Keeps this process's memory, not that of programs that it runs, out of the core dumps that a
/// program gets from the system whatever the limit of their size: prctl(2), on Linux, core(5).
void forbid_core_dumps();

/// Waits until `descriptor` is ready for `event`, POLLIN or POLLOUT, with the signal mask `mask`
/// meanwhile: ppoll(2), or pselect(2) where the system has none. Returns 0, EINTR when a signal has
/// been let in, or another errno: EBADF for a descriptor that is not open or that pselect(2) can't
/// be asked about.
int wait_for_event(int descriptor, short event, const sigset_t& mask);

/// A malloc'ed table of `interface_table_size` entries, which the caller frees: entry 0 stands for
/// all interfaces, "all", "0.0.0.0"; the others are empty. Null when there is no memory.
interf_addr* new_interface_table();

/// The host's IPv4 interfaces that are up (netdevice(7)), loopback included, after entry 0 in a
/// table of new_interface_table(). Stores the number of entries, entry 0 included, in *count. An
/// entry with an empty name follows the last one unless the table is full. Returns null, with
/// *count untouched, when memory, the socket or the interface query fails.
interf_addr* interfaces(int* count);
