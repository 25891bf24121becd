// When what curses says reaches the terminal, and how the terminal is left and taken again.

#include "ui/terminal/terminal.h"

#include <fcntl.h>
#include <termios.h>

#include <functional>
#include <thread>

#include "tests/support/expect_screen.h"
#include "tests/support/wait_until.h"
#include "tests/ui/terminal_test.h"

namespace {

constexpr const char* other_screen = "\033[?1049h";
constexpr const char* normal_screen = "\033[?1049l";

TEST_F(TerminalTest, has_keys_one_by_one_and_unseen) {
    open();
    EXPECT_FALSE(pty.modes().canonical());
    EXPECT_FALSE(pty.modes().echo());
}

TEST_F(TerminalTest, that_can_not_move_its_cursor_is_left_as_it_was) {
    setenv("TERM", "dumb", 1);
    EXPECT_FALSE(open_terminal());
    EXPECT_EQ(pty.modes(), modesBefore);
    EXPECT_EQ(wizard_terminal.stream, nullptr);
}

TEST_F(TerminalTest, is_waited_for_a_fifth_of_a_second_after_escape_or_as_the_environment_says) {
    open();
    EXPECT_EQ(get_escdelay(), 200);
    for (const char* milliseconds : {"750", "0"}) {
        endwin();
        wizard_terminal = {};
        setenv("ESCDELAY", milliseconds, 1);
        open();
        EXPECT_EQ(get_escdelay(), std::stoi(milliseconds));
    }
}

TEST_F(TerminalTest, is_told_what_was_kept_back_in_one_go_and_once) {
    openAndShow();
    draw(0, "one");
    refresh();
    curs_set(0);
    draw(1, "two");
    refresh();
    EXPECT_EQ(news(), "");
    send_output();
    EXPECT_NE(news(), "");
    EXPECT_EQ(rowText(0), "one");
    EXPECT_EQ(rowText(1), "two");
    EXPECT_FALSE(emulator.image().cursor().visible);
    send_output();
    EXPECT_EQ(news(), "");
}

TEST_F(TerminalTest, is_told_a_character_in_the_same_attributes_by_that_character) {
    open();
    define_colours();
    wattrset(stdscr, A_BOLD | COLOR_PAIR(2));
    draw(0, "x");
    show();
    news();
    EXPECT_EQ(emulator.image().cell(0, 0).background, COLOR_BLUE);
    addch('y');
    show();
    EXPECT_EQ(news(), "y");
}

TEST_F(TerminalTest, is_told_to_delete_no_characters) {
    open();
    draw(0, "xyz 0123456789 abcdefghijklmnopqrstuvwxyz");
    show();
    news();
    draw(0, "0123456789 abcdefghijklmnopqrstuvwxyz    ");
    show();
    const std::string bytes = news();
    for (const char* sequence : {"\033[4P", "\033[4@", "\033[4h"})
        EXPECT_EQ(bytes.find(sequence), std::string::npos) << bytes;
    EXPECT_EQ(rowText(0), "0123456789 abcdefghijklmnopqrstuvwxyz");
}

/// A kind of terminal, what the environment says of lines, and how one begins.
struct LineCase {
    const char* name;
    const char* term;
    const char* without_utf8;
    const char* line;
};

class LinesOnTerminal : public TerminalTest, public testing::WithParamInterface<LineCase> {};

TEST_P(LinesOnTerminal, are_drawn) {
    if (GetParam().without_utf8 != nullptr)
        setenv("NCURSES_NO_UTF8_ACS", GetParam().without_utf8, 1);
    openAndShow(GetParam().term);
    mvhline(3, 0, ACS_HLINE, 70);
    show();
    EXPECT_NE(news().find(GetParam().line), std::string::npos);
    EXPECT_STREQ(std::getenv("NCURSES_NO_UTF8_ACS"), GetParam().without_utf8);
}

INSTANTIATE_TEST_SUITE_P(
    Terminals, LinesOnTerminal,
    testing::Values(LineCase{"repeated", "xterm-256color", nullptr, "─\033[68b─"},
                    LineCase{"one_by_one", "vt220", nullptr, "──────────"},
                    LineCase{"with_letters", "xterm-256color", "0", "\033(0qqqqqqqqqq"}),
    [](const auto& line) { return std::string(line.param.name); });

TEST_F(TerminalTest, has_all_of_it_said_where_it_does_not_speak_ecma_48) {
    openAndShow("vt52");
    keypad(stdscr, TRUE);
    keypad(stdscr, TRUE);
    send_output();
    EXPECT_EQ(news(), "\033=\033=");
}

/// Kinds of terminal with a screen for programs and without, where the switch of screens tells of
/// no attributes.
class LeftTerminal : public TerminalTest, public testing::WithParamInterface<const char*> {
  protected:
    LeftTerminal() {
        openAndShow(GetParam());
        modesOfWizard = pty.modes();
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

/// How many descriptors a program would get that is started now.
int inherited_descriptors() {
    int count = 0;
    for (int descriptor = 0; descriptor < 64; ++descriptor) {
        const int flags = fcntl(descriptor, F_GETFD);
        count += flags != -1 && (flags & FD_CLOEXEC) == 0 ? 1 : 0;
    }
    return count;
}

TEST_F(TerminalTest, leaves_nothing_open_in_other_programs) {
    const int before = inherited_descriptors();
    openAndShow();
    close_terminal();
    renew_terminal();
    EXPECT_EQ(inherited_descriptors(), before);
}

TEST_F(TerminalTest, is_written_to_at_once_where_files_must_stay_small) {
    keepFilesSmall();
    open();
    draw(0, "through");
    curs_set(0);
    refresh();
    news();
    EXPECT_EQ(rowText(0), "through");
    resize(34, 100);
    EXPECT_EQ(getmaxy(stdscr), 34);
    close_terminal();
    EXPECT_EQ(pty.modes(), modesBefore);
    news();
    EXPECT_FALSE(emulator.alternateScreen());
}

TEST_F(TerminalTest, is_written_to_at_once_where_descriptors_are_few) {
    // For a copy of each terminal's and one more.
    const int terminals = isatty(STDIN_FILENO) + isatty(STDOUT_FILENO) + isatty(STDERR_FILENO);
    std::vector<Descriptor> free_ones;
    for (int i = 0; i <= terminals; ++i) free_ones.emplace_back(dup(STDOUT_FILENO));
    const int last = free_ones.back().get();
    free_ones.clear();
    limit(RLIMIT_NOFILE, static_cast<rlim_t>(last) + 1);
    open();
    draw(0, "through");
    refresh();
    news();
    EXPECT_EQ(rowText(0), "through");
}

TEST_F(TerminalTest, may_be_none_on_standard_output) {
    Pipe pipe = make_pipe();
    dup2(pipe.write_end.get(), STDOUT_FILENO);
    openAndShow();
    std::string arrived(1000, '\0');
    arrived.resize(static_cast<size_t>(
        checked(static_cast<int>(read(pipe.read_end.get(), arrived.data(), 1000)), "read")));
    EXPECT_NE(arrived.find(other_screen), std::string::npos);
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
        wizard_terminal = {};
    }
}

/// More is kept back than the terminal takes at once.
class PlentyOfOutput : public TerminalTest {
  protected:
    PlentyOfOutput() {
        open();
        for (int frame = 0; frame < 200; ++frame) {
            for (int row = 0; row < 24; ++row) draw(row, letters(frame + row));
            refresh();
        }
    }

    /// No letter twice in a row, as curses would have the terminal repeat it.
    static std::string letters(int number) {
        std::string text;
        for (int col = 0; col < 79; ++col) text += static_cast<char>('a' + (number + col) % 26);
        return text;
    }

    /// Sends it, and reads it in pieces, doing something before each.
    void expectArrivesThough(const std::function<void(std::thread&)>& disturb) {
        std::thread sender(send_output);
        wait_until(
            [&] {
                disturb(sender);
                return news().empty() && rowText(23) == letters(199 + 23);
            },
            "the last row is there");
        sender.join();
    }
};

TEST_F(PlentyOfOutput, gets_there_though_the_terminal_makes_nobody_wait) {
    fcntl(STDOUT_FILENO, F_SETFL, O_RDWR | O_NONBLOCK);
    expectArrivesThough([](std::thread&) {});
}

TEST_F(PlentyOfOutput, gets_there_though_signals_interrupt_it) {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    sigaction(SIGUSR1, &action, nullptr);
    expectArrivesThough([](std::thread& sender) {
        // The first ends a write that has begun, one of the others finds nothing written.
        for (int signals = 0; signals < 50; ++signals) {
            pthread_kill(sender.native_handle(), SIGUSR1);
            std::this_thread::yield();
        }
    });
}

TEST_F(PlentyOfOutput, is_dropped_when_the_terminal_is_gone) {
    const Descriptor terminal(dup(STDOUT_FILENO));
    const Descriptor gone(::open("/dev/null", O_RDONLY));
    dup2(gone.get(), STDOUT_FILENO);
    send_output();
    dup2(terminal.get(), STDOUT_FILENO);
    send_output();
    EXPECT_EQ(news(), "");
}

}  // namespace
