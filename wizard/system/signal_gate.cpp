#include "wizard/system/signal_gate.h"

#include <sys/select.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <initializer_list>
#include <map>

#include "wizard/base/tel_help.h"

namespace {

struct SignalGate {
    sigset_t original;  // the mask that the wizard was started with
    sigset_t waiting;   // the same without the signals that the wizard holds

    // Of the signals whose action has been changed, those that the wizard was started with.
    std::map<int, struct sigaction> original_actions;

    SignalGate() {
        sigprocmask(SIG_BLOCK, nullptr, &original);
        waiting = original;
    }
};

// Made when it is first asked for, before any signal is held.
SignalGate& gate() {
    static SignalGate signal_gate;
    return signal_gate;
}

void set_action(int signal_number, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    // One handler must not interrupt another: both draw. A crash in one must not find its signal
    // blocked, which would end the program at once.
    sigfillset(&action.sa_mask);
    for (const int crash : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGQUIT})
        sigdelset(&action.sa_mask, crash);
    struct sigaction before {};
    sigaction(signal_number, &action, &before);
    gate().original_actions.emplace(signal_number, before);
}

sigset_t set_of(std::initializer_list<int> signals) {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal_number : signals) sigaddset(&set, signal_number);
    return set;
}

}  // namespace

void hold_signal(int signal_number, void (*handler)(int)) {
    sigdelset(&gate().waiting, signal_number);
    const sigset_t held = set_of({signal_number});
    sigprocmask(SIG_BLOCK, &held, nullptr);
    set_action(signal_number, handler);
}

bool is_ignored(int signal_number) {
    struct sigaction action {};
    sigaction(signal_number, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

void ignore_signal(int signal_number) { set_action(signal_number, SIG_IGN); }

ChangedMask let_endings_in() { return {SIG_UNBLOCK, set_of({SIGINT, SIGTERM, SIGHUP})}; }

ChangedMask let_all_in() { return {SIG_SETMASK, gate().waiting}; }

int call_stoppable(int stop, const std::function<int()>& call) {
    struct sigaction by_default {};
    by_default.sa_handler = SIG_DFL;
    // Makes room, as nothing may do once the signals are let in.
    std::map<int, struct sigaction> before;
    for (const int changed : {stop, SIGCONT})
        sigaction(changed, is_ignored(changed) ? nullptr : &by_default, &before[changed]);
    int result = 0;
    {
        const ChangedMask here(SIG_UNBLOCK, set_of({stop, SIGCONT, SIGINT, SIGTERM, SIGHUP}));
        do {
            result = call();
        } while (result == -1 && errno == EINTR);
    }
    for (const auto& [changed, action] : before) sigaction(changed, &action, nullptr);
    return result;
}

void let_signals_in(int kept_out) {
    sigset_t mask = gate().waiting;
    if (kept_out != 0) sigaddset(&mask, kept_out);
    // What is pending is delivered before sigprocmask() returns.
    const ChangedMask here(SIG_SETMASK, mask);
}

int wait_for(int descriptor, short event) {
    int failure = EINTR;
    while (failure == EINTR) failure = wait_for_event(descriptor, event, gate().waiting);
    return failure;
}

void sleep_seconds(int seconds) {
    using Clock = std::chrono::steady_clock;
    using std::chrono::nanoseconds;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(seconds);
    timespec left{seconds, 0};
    while (pselect(0, nullptr, nullptr, nullptr, &left, &gate().waiting) == -1 && errno == EINTR) {
        const nanoseconds time = std::max<nanoseconds>(end - Clock::now(), nanoseconds::zero());
        left = {static_cast<time_t>(time.count() / std::nano::den),
                static_cast<long>(time.count() % std::nano::den)};
    }
}

int wait_for_child(pid_t child) {
    int status = 0;
    pid_t ended = 0;
    // The handlers do all of a signal's work themselves, so one that runs just before waitpid()
    // begins to wait leaves nothing to be noticed here.
    const ChangedMask here = let_all_in();
    do {
        ended = waitpid(child, &status, 0);
    } while (ended == -1 && errno == EINTR);
    return ended == child ? status : -1;
}

void restore_signals_in_child() {
    for (const auto& [signal_number, action] : gate().original_actions)
        sigaction(signal_number, &action, nullptr);
    sigprocmask(SIG_SETMASK, &gate().original, nullptr);
}
