#include "tests/wizard/replaced_calls.h"

#include <sys/ioctl.h>
#include <sys/syscall.h>

#include <cstdarg>
#include <cstdio>

#include "tests/wizard/fake_interfaces.h"

ReplacedCalls replaced_calls;

namespace {

bool asks_for_interfaces(unsigned long request) {
    return request == SIOCGIFCONF || request == SIOCGIFADDR || request == SIOCGIFFLAGS ||
           request == SIOCGIFNETMASK || request == SIOCGIFALIAS;
}

}  // namespace

extern "C" {

int uname(utsname* host) noexcept {
    if (replaced_calls.uname) return replaced_calls.uname(host);
    return static_cast<int>(syscall(SYS_uname, host));
}

int getdomainname(char* name, size_t size) noexcept {
    if (replaced_calls.getdomainname) return replaced_calls.getdomainname(name, size);
    std::snprintf(name, size, "(none)");
    return 0;
}

int ioctl(int descriptor, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    if (replaced_calls.interface_ioctl && asks_for_interfaces(request))
        return replaced_calls.interface_ioctl(request, argument);
    return static_cast<int>(syscall(SYS_ioctl, descriptor, request, argument));
}

uid_t getuid() noexcept {
    return replaced_calls.getuid ? replaced_calls.getuid()
                                 : static_cast<uid_t>(syscall(SYS_getuid));
}

gid_t getgid() noexcept {
    return replaced_calls.getgid ? replaced_calls.getgid()
                                 : static_cast<gid_t>(syscall(SYS_getgid));
}

}  // extern "C"
