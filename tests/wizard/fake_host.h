#pragma once

#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>
#include <vector>

/// One record of the kernel's list of interfaces.
struct FakeInterface {
    std::string name;  // the first one of a name answers requests that go by the name
    std::string address;
    std::string netmask;
    bool is_up = true;
    sa_family_t family = AF_INET;
    unsigned long failing_request = 0;  // none
};

/// What the system calls tell about the host, in everything that this executable links.
struct FakeHost {
    std::string system;          // of uname(2); the kernel's if it is empty
    bool uname_fails = false;    // having told the system
    std::string domain;          // of getdomainname(2), which does not end it
    bool has_no_domain = false;  // having told it
    uid_t user = geteuid();      // of getuid(2)
    gid_t group = getegid();     // of getgid(2)
    int asked_for_group = 0;     // how often
    std::vector<FakeInterface> interfaces;
    bool interface_list_fails = false;
    std::string before_each_record;  // bytes in the list of interfaces
    std::size_t missing = 0;         // bytes at its end
};

extern FakeHost fake_host;

/// NetBSD's question for one of an interface's addresses, in its <net/if.h> and <sys/sockio.h>.
struct ifaliasreq {
    char ifra_name[IFNAMSIZ];
    sockaddr ifra_addr;
    sockaddr ifra_dstaddr;
    sockaddr ifra_mask;
};

#define SIOCGIFALIAS _IOWR('i', 27, struct ifaliasreq)
