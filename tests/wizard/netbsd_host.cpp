// The host routines as they are compiled on NetBSD. This system's headers are read before, as they
// would look for NetBSD's parts where that is defined.

#include <arpa/inet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "tests/wizard/netbsd_requests.h"
#include "wizard/heap_text.h"
#include "wizard/install_profile.h"
#include "wizard/interface_records.h"

#define __NetBSD__ 1
#include "wizard/tel_help.cpp"
