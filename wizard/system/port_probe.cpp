#include "wizard/system/port_probe.h"

#include <unistd.h>

#include <cerrno>
#include <map>

#include "wizard/base/wizard_settings.h"
#include "wizard/system/signal_gate.h"
#include "wizard/system/tcp_client.h"

int probe_port(const char* address, int port) {
    static std::map<int, bool> found_free;
    if (wizard_settings.apply_running && found_free[port])
        return 1;
    const int probe = open_tcp_socket();
    if (probe == -1)
        return errno;
    sockaddr_in target{};
    if (!resolve_host(address, port, target)) {
        const int failure = errno;
        close(probe);
        return failure;
    }
    sleep_seconds(0);
    const int failure = connect_socket(probe, target);
    if (failure != 0) {
        found_free[port] = true;
        close(probe);
    }
    return failure;
}

bool is_all_digits(const char* text) {
    if (*text == '\0')
        return false;
    for (; *text != '\0'; ++text) {
        if (*text < '0' || *text > '9')
            return false;
    }
    return true;
}
