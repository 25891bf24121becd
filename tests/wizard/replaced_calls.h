#pragma once

#include <sys/utsname.h>
#include <unistd.h>

#include <functional>

/// System calls that are replaced, in everything that this executable links, by what a test has
/// chosen. A call for which nothing is chosen goes to the kernel. Assign `{}` to choose nothing.
struct ReplacedCalls {
    std::function<int(utsname*)> uname;

    /// Only the requests that ask for network interfaces, netdevice(7).
    std::function<int(unsigned long request, void* argument)> interface_ioctl;

    std::function<int(char* name, size_t size)> getdomainname;

    std::function<uid_t()> getuid;
    std::function<gid_t()> getgid;
};

extern ReplacedCalls replaced_calls;
