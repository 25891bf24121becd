#include "stop_signal.h"

#include <algorithm>
#include <csignal>

namespace standin {

namespace {

volatile std::sig_atomic_t stop_signal = 0;

void on_stop_signal(int signal_number) {
    stop_signal = signal_number;
}

timespec time_left(Clock::time_point until) {
    const auto left = std::max(until - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    timespec time{};
    time.tv_sec = static_cast<time_t>(seconds.count());
    time.tv_nsec = static_cast<long>(std::chrono::nanoseconds(left - seconds).count());
    return time;
}

}  // namespace

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

bool stop_requested() {
    return stop_signal != 0;
}

void wait_for_events(std::vector<pollfd>& descriptors,
                     const std::optional<Clock::time_point>& until) {
    sigset_t nothing_held_back;
    sigemptyset(&nothing_held_back);
    const timespec time = until ? time_left(*until) : timespec{};
    const int ready =
        ppoll(descriptors.data(), descriptors.size(), until ? &time : nullptr, &nothing_held_back);
    if (ready < 0) {
        for (pollfd& descriptor : descriptors) {
            descriptor.revents = 0;
        }
    }
}

}  // namespace standin
