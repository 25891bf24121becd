#include "tests/wizard/fake_interfaces.h"

#include <arpa/inet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <list>
#include <string>

#include "tests/wizard/replaced_calls.h"

namespace {

void store_address(sockaddr& target, const char* text, sa_family_t family) {
    sockaddr_in address = {};
    address.sin_family = family;
    inet_pton(AF_INET, text, &address.sin_addr);
    std::memcpy(&target, &address, sizeof target);
}

ifreq record_of(const FakeInterface& interface) {
    ifreq record = {};
    std::strncpy(record.ifr_name, interface.name, sizeof record.ifr_name - 1);
    store_address(record.ifr_addr, interface.address, interface.family);
    return record;
}

int list_all(const std::vector<FakeInterface>& host, ifconf& query) {
    const auto room = static_cast<size_t>(query.ifc_len) / sizeof(ifreq);
    const size_t count = std::min(host.size(), room);
    for (size_t i = 0; i < count; ++i) query.ifc_req[i] = record_of(host[i]);
    query.ifc_len = static_cast<int>(count * sizeof(ifreq));
    return 0;
}

int answer_about(const FakeInterface& interface, unsigned long request, ifreq& query) {
    if (request == interface.failing_request) {
        errno = EADDRNOTAVAIL;
        return -1;
    }
    if (request == SIOCGIFFLAGS)
        query.ifr_flags = interface.is_up ? IFF_UP : 0;
    else if (request == SIOCGIFADDR)
        store_address(query.ifr_addr, interface.address, AF_INET);
    else
        store_address(query.ifr_netmask, interface.netmask, AF_INET);
    return 0;
}

// NetBSD's, for the interface's address that is asked about.
int answer_about_alias(const FakeInterface& interface, ifaliasreq& query) {
    sockaddr address = {};
    store_address(address, interface.address, interface.family);
    if (interface.failing_request == SIOCGIFALIAS ||
        std::memcmp(&address, &query.ifra_addr, sizeof address) != 0)
        return -1;
    store_address(query.ifra_mask, interface.netmask, AF_INET);
    return 0;
}

int answer(const std::vector<FakeInterface>& host, unsigned long request, void* argument) {
    if (request == SIOCGIFCONF) return list_all(host, *static_cast<ifconf*>(argument));
    errno = ENODEV;
    for (const FakeInterface& interface : host) {
        // Every request begins with the name.
        if (std::strcmp(interface.name, static_cast<const char*>(argument)) != 0) continue;
        if (request != SIOCGIFALIAS)
            return answer_about(interface, request, *static_cast<ifreq*>(argument));
        if (answer_about_alias(interface, *static_cast<ifaliasreq*>(argument)) == 0) return 0;
    }
    return -1;
}

}  // namespace

void fake_interfaces(const std::vector<FakeInterface>& host) {
    replaced_calls.interface_ioctl = [host](unsigned long request, void* argument) {
        return answer(host, request, argument);
    };
}

std::vector<FakeInterface> many_interfaces(int count) {
    static std::list<std::string> texts;
    const auto kept = [](const std::string& text) { return texts.emplace_back(text).c_str(); };
    std::vector<FakeInterface> host;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        host.push_back({kept("fake" + number), kept("10." + number + ".0.1"), "255.255.0.0"});
    }
    return host;
}

void fake_failing_interface_list() {
    replaced_calls.interface_ioctl = [](unsigned long, void*) {
        errno = EINVAL;
        return -1;
    };
}
