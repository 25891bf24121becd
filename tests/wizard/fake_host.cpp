#include "tests/wizard/fake_host.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/syscall.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

FakeHost fake_host;

namespace {

sockaddr address_of(const std::string& text, sa_family_t family = AF_INET) {
    sockaddr_in address = {};
    address.sin_family = family;
    inet_pton(AF_INET, text.c_str(), &address.sin_addr);
    sockaddr any;
    std::memcpy(&any, &address, sizeof any);
    return any;
}

int list_interfaces(ifconf& query) {
    std::string list;
    for (const FakeInterface& interface : fake_host.interfaces) {
        ifreq record = {};
        interface.name.copy(record.ifr_name, sizeof record.ifr_name - 1);
        record.ifr_addr = address_of(interface.address, interface.family);
        list += fake_host.before_each_record;
        list.append(reinterpret_cast<const char*>(&record), sizeof record);
    }
    list.erase(list.size() - fake_host.missing);
    query.ifc_len = static_cast<int>(list.copy(query.ifc_buf, static_cast<size_t>(query.ifc_len)));
    return fake_host.interface_list_fails ? -1 : 0;
}

bool answers(const FakeInterface& interface, unsigned long request, void* argument) {
    // Every request begins with the name.
    if (interface.name != static_cast<const char*>(argument) ||
        interface.failing_request == request)
        return false;
    auto& query = *static_cast<ifreq*>(argument);
    if (request == SIOCGIFFLAGS)
        query.ifr_flags = interface.is_up ? IFF_UP : 0;
    else if (request == SIOCGIFADDR)
        query.ifr_addr = address_of(interface.address);
    else if (request == SIOCGIFNETMASK)
        query.ifr_netmask = address_of(interface.netmask);
    if (request != SIOCGIFALIAS) return true;
    auto& alias = *static_cast<ifaliasreq*>(argument);
    alias.ifra_mask = address_of(interface.netmask);
    const sockaddr address = address_of(interface.address);
    return std::memcmp(&address, &alias.ifra_addr, sizeof address) == 0;
}

}  // namespace

extern "C" {

int uname(utsname* host) noexcept {
    const auto result = static_cast<int>(syscall(SYS_uname, host));
    if (!fake_host.system.empty())
        std::snprintf(host->sysname, sizeof host->sysname, "%s", fake_host.system.c_str());
    return fake_host.uname_fails ? -1 : result;
}

int getdomainname(char* name, size_t size) noexcept {
    fake_host.domain.copy(name, size);
    return fake_host.has_no_domain ? -1 : 0;
}

uid_t getuid() noexcept { return fake_host.user; }

gid_t getgid() noexcept {
    ++fake_host.asked_for_group;
    return fake_host.group;
}

int ioctl(int descriptor, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    errno = ENODEV;
    if (descriptor == -1) return -1;
    if (request == SIOCGIFCONF) return list_interfaces(*static_cast<ifconf*>(argument));
    if (request != SIOCGIFADDR && request != SIOCGIFFLAGS && request != SIOCGIFNETMASK &&
        request != SIOCGIFALIAS)
        return static_cast<int>(syscall(SYS_ioctl, descriptor, request, argument));
    const std::vector<FakeInterface>& all = fake_host.interfaces;
    const bool any = std::any_of(all.begin(), all.end(), [&](const FakeInterface& interface) {
        return answers(interface, request, argument);
    });
    return any ? 0 : -1;
}

}  // extern "C"
