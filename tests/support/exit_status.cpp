#include "tests/support/exit_status.h"

#include <sys/wait.h>

#include <cstring>
#include <ostream>

ExitStatus exited(int code) {
    return {code, 0};
}

ExitStatus killed_by(int signal) {
    return {-1, signal};
}

ExitStatus from_wait_status(int wait_status) {
    return WIFSIGNALED(wait_status) ? killed_by(WTERMSIG(wait_status))
                                    : exited(WEXITSTATUS(wait_status));
}

bool operator==(const ExitStatus& left, const ExitStatus& right) {
    return left.code == right.code && left.signal == right.signal;
}

bool operator!=(const ExitStatus& left, const ExitStatus& right) {
    return !(left == right);
}

std::ostream& operator<<(std::ostream& out, const ExitStatus& status) {
    if (status.signal == 0)
        return out << "exit status " << status.code;
    return out << "signal " << status.signal << " (" << strsignal(status.signal) << ")";
}
