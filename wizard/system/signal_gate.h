#pragma once

#include <sys/types.h>

#include <csignal>

/// When signals may interrupt the wizard.
///
/// The handlers draw with curses and release the widgets, so they must never run in the middle of a
/// curses call or of the allocator. All signals that the wizard handles are therefore kept blocked
/// from the start, and let in only where the program waits: for a key, for the network, for a child
/// process, in a sleep. There a handler is like a function call at a known place, and the wait goes
/// on when it returns. The kernel swaps the signal mask and begins to wait in one step
/// (ppoll(2), pselect(2)), so that no signal is missed in between.

/// Installs `handler` for `signal_number` and keeps the signal blocked outside the waits; lets it
/// in there also where the wizard was started with it blocked or ignored.
void hold_signal(int signal_number, void (*handler)(int));

/// Ignores `signal_number`; child processes treat it as the wizard was started to do.
void ignore_signal(int signal_number);

/// Whether `signal_number` is ignored now.
bool is_ignored(int signal_number);

/// Makes child processes wait for being waited for, as they don't in a program that was started
/// with SIGCHLD ignored. It is not ignored in children either: how a shell's commands end would be
/// lost.
void keep_track_of_children();

/// While one lives, the signal mask is another one, changed as by sigprocmask(2).
class ChangedMask {
  public:
    ChangedMask(int how, const sigset_t& mask);
    ~ChangedMask();
    ChangedMask(const ChangedMask&) = delete;
    ChangedMask& operator=(const ChangedMask&) = delete;

  private:
    sigset_t before;
};

/// While one lives, the signals that end the wizard are let in: for what may last, at a place where
/// a handler that draws must not come in. Theirs never returns, so that it may come before a call
/// begins to wait as well as in the middle of the wait.
class EndingsLetIn : ChangedMask {
  public:
    EndingsLetIn();
};

/// While one lives, the signal `stop` (SIGTSTP, SIGTTOU) stops the process as if the wizard had no
/// handler, unless it is ignored, and the SIGCONT by which it goes on has no handler either. It can
/// be ended there too. A process that nobody could make go on is not stopped.
class MayStop {
  public:
    explicit MayStop(int stop);
    ~MayStop();
    MayStop(const MayStop&) = delete;
    MayStop& operator=(const MayStop&) = delete;

  private:
    EndingsLetIn endings;
    int signals[2];
    struct sigaction actionsBefore[2];
    sigset_t maskBefore;
};

/// In the handler of a signal that stops a process: stops this one as the signal would by itself,
/// and returns when it goes on (MayStop).
void stop_process(int signal_number);

/// Lets in the signals that have come, without waiting: for loops that may never have to wait.
void let_signals_in();

/// The same but for `kept_out`, which stays blocked.
void let_signals_in_except(int kept_out);

/// Waits until `descriptor` can be read or has reached its end (`event` POLLIN), or can be written
/// or its connection attempt is decided (POLLOUT), letting signals in. Returns 0, or the errno of a
/// descriptor that can't be waited for.
int wait_for(int descriptor, short event);

/// Sleeps the whole time, however many signals come, letting them in.
void sleep_seconds(int seconds);

/// Waits for the child process `child` to end, letting signals in. Returns its wait status as
/// waitpid(2) gives it, or -1 when there is no such child.
int wait_for_child(pid_t child);

/// In a child process between fork and exec: gives it the signal mask that the wizard was started
/// with, and the actions of the signals that the wizard holds or ignores.
void restore_signals_in_child();
