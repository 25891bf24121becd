#include "wizard/system/signal_gate.h"

#include <poll.h>
#include <sys/select.h>
#include <sys/wait.h>

#include <cerrno>
#include <ctime>
#include <initializer_list>
#include <vector>

#include "wizard/base/tel_help.h"

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

// Those of the signals that end the wizard which it holds.
sigset_t held_endings() {
    sigset_t endings;
    sigemptyset(&endings);
    for (const int ending : {SIGINT, SIGTERM, SIGHUP}) {
        if (sigismember(&masks().held, ending) == 1)
            sigaddset(&endings, ending);
    }
    return endings;
}

int wait_for_descriptor(int descriptor, short event) {
    int failure = EINTR;
    while (failure == EINTR)
        failure = wait_for_event(descriptor, event, masks().waiting);
    return failure;
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

EndingsLetIn::EndingsLetIn() {
    const sigset_t endings = held_endings();
    sigprocmask(SIG_UNBLOCK, &endings, &mask_before);
}

EndingsLetIn::~EndingsLetIn() {
    sigprocmask(SIG_SETMASK, &mask_before, nullptr);
}

MayStop::MayStop(int stop) : signals{stop, SIGCONT} {
    struct sigaction by_default {};
    by_default.sa_handler = SIG_DFL;
    sigset_t let_in;
    sigemptyset(&let_in);
    for (int i = 0; i < 2; ++i) {
        sigaction(signals[i], is_ignored(signals[i]) ? nullptr : &by_default, &actions_before[i]);
        sigaddset(&let_in, signals[i]);
    }
    sigprocmask(SIG_UNBLOCK, &let_in, &mask_before);
}

MayStop::~MayStop() {
    sigprocmask(SIG_SETMASK, &mask_before, nullptr);
    for (int i = 0; i < 2; ++i)
        sigaction(signals[i], &actions_before[i], nullptr);
}

void stop_process(int signal_number) {
    const MayStop here(signal_number);
    raise(signal_number);
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
    return wait_for_descriptor(descriptor, POLLIN);
}

int wait_writable(int descriptor) {
    return wait_for_descriptor(descriptor, POLLOUT);
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
