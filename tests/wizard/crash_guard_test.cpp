#include "ui/terminal/crash_guard.h"

#include <curses.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "tests/support/process.h"
#include "tests/support/pty.h"
#include "ui/terminal/terminals.h"

namespace {

constexpr const char* normal_screen = "\x1b[?1049l";

// A program that has a terminal in curses' hands and then comes to grief.
class CrashGuard : public testing::Test {
  protected:
    /// Runs `work` in a program of its own and returns how it ended: by itself with 7 if `work`
    /// returned.
    ExitStatus statusAfter(void (*work)()) {
        const pid_t child = checked(fork(), "fork");
        if (child == 0) {
            takeTerminal();
            work();
            _exit(7);
        }
        int status = 0;
        checked(waitpid(child, &status, 0), "waitpid");
        return from_wait_status(status);
    }

    Pty pty{24, 80};
    TerminalModes modes_before = pty.modes();

  private:
    void takeTerminal() const {
        const Descriptor terminal = pty.openProgramSide();
        dup2(terminal.get(), STDIN_FILENO);
        dup2(terminal.get(), STDOUT_FILENO);
        setenv("TERM", "xterm-256color", 1);
        // The sanitizers report a crash instead of dying of it.
        signal(SIGSEGV, SIG_DFL);
        signal(SIGQUIT, SIG_IGN);
        remember_terminals();
        initscr();
        cbreak();
        noecho();
        guard_terminal_against_crashes();
        refresh();
    }
};

TEST_F(CrashGuard, gives_the_terminal_back_and_lets_the_signal_end_the_program) {
    EXPECT_EQ(statusAfter([] { raise(SIGSEGV); }), killed_by(SIGSEGV));
    EXPECT_EQ(pty.modes(), modes_before);
    EXPECT_NE(pty.read().find(normal_screen), std::string::npos);
}

// Calls itself until there is no stack left, however deep that is.
int go_too_deep(volatile int* way_left) {
    volatile int left = *way_left;
    return left == 0 ? 0 : go_too_deep(&left) + left;
}

TEST_F(CrashGuard, gives_the_terminal_back_when_there_is_no_stack_left) {
    const ExitStatus status = statusAfter([] {
        volatile int way_left = 1;
        go_too_deep(&way_left);
    });
    EXPECT_EQ(status, killed_by(SIGSEGV));
    EXPECT_EQ(pty.modes(), modes_before);
    EXPECT_NE(pty.read().find(normal_screen), std::string::npos);
}

TEST_F(CrashGuard, leaves_the_terminal_alone_when_a_child_process_crashes) {
    const auto crash_in_child = [] {
        const pid_t child = checked(fork(), "fork");
        if (child == 0)
            raise(SIGSEGV);
        waitpid(child, nullptr, 0);
    };
    EXPECT_EQ(statusAfter(crash_in_child), exited(7));
    EXPECT_NE(pty.modes(), modes_before);
    EXPECT_EQ(pty.read().find(normal_screen), std::string::npos);
}

TEST_F(CrashGuard, leaves_the_terminal_alone_at_a_signal_that_was_ignored_before) {
    EXPECT_EQ(statusAfter([] { raise(SIGQUIT); }), exited(7));
    EXPECT_NE(pty.modes(), modes_before);
    EXPECT_EQ(pty.read().find(normal_screen), std::string::npos);
}

}  // namespace
