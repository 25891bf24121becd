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
#include "wizard/base/heap_text.h"
#include "wizard/base/install_profile.h"
#include "wizard/base/interface_records.h"

#define __NetBSD__ 1
#include "wizard/base/tel_help.cpp"
