#include "wizard/signal_gate.h"

#include <sys/select.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstring>
#include <ctime>
#include <initializer_list>
#include <vector>

namespace {

struct SignalMasks {
    sigset_t original;  // as the wizard was started with
    sigset_t waiting;   // the same without the signals that the wizard handles
    sigset_t held;      // those signals

    SignalMasks() {
        sigemptyset(&held);
        sigprocmask(SIG_BLOCK, nullptr, &original);
        waiting = original;
    }
};

SignalMasks& masks() {
    static SignalMasks signal_masks;
    return signal_masks;
}

// A signal whose action is not the original one any more, and that one.
struct ChangedAction {
    int signal_number;
    struct sigaction original;
};

std::vector<ChangedAction> changed_actions;

void keep_original(int signal_number, const struct sigaction& action) {
    for (const ChangedAction& changed : changed_actions) {
        if (changed.signal_number == signal_number)
            return;
    }
    changed_actions.push_back({signal_number, action});
}

// One handler must not interrupt another: both draw. A crash in one must not find its signal
// blocked, which would end the program at once.
sigset_t all_but_crashes() {
    sigset_t mask;
    sigfillset(&mask);
    for (const int crash : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGQUIT})
        sigdelset(&mask, crash);
    return mask;
}

void set_action(int signal_number, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_mask = all_but_crashes();
    struct sigaction before {};
    sigaction(signal_number, &action, &before);
    keep_original(signal_number, before);
}

// A signal that is pending is delivered before sigprocmask() returns.
void let_in(const sigset_t& mask) {
    sigset_t before;
    sigprocmask(SIG_SETMASK, &mask, &before);
    sigprocmask(SIG_SETMASK, &before, nullptr);
}

// A mask that blocks all signals but one.
sigset_t all_but(int signal_number) {
    sigset_t mask;
    sigfillset(&mask);
    sigdelset(&mask, signal_number);
    return mask;
}

int wait_for_descriptor(int descriptor, bool for_reading) {
    if (descriptor < 0 || descriptor >= FD_SETSIZE)
        return EBADF;
    for (;;) {
        fd_set descriptors;
        FD_ZERO(&descriptors);
        FD_SET(descriptor, &descriptors);
        fd_set* readable = for_reading ? &descriptors : nullptr;
        fd_set* writable = for_reading ? nullptr : &descriptors;
        if (pselect(descriptor + 1, readable, writable, nullptr, nullptr, &masks().waiting) > 0)
            return 0;
        if (errno != EINTR)
            return errno;
    }
}

timespec now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time;
}

// What is left of the time until `end`; nothing once it has passed.
timespec time_until(const timespec& end) {
    constexpr long second = 1000000000L;
    const timespec time = now();
    timespec left{end.tv_sec - time.tv_sec, end.tv_nsec - time.tv_nsec};
    if (left.tv_nsec < 0) {
        left.tv_nsec += second;
        --left.tv_sec;
    }
    return left.tv_sec < 0 ? timespec{} : left;
}

}  // namespace

void hold_signal(int signal_number, void (*handler)(int)) {
    SignalMasks& signals = masks();
    sigaddset(&signals.held, signal_number);
    sigdelset(&signals.waiting, signal_number);
    sigprocmask(SIG_BLOCK, &signals.held, nullptr);
    set_action(signal_number, handler);
}

bool is_ignored(int signal_number) {
    struct sigaction action {};
    sigaction(signal_number, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

void ignore_signal(int signal_number) {
    set_action(signal_number, SIG_IGN);
}

void keep_track_of_children() {
    signal(SIGCHLD, SIG_DFL);
}

void stop_process(int signal_number) {
    struct sigaction handled {};
    struct sigaction by_default {};
    by_default.sa_handler = SIG_DFL;
    sigaction(signal_number, &by_default, &handled);
    raise(signal_number);
    // It stops here.
    let_in(all_but(signal_number));
    sigaction(signal_number, &handled, nullptr);
}

void let_signals_in() {
    let_in(masks().waiting);
}

void let_signals_in_except(int kept_out) {
    sigset_t mask = masks().waiting;
    sigaddset(&mask, kept_out);
    let_in(mask);
}

int wait_readable(int descriptor) {
    return wait_for_descriptor(descriptor, true);
}

int wait_writable(int descriptor) {
    return wait_for_descriptor(descriptor, false);
}

void sleep_seconds(int seconds) {
    timespec end = now();
    end.tv_sec += seconds;
    timespec left = time_until(end);
    while (pselect(0, nullptr, nullptr, nullptr, &left, &masks().waiting) == -1 && errno == EINTR)
        left = time_until(end);
}

int wait_for_child(pid_t child) {
    int status = 0;
    pid_t ended = 0;
    sigset_t before;
    // The handlers do all of a signal's work themselves, so one that runs just before waitpid()
    // begins to wait leaves nothing to be noticed here.
    sigprocmask(SIG_SETMASK, &masks().waiting, &before);
    do {
        ended = waitpid(child, &status, 0);
    } while (ended == -1 && errno == EINTR);
    sigprocmask(SIG_SETMASK, &before, nullptr);
    return ended == child ? status : -1;
}

void restore_signals_in_child() {
    for (const ChangedAction& changed : changed_actions)
        sigaction(changed.signal_number, &changed.original, nullptr);
    sigprocmask(SIG_SETMASK, &masks().original, nullptr);
}
