#pragma once

#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <vector>

/// One record of the kernel's list of interfaces.
struct FakeInterface {
    const char* name;  // the first one of a name answers requests that go by the name
    const char* address;
    const char* netmask;
    bool is_up = true;
    sa_family_t family = AF_INET;
    unsigned long failing_request = 0;  // one of those in fake_interfaces.cpp; 0 for none
};

/// Makes the replaced ioctl(2) answer as a kernel with these interfaces would, in this order.
void fake_interfaces(const std::vector<FakeInterface>& host);

/// Interfaces fake0, fake1 ... with the addresses 10.0.0.1, 10.1.0.1 ... in networks of their own.
std::vector<FakeInterface> many_interfaces(int count);

/// Makes the kernel's list of interfaces fail.
void fake_failing_interface_list();

/// NetBSD's question for one of an interface's addresses, in its <net/if.h> and <sys/sockio.h>.
struct ifaliasreq {
    char ifra_name[IFNAMSIZ];
    sockaddr ifra_addr;
    sockaddr ifra_dstaddr;
    sockaddr ifra_mask;
};

#define SIOCGIFALIAS _IOWR('i', 27, struct ifaliasreq)
