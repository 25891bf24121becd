#pragma once

#include <sys/socket.h>

#include <vector>

/// One record of the kernel's list of interfaces.
struct FakeInterface {
    const char* name;  // unlike all others
    const char* address;
    const char* netmask;
    bool is_up = true;
    sa_family_t family = AF_INET;
    unsigned long failing_request = 0;  // SIOCGIFADDR, SIOCGIFFLAGS or SIOCGIFNETMASK; 0 for none
};

/// Makes the replaced ioctl(2) answer as a kernel with these interfaces would, in this order.
void fake_interfaces(const std::vector<FakeInterface>& host);

/// Interfaces fake0, fake1 ... with the addresses 10.0.0.1, 10.1.0.1 ... in networks of their own.
std::vector<FakeInterface> many_interfaces(int count);

/// Makes the kernel's list of interfaces fail.
void fake_failing_interface_list();
