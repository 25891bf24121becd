#include "wizard/system/resource_limits.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <map>
#include <vector>

#include "wizard/base/descriptor.h"

namespace {

// Those that the wizard was started with and has changed.
std::map<int, rlimit> original_limits;

}  // namespace

void change_limit(int resource, rlim_t limit) {
    rlimit limits{};
    if (getrlimit(resource, &limits) == -1) return;
    original_limits.emplace(resource, limits);
    limits.rlim_cur = std::min(limit, limits.rlim_max);
    setrlimit(resource, &limits);
}

void restore_limits_in_child() {
    for (const auto& [resource, limits] : original_limits) setrlimit(resource, &limits);
}

bool can_open_files(int count) {
    std::vector<Descriptor> copies;
    for (int i = 0; i < count; ++i) copies.emplace_back(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0));
    return copies.back().isOpen();
}
