#include "tests/apply/failing_fork.h"

#include <dlfcn.h>
#include <sys/types.h>

#include <cerrno>

namespace {

int forks_until_failure = 0;

}  // namespace

FailingFork::FailingFork(int number) { forks_until_failure = number; }

FailingFork::~FailingFork() { forks_until_failure = 0; }

// In the place of the C library's.
extern "C" pid_t fork() {
    static auto* const real_fork = reinterpret_cast<pid_t (*)()>(dlsym(RTLD_NEXT, "fork"));
    if (forks_until_failure > 0 && --forks_until_failure == 0) {
        errno = EAGAIN;
        return -1;
    }
    return real_fork();
}
