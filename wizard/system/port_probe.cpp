#include "wizard/system/port_probe.h"

#include <cerrno>
#include <cstring>
#include <set>

#include "wizard/base/descriptor.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/system/signal_gate.h"
#include "wizard/system/tcp_client.h"

namespace {

// On whatever address.
std::set<int> ports_found_free;

}  // namespace

int probe_port(const char* address, int port) {
    if (wizard_settings.apply_running && ports_found_free.count(port) != 0) return 1;
    Descriptor probe(open_tcp_socket());
    sockaddr_in target{};
    if (!probe.isOpen() || !resolve_host(address, port, target)) return errno;
    sleep_seconds(0);
    const int failure = connect_socket(probe.get(), target);
    if (failure == 0)
        probe.release();
    else
        ports_found_free.insert(port);
    return failure;
}

bool is_all_digits(const char* text) {
    return *text != '\0' && text[std::strspn(text, "0123456789")] == '\0';
}
