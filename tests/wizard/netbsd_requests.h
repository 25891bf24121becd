#pragma once

#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

/// NetBSD's question for one of an interface's addresses, in its <net/if.h> and <sys/sockio.h>.
struct ifaliasreq {
    char ifra_name[IFNAMSIZ];
    sockaddr ifra_addr;
    sockaddr ifra_dstaddr;
    sockaddr ifra_mask;
};

#define SIOCGIFALIAS _IOWR('i', 27, struct ifaliasreq)
