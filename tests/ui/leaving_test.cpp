// How the terminal is left, by whom, and taken again.

#include <fcntl.h>
#include <sys/wait.h>
#include <termios.h>

#include "tests/support/expect_screen.h"
#include "tests/support/process.h"
#include "tests/ui/terminal_test.h"

namespace {

constexpr const char* normal_screen = "\033[?1049l";

/// Kinds of terminal with a screen for programs and without, where the switch of screens tells of
/// no attributes.
class LeftTerminal : public TerminalTest, public testing::WithParamInterface<const char*> {
  protected:
    LeftTerminal() {
        openAndShow(GetParam());
        modesOfWizard = pty.modes();
        EXPECT_EQ(modesOfWizard.settings.c_oflag & ONLCR, 0U);
        attron(A_BOLD);
        draw(0, "bold");
        curs_set(0);
    }

    void expectOthersWriteAsEver() {
        EXPECT_EQ(write(STDOUT_FILENO, "plain", 5), 5);
        news();
        EXPECT_EQ(pty.modes(), modesBefore);
        EXPECT_FALSE(emulator.alternateScreen());
        EXPECT_TRUE(emulator.image().cursor().visible);
        const Position where = emulator.image().find("plain").value();
        EXPECT_FALSE(emulator.image().cell(where.row, where.col).bold);
    }

    TerminalModes modesOfWizard;
};

INSTANTIATE_TEST_SUITE_P(Terminals, LeftTerminal, testing::Values("xterm-256color", "vt220"),
                         [](const auto& term) { return std::string(term.param).substr(0, 5); });

TEST_P(LeftTerminal, has_been_told_all_and_is_as_it_was) {
    refresh();
    close_terminal();
    const std::string bytes = news();
    EXPECT_LT(bytes.find("bold"), bytes.find(normal_screen));
    expectOthersWriteAsEver();
    close_terminal();
    EXPECT_EQ(news(), "");
}

TEST_P(LeftTerminal, is_told_last_words_by_the_handler_of_a_signal) {
    refresh();
    close_terminal_in_time("aborted");
    const std::string bytes = news();
    EXPECT_LT(bytes.find("bold"), bytes.rfind("aborted"));
    EXPECT_EQ(bytes.rfind("aborted"), bytes.size() - 7);
    expectOthersWriteAsEver();
}

TEST_P(LeftTerminal, comes_back_with_its_modes_and_attributes) {
    show();
    close_terminal();
    expectOthersWriteAsEver();
    EXPECT_TRUE(renew_terminal());
    EXPECT_EQ(pty.modes(), modesOfWizard);
    draw(3, "back");
    show();
    EXPECT_EQ(news().find(normal_screen), std::string::npos);
    EXPECT_EQ(emulator.alternateScreen(), GetParam() != std::string("vt220"));
    EXPECT_EQ(rowText(3), "back");
    EXPECT_TRUE(emulator.image().cell(3, 0).bold);
    draw(4, "kept");
    refresh();
    EXPECT_EQ(news(), "");
}

TEST_P(LeftTerminal, has_everything_drawn_anew_whatever_it_shows) {
    show();
    news();
    const ScreenImage drawn = emulator.image();
    emulator.feed("\033[?1049l\033[2J\033[m\033[?25h\033[?1l\033[4;1H\r\nkernel: oops");
    tcsetattr(STDIN_FILENO, TCSANOW, &modesBefore.settings);
    redraw_terminal();
    keypad(stdscr, TRUE);
    send_output();
    news();
    EXPECT_SAME_LOOK(drawn, emulator.image());
    EXPECT_EQ(pty.modes(), modesOfWizard);
    if (GetParam() != std::string("vt220")) {
        EXPECT_TRUE(emulator.alternateScreen());
        EXPECT_EQ(emulator.keyBytes(Key::up), "\033OA");
    }
}

// With Ctrl-S, or a dead line.
TEST_F(TerminalTest, that_takes_nothing_keeps_nobody_from_ending) {
    for (const bool by_itself : {false, true}) {
        if (by_itself) keepFilesSmall();
        openAndShow();
        pty.fill();
        const int flags = fcntl(STDOUT_FILENO, F_GETFL);
        close_terminal_in_time("aborted");
        if (!by_itself) {
            EXPECT_EQ(fcntl(STDOUT_FILENO, F_GETFL), flags);
        }
        EXPECT_EQ(pty.modes(), modesBefore);
        EXPECT_EQ(news().find("aborted"), std::string::npos);
        startOver();
    }
}

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
        EXPECT_EQ(pty.read().find(normal_screen) != std::string::npos, gives_back);
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
    expectAfter([] { std::exit(8); }, exited(8), true);
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
