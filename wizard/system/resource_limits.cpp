#include "wizard/system/resource_limits.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

namespace {

struct ChangedLimit {
    int resource;
    rlimit original;
};

std::vector<ChangedLimit> changed_limits;

}  // namespace

void change_limit(int resource, rlim_t limit) {
    rlimit limits{};
    if (getrlimit(resource, &limits) == -1)
        return;
    changed_limits.push_back({resource, limits});
    limits.rlim_cur = std::min(limit, limits.rlim_max);
    setrlimit(resource, &limits);
}

void restore_limits_in_child() {
    for (const ChangedLimit& changed : changed_limits)
        setrlimit(changed.resource, &changed.original);
}

bool can_open_files(int count) {
    std::vector<int> copies;
    while (static_cast<int>(copies.size()) < count) {
        const int copy = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0);
        if (copy == -1)
            break;
        copies.push_back(copy);
    }
    for (const int copy : copies)
        close(copy);
    return static_cast<int>(copies.size()) == count;
}
