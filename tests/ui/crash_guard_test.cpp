#include <sys/wait.h>

#include "tests/support/process.h"
#include "tests/ui/terminal_test.h"

namespace {

/// A program that has the terminal in curses' hands and then comes to grief.
class CrashGuard : public TerminalTest {
  protected:
    /// Runs `work` in a program of its own and expects how it ended, by itself with 7 if `work`
    /// returned, and whether it gave the terminal back.
    void expectAfter(void (*work)(), const ExitStatus& end, bool gives_back) {
        const pid_t child = checked(fork(), "fork");
        if (child == 0) {
            // The sanitizers report a crash instead of dying of it.
            signal(SIGSEGV, SIG_DFL);
            signal(SIGQUIT, SIG_IGN);
            openAndShow();
            work();
            _exit(7);
        }
        int status = 0;
        checked(waitpid(child, &status, 0), "waitpid");
        EXPECT_EQ(from_wait_status(status), end);
        EXPECT_EQ(pty.modes() == modesBefore, gives_back);
        EXPECT_EQ(pty.read().find("\033[?1049l") != std::string::npos, gives_back);
    }
};

// Calls itself until there is no stack left, however deep that is.
int go_too_deep(volatile int* way_left) {
    volatile int left = *way_left;
    return left == 0 ? 0 : go_too_deep(&left) + left;
}

TEST_F(CrashGuard, gives_the_terminal_back_and_lets_the_signal_end_the_program) {
    expectAfter([] { raise(SIGSEGV); }, killed_by(SIGSEGV), true);
    expectAfter([] { raise(SIGALRM); }, killed_by(SIGALRM), true);
}

TEST_F(CrashGuard, gives_the_terminal_back_when_there_is_no_stack_left) {
    const auto overflow = [] {
        volatile int way_left = 1;
        go_too_deep(&way_left);
    };
    expectAfter(overflow, killed_by(SIGSEGV), true);
}

TEST_F(CrashGuard, leaves_the_terminal_alone_when_a_child_process_crashes) {
    const auto crash_in_child = [] {
        const pid_t child = checked(fork(), "fork");
        if (child == 0) raise(SIGSEGV);
        waitpid(child, nullptr, 0);
    };
    expectAfter(crash_in_child, exited(7), false);
}

TEST_F(CrashGuard, leaves_the_terminal_alone_at_a_signal_that_was_ignored_before) {
    expectAfter([] { raise(SIGQUIT); }, exited(7), false);
}

}  // namespace
