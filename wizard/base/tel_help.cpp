#include "wizard/base/tel_help.h"

// clang-format off
// Older BSDs want these two before <net/if.h>, whose structures hold socket addresses: netintro(4).
#include <sys/types.h>
#include <sys/socket.h>
// clang-format on
#include <arpa/inet.h>
#include <fcntl.h>
#include <net/if.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/select.h>
#include <sys/utsname.h>
#include <unistd.h>
#if defined(__linux__)
#include <sys/prctl.h>
#endif
#if __has_include(<linux/landlock.h>)
#include <linux/landlock.h>
#include <sys/syscall.h>
#endif
#if defined(__sun)
// The requests about interfaces, if_tcp(7P), and sysinfo(2).
#include <sys/sockio.h>
#include <sys/systeminfo.h>
#endif

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "wizard/base/descriptor.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/host_facts.h"

int detect_os() {
    static const char* const names[os_kind_count] = {"Linux", "FreeBSD", "NetBSD", "OpenBSD",
                                                     "SunOS"};
    struct utsname host {};
    if (uname(&host) == -1) return 1;
    for (int kind = 0; kind < os_kind_count; ++kind) {
        if (std::strcmp(host.sysname, names[kind]) == 0) os_kind = kind;
    }
    return 0;
}

void host_domain_name(char* name, std::size_t size) {
    name[0] = '\0';
#if defined(__sun)
    // There is no getdomainname, but sysinfo(2) knows the same name; it is empty where none is set.
    sysinfo(SI_SRPC_DOMAIN, name, static_cast<long>(size));
#else
    // Unset, the name is empty on the BSDs, getdomainname(3), and "(none)" on Linux,
    // getdomainname(2). The second parameter is a size_t, on FreeBSD an int.
    if (getdomainname(name, static_cast<int>(size)) != 0) name[0] = '\0';
#endif
    name[size - 1] = '\0';
}

int nameless_file() {
#ifdef MFD_CLOEXEC
    return memfd_create("terminal", MFD_CLOEXEC);
#else
    return -1;
#endif
}

bool has_one_user() {
    // Only Linux has this file: the first id inside, that outside, how many.
    std::FILE* map = std::fopen("/proc/self/uid_map", "re");
    if (map == nullptr) return false;
    unsigned long count = 0;
    unsigned long second_row = 0;
    const int numbers = std::fscanf(map, "%*u %*u %lu %lu", &count, &second_row);
    std::fclose(map);
    return numbers == 1 && count == 1;
}

#ifdef SYS_landlock_create_ruleset
void confine_writing_in_child(int descriptor) {
    landlock_ruleset_attr handled{};
    handled.handled_access_fs = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_MAKE_REG |
                                LANDLOCK_ACCESS_FS_REMOVE_FILE;
    const auto rules =
        static_cast<int>(syscall(SYS_landlock_create_ruleset, &handled, sizeof(handled), 0));
    for (const int writable : {descriptor, open("/dev/null", O_RDONLY | O_CLOEXEC)}) {
        landlock_path_beneath_attr rule{};
        rule.allowed_access = LANDLOCK_ACCESS_FS_WRITE_FILE;
        rule.parent_fd = writable;
        if (syscall(SYS_landlock_add_rule, rules, LANDLOCK_RULE_PATH_BENEATH, &rule, 0) == -1)
            return;
    }
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0) syscall(SYS_landlock_restrict_self, rules, 0);
}
#else
void confine_writing_in_child(int /*descriptor*/) {}
#endif

void keep_open_files_from_children() {
    constexpr int first = STDERR_FILENO + 1;
#ifdef CLOSE_RANGE_CLOEXEC
    if (close_range(first, UINT_MAX, CLOSE_RANGE_CLOEXEC) == 0) return;
#endif
    // The limit does not tell where to end: it may have been lowered since, or allow a billion.
    constexpr int end = 65536;
    for (int descriptor = first; descriptor < end; ++descriptor)
        fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

void forbid_core_dumps() {
#ifdef PR_SET_DUMPABLE
    prctl(PR_SET_DUMPABLE, 0);
#endif
}

int wait_for_event(int descriptor, short event, const sigset_t& mask) {
#ifdef HAVE_PPOLL
    pollfd waiting{descriptor, event, 0};
    if (descriptor < 0) return EBADF;
    if (ppoll(&waiting, 1, nullptr, &mask) == -1) return errno;
    return (waiting.revents & POLLNVAL) != 0 ? EBADF : 0;
#else
    if (descriptor < 0 || descriptor >= FD_SETSIZE) return EBADF;
    fd_set waiting;
    FD_ZERO(&waiting);
    FD_SET(descriptor, &waiting);
    fd_set* readable = event == POLLIN ? &waiting : nullptr;
    fd_set* writable = event == POLLOUT ? &waiting : nullptr;
    return pselect(descriptor + 1, readable, writable, nullptr, nullptr, &mask) == -1 ? errno : 0;
#endif
}

namespace {

// Room for 227 records even on NetBSD, where one takes 144 bytes.
constexpr std::size_t interface_query_size = 32768;

// How many bytes a record of the kernel's answer takes. On the BSDs a socket address begins with
// its length, and that of a link is longer than a plain sockaddr, for which only NetBSD has room in
// a struct ifreq: netintro(4). On Linux, netdevice(7), and SunOS, if_tcp(7P), only IPv4 addresses
// are listed, all alike.
std::size_t length_of(const ifreq& record) {
#if defined(__FreeBSD__) || defined(__NetBSD__) || defined(__OpenBSD__)
    const auto address_length = *reinterpret_cast<const unsigned char*>(&record.ifr_addr);
    return std::max(sizeof(record), sizeof(record.ifr_name) + address_length);
#else
    return sizeof(record);
#endif
}

void copy_address(char (&text)[256], const sockaddr& address) {
    sockaddr_in inet{};
    std::memcpy(&inet, &address, sizeof(inet));
    std::snprintf(text, sizeof(text), "%s", inet_ntoa(inet.sin_addr));
}

// Asks for the netmask of the address in `record`; false when that fails.
bool ask_netmask(int query_socket, const ifreq& record, interf_addr& entry) {
#if defined(__NetBSD__)
    // There SIOCGIFNETMASK answers for the first address of the interface, whichever is given.
    ifaliasreq answer{};
    std::memcpy(answer.ifra_name, record.ifr_name, sizeof(answer.ifra_name));
    answer.ifra_addr = record.ifr_addr;
    if (ioctl(query_socket, SIOCGIFALIAS, &answer) < 0) return false;
    copy_address(entry.netmask, answer.ifra_mask);
#else
    ifreq answer = record;
    if (ioctl(query_socket, SIOCGIFNETMASK, &answer) < 0) return false;
    copy_address(entry.netmask, answer.ifr_addr);
#endif
    return true;
}

// Fills `entry` from one record of the kernel's answer; true when the interface is an IPv4 one that
// is up. The requests overwrite the record that they are given, so each gets a copy.
bool describe_interface(int query_socket, const ifreq& record, interf_addr& entry) {
    if (record.ifr_addr.sa_family != AF_INET) return false;
    ifreq answer = record;
    if (ioctl(query_socket, SIOCGIFADDR, &answer) < 0) return false;
    std::snprintf(entry.name, sizeof(entry.name), "%.*s", static_cast<int>(sizeof(record.ifr_name)),
                  record.ifr_name);
    // Not the answer's: on NetBSD that is the first address of the interface.
    copy_address(entry.address, record.ifr_addr);

    answer = record;
    if (ioctl(query_socket, SIOCGIFFLAGS, &answer) < 0 || (answer.ifr_flags & IFF_UP) == 0)
        return false;
    return ask_netmask(query_socket, record, entry);
}

// Appends the interfaces of the kernel's answer, whose records need not be aligned, after entry 0;
// returns how many were appended.
int collect_interfaces(int query_socket, const ifconf& answer, interf_addr* table) {
    const auto length = static_cast<std::size_t>(answer.ifc_len);
    int total = 0;
    ifreq record;
    for (std::size_t at = 0; at + sizeof(record) <= length && total + 1 < interface_table_size;
         at += length_of(record)) {
        std::memcpy(&record, answer.ifc_buf + at, sizeof(record));
        interf_addr entry{};
        if (describe_interface(query_socket, record, entry)) table[++total] = entry;
    }
    return total;
}

}  // namespace

interf_addr* new_interface_table() {
    auto* table = static_cast<interf_addr*>(std::calloc(interface_table_size, sizeof(interf_addr)));
    if (table != nullptr) {
        std::snprintf(table->name, sizeof(table->name), "all");
        std::snprintf(table->address, sizeof(table->address), "0.0.0.0");
    }
    return table;
}

interf_addr* interfaces(int* count) {
    std::unique_ptr<interf_addr, FreeHeap> table(new_interface_table());
    int total = 0;
    assert(!total);
    const Descriptor query_socket(socket(AF_INET, SOCK_DGRAM, 0));
    // Not on the stack, whose pages stay in memory.
    const std::unique_ptr<char[]> records(new char[interface_query_size]);
    ifconf query{};
    query.ifc_len = interface_query_size;
    query.ifc_buf = records.get();
    if (table == nullptr || ioctl(query_socket.get(), SIOCGIFCONF, &query) < 0) return nullptr;
    total = collect_interfaces(query_socket.get(), query, table.get());
    *count = total + 1;
    return table.release();
}
