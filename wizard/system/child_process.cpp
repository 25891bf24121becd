#include "wizard/system/child_process.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "wizard/system/signal_gate.h"

int run_in_child(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        restore_signals_in_child();
        work();
        _exit(0);
    }
    return child == -1 ? -1 : wait_for_child(child);
}

bool ask_in_child(const std::function<void()>& work, void* answer, std::size_t size) {
    int result_pipe[2];
    if (pipe(result_pipe) == -1)
        return false;
    // A child that fails to write leaves nothing to read, which must not block.
    fcntl(result_pipe[0], F_SETFL, O_NONBLOCK);
    const auto expected = static_cast<ssize_t>(size);
    const int status = run_in_child([&] {
        work();
        if (write(result_pipe[1], answer, size) != expected)
            _exit(1);
    });
    const int failure = errno;
    const bool answered = status != -1 && read(result_pipe[0], answer, size) == expected;
    close(result_pipe[0]);
    close(result_pipe[1]);
    if (!answered)
        errno = status == -1 ? failure : EIO;
    return answered;
}
