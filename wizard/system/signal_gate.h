#pragma once

#include <sys/types.h>

#include <csignal>
#include <functional>

/// When signals may interrupt the wizard.
///
/// The handlers draw with curses and release the widgets, so they must never run in the middle of a
/// curses call or of the allocator. The signals that the wizard handles are therefore kept blocked
/// from the start, and let in only where it waits: for a key, for the network, for a child process,
/// in a sleep. There a handler is like a function call at a known place, and the wait goes on when
/// it returns. The kernel swaps the signal mask and begins to wait in one step (ppoll(2),
/// pselect(2)), so that no signal is missed in between.

/// Installs `handler` for `signal_number` and keeps the signal blocked outside the waits; lets it
/// in there also where the wizard was started with it blocked or ignored.
void hold_signal(int signal_number, void (*handler)(int));

/// Ignores `signal_number`; child processes treat it as the wizard was started to do.
void ignore_signal(int signal_number);

/// Whether `signal_number` is ignored now.
bool is_ignored(int signal_number);

/// While one lives, the signal mask is another one, changed as by sigprocmask(2).
class ChangedMask {
  public:
    ChangedMask(int how, const sigset_t& mask) { sigprocmask(how, &mask, &before); }
    ~ChangedMask() { sigprocmask(SIG_SETMASK, &before, nullptr); }
    ChangedMask(const ChangedMask&) = delete;
    ChangedMask& operator=(const ChangedMask&) = delete;

  private:
    sigset_t before;
};

/// Lets the signals in that end the wizard, while the result lives: for what may last where no
/// handler may draw. Theirs never returns, so that it may come at any moment.
[[nodiscard]] ChangedMask let_endings_in();

/// Lets all signals in, likewise, for one call that may wait and neither draws nor takes memory. A
/// handler that returns may cut its wait short.
[[nodiscard]] ChangedMask let_all_in();

/// Does `call`, again while it returns -1 with EINTR, and returns its result. Meanwhile the signal
/// `stop` (SIGTSTP, SIGTTOU) stops the process as if the wizard had no handler, unless it is
/// ignored: nobody could make it go on then. Nor has the SIGCONT by which it goes on a handler. It
/// can be ended there too.
int call_stoppable(int stop, const std::function<int()>& call);

/// Lets in the signals that have come, but for `kept_out`, without waiting: for loops that may
/// never have to wait.
void let_signals_in(int kept_out = 0);

/// Waits until `descriptor` can be read or has reached its end (`event` POLLIN), or can be written
/// or its connection attempt is decided (POLLOUT), letting signals in. Returns 0, or the errno of a
/// descriptor that can't be waited for.
int wait_for(int descriptor, short event);

/// Sleeps the whole time, however many signals come, letting them in.
void sleep_seconds(int seconds);

/// Waits for the child process `child` to end, letting signals in. Returns its wait status as
/// waitpid(2) gives it, or -1 when there is no such child.
int wait_for_child(pid_t child);

/// In a child process: gives it the signal mask that the wizard was started with, and the actions
/// of the signals that the wizard holds or ignores.
void restore_signals_in_child();
