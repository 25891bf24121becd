#include "tests/screens/host_domain.h"

#include <unistd.h>

#include <cstring>

std::string host_domain = "(none)";

int getdomainname(char* name, size_t size) noexcept {
    std::strncpy(name, host_domain.c_str(), size);
    return 0;
}
