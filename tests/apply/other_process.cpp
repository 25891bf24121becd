#include "tests/apply/other_process.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/support/descriptor.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

OtherProcess::OtherProcess(uid_t user) : child(checked(fork(), "fork")) {
    if (child == 0) {
        std::signal(SIGTERM, SIG_DFL);
        if (setuid(user) != 0) _exit(1);
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

bool OtherProcess::isRunning() const { return process_running(child); }
