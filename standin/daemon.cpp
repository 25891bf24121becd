#include "daemon.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace standin {

namespace {

int wait_for_daemon(int channel) {
    char report = 0;
    ssize_t count = 0;
    do {
        count = read(channel, &report, 1);
    } while (count < 0 && errno == EINTR);
    return count == 1 ? 0 : 1;
}

}  // namespace

std::optional<int> become_daemon(Descriptor& ready) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return 1;
    }
    const Descriptor reading(ends[0]);
    ready = Descriptor(ends[1]);
    const pid_t daemon = fork();
    if (daemon == 0) {
        setsid();
        return std::nullopt;
    }
    ready.close();
    return daemon < 0 ? 1 : wait_for_daemon(reading.get());
}

void daemon_is_ready(Descriptor& ready) {
    const Descriptor nowhere(open("/dev/null", O_RDWR | O_CLOEXEC));
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(nowhere.get(), stream);
    }
    const bool told = chdir("/") == 0 && write(ready.get(), "+", 1) == 1;
    // Nobody is left to hear that the starter went away first; the daemon runs on all the same.
    static_cast<void>(told);
    ready.close();
}

}  // namespace standin
