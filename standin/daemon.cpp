#include "daemon.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

namespace {

int wait_for_daemon(int channel) {
    char report = 0;
    ssize_t count = 0;
    do {
        count = read(channel, &report, 1);
    } while (count < 0 && errno == EINTR);
    return count == 1 ? 0 : 1;
}

volatile std::sig_atomic_t stop_signal = 0;

void on_stop_signal(int signal_number) { stop_signal = signal_number; }

timespec time_left(Clock::time_point until) {
    const auto left = std::max(until - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    timespec time{};
    time.tv_sec = static_cast<time_t>(seconds.count());
    time.tv_nsec = static_cast<long>(std::chrono::nanoseconds(left - seconds).count());
    return time;
}

}  // namespace

std::optional<int> become_daemon(Descriptor& ready) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return 1;
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
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nowhere.get(), stream);
    const bool told = chdir("/") == 0 && write(ready.get(), "+", 1) == 1;
    // Nobody is left to hear that the starter went away first; the daemon runs on all the same.
    static_cast<void>(told);
    ready.close();
}

void catch_stop_signals() {
    struct sigaction action {};
    action.sa_handler = on_stop_signal;
    sigset_t held_back;
    sigemptyset(&held_back);
    for (const int signal_number : {SIGTERM, SIGINT}) {
        sigaction(signal_number, &action, nullptr);
        sigaddset(&held_back, signal_number);
    }
    sigprocmask(SIG_BLOCK, &held_back, nullptr);
}

bool stop_requested() { return stop_signal != 0; }

void wait_for_events(std::vector<pollfd>& descriptors,
                     const std::optional<Clock::time_point>& until) {
    sigset_t nothing_held_back;
    sigemptyset(&nothing_held_back);
    const timespec time = until ? time_left(*until) : timespec{};
    const int ready =
        ppoll(descriptors.data(), descriptors.size(), until ? &time : nullptr, &nothing_held_back);
    if (ready < 0) {
        for (pollfd& descriptor : descriptors) descriptor.revents = 0;
    }
}
