// When what curses says reaches the terminal, and what size the standard screen has.

#include "ui/terminal/terminal.h"

#include <fcntl.h>
#include <termios.h>

#include <functional>
#include <thread>
#include <utility>

#include "tests/support/wait_until.h"
#include "tests/ui/terminal_test.h"

namespace {

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
        startOver();
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
    pty.write("x");
    EXPECT_EQ(getch(), 'x');
    send_output();
    EXPECT_EQ(news(), "") << "no key either: it may belong to a password";
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

TEST_F(TerminalTest, has_lines_as_it_and_the_environment_want_them) {
    const auto expect_line = [&](const char* term, const std::string& bytes) {
        openAndShow(term);
        mvhline(3, 0, ACS_HLINE, 70);
        show();
        EXPECT_NE(news().find(bytes), std::string::npos) << term;
        startOver();
    };
    expect_line("xterm-256color", "─\033[68b─");
    expect_line("vt220", "──────────");
    EXPECT_EQ(std::getenv("NCURSES_NO_UTF8_ACS"), nullptr);
    setenv("NCURSES_NO_UTF8_ACS", "0", 1);
    expect_line("xterm-256color", "\033(0qqqqqqqqqq");
    EXPECT_STREQ(std::getenv("NCURSES_NO_UTF8_ACS"), "0");
}

TEST_F(TerminalTest, has_all_of_it_said_where_it_does_not_speak_ecma_48) {
    openAndShow("vt52");
    keypad(stdscr, TRUE);
    keypad(stdscr, TRUE);
    send_output();
    EXPECT_EQ(news(), "\033=\033=");
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
    close_terminal_in_time("aborted");
    EXPECT_EQ(pty.modes(), modesBefore);
    EXPECT_NE(news().find("aborted"), std::string::npos);
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
    EXPECT_NE(arrived.find("\033[?1049h"), std::string::npos);
}

using Size = std::pair<int, int>;

const Size usual = {24, 80};
const Size impossible[] = {{24, 65535}, {4097, 80}};

Size curses_size() { return {getmaxy(stdscr), getmaxx(stdscr)}; }

/// Whether what curses says is kept back, or curses writes by itself.
class TerminalSize : public TerminalTest, public testing::WithParamInterface<bool> {
  protected:
    TerminalSize() {
        if (!GetParam()) keepFilesSmall();
    }

    /// What curses has on a terminal that is opened at that size.
    Size sizeOpenedAt(const Size& told) {
        pty.resize(told.first, told.second);
        open();
        const Size size = curses_size();
        startOver();
        return size;
    }

    Size sizeRenewedAt(const Size& told) {
        resize(told.first, told.second);
        return curses_size();
    }
};

INSTANTIATE_TEST_SUITE_P(Output, TerminalSize, testing::Bool(), [](const auto& kept_back) {
    return std::string(kept_back.param ? "kept_back" : "not_kept_back");
});

TEST_P(TerminalSize, is_the_terminals_if_any_has_so_many_rows_and_columns) {
    EXPECT_EQ(sizeOpenedAt({4096, 72}), Size(4096, 72));
    for (const Size& size : impossible) EXPECT_EQ(sizeOpenedAt(size), usual);
    setenv("LINES", "4097", 1);
    setenv("COLUMNS", "0x2000", 1);
    EXPECT_EQ(sizeOpenedAt({30, 100}), Size(30, 100));
}

TEST_P(TerminalSize, becomes_the_terminals_if_any_has_so_many_rows_and_columns) {
    open();
    EXPECT_EQ(sizeRenewedAt({34, 100}), Size(34, 100));
    EXPECT_EQ(sizeRenewedAt({20, 4096}), Size(20, 4096));
    EXPECT_EQ(sizeRenewedAt(usual), usual);
    for (const Size& size : impossible) EXPECT_EQ(sizeRenewedAt(size), usual);
    EXPECT_EQ(sizeRenewedAt({34, 100}), Size(34, 100));
    pty.resize(0, 0);
    EXPECT_TRUE(renew_terminal());
    EXPECT_EQ(curses_size(), Size(34, 100));
}

TEST_P(TerminalSize, is_what_the_environment_prescribes) {
    open();
    setenv("LINES", "24", 1);
    EXPECT_EQ(sizeRenewedAt({34, 100}), Size(24, 100));
    setenv("COLUMNS", "90", 1);
    EXPECT_EQ(sizeRenewedAt({34, 100}), Size(24, 90));
    unsetenv("COLUMNS");
    int rows = 30;
    for (const char* value : {"", "0", "-5", "many", "25x", "99999999999"}) {
        setenv("LINES", value, 1);
        ++rows;
        EXPECT_EQ(sizeRenewedAt({rows, 100}), Size(rows, 100)) << value;
    }
}

TEST_F(TerminalTest, of_a_new_size_is_told_in_one_go_and_has_its_modes_and_keypad) {
    openAndShow();
    const TerminalModes modes_of_wizard = pty.modes();
    draw(0, "before");
    show();
    tcsetattr(STDIN_FILENO, TCSANOW, &modesBefore.settings);
    news();
    resize(34, 100);
    EXPECT_EQ(news(), "");
    EXPECT_EQ(pty.modes(), modes_of_wizard);
    draw(33, "the new bottom");
    show();
    news();
    EXPECT_EQ(rowText(0), "");
    EXPECT_EQ(rowText(33), "the new bottom");
    EXPECT_EQ(emulator.keyBytes(Key::up), "\033OA");
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
