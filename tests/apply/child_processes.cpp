#include "tests/apply/child_processes.h"

#include <dlfcn.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>

#include "tests/support/descriptor.h"
#include "tests/support/wait_until.h"

namespace {

int forks_until_failure = 0;

}  // namespace

FailingFork::FailingFork(int number) { forks_until_failure = number; }

FailingFork::~FailingFork() { forks_until_failure = 0; }

OtherProcess::OtherProcess(uid_t user, const std::function<void()>& first)
    : child(checked(fork(), "fork")) {
    if (child == 0) {
        std::signal(SIGTERM, SIG_DFL);
        if (setuid(user) != 0) _exit(1);
        first();
        for (;;) pause();
    }
    checked(setpgid(child, child), "setpgid");
}

void OtherProcess::end() {
    if (child == -1) return;
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    child = -1;
}

ExitStatus OtherProcess::waitForEnd() {
    int status = 0;
    wait_until([&] { return waitpid(child, &status, WNOHANG) == child; }, "the process has ended");
    child = -1;
    return from_wait_status(status);
}

// In the place of the C library's.
extern "C" pid_t fork() {
    static auto* const real_fork = reinterpret_cast<pid_t (*)()>(dlsym(RTLD_NEXT, "fork"));
    if (forks_until_failure > 0 && --forks_until_failure == 0) {
        errno = EAGAIN;
        return -1;
    }
    return real_fork();
}
