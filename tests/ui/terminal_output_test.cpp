// When what curses says reaches the terminal.

#include "ui/terminal/terminal_output.h"

#include <curses.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/descriptor.h"
#include "tests/support/emulator.h"
#include "tests/support/expect_screen.h"
#include "tests/support/pty.h"
#include "tests/support/wait_until.h"
#include "tests/ui/terminal_output_test.h"

namespace {

constexpr const char* other_screen = "\x1b[?1049h";
constexpr const char* normal_screen = "\x1b[?1049l";

TEST_F(TerminalOutput, goes_through_before_it_is_kept_back) {
    draw(0, "through");
    refresh();
    news();
    EXPECT_EQ(rowText(0), "through");
}

TEST_F(TerminalOutput, that_is_kept_back_waits_to_be_sent) {
    keep_output_back();
    news();
    draw(0, "one");
    refresh();
    curs_set(0);
    draw(1, "two");
    refresh();
    keypad(stdscr, TRUE);
    EXPECT_EQ(news(), "");
    send_output();
    news();
    EXPECT_EQ(rowText(0), "one");
    EXPECT_EQ(rowText(1), "two");
    EXPECT_FALSE(emulator.image().cursor().visible);
}

TEST_F(TerminalOutput, is_sent_once) {
    keep_output_back();
    draw(0, "a long text");
    show();
    news();
    send_output();
    EXPECT_EQ(news(), "");
    draw(0, "bb");
    show();
    EXPECT_LT(news().size(), 30U);
    EXPECT_EQ(rowText(0), "bblong text");
}

TEST_F(TerminalOutput, of_a_character_in_the_same_attributes_is_that_character) {
    start_color();
    init_pair(2, COLOR_WHITE, COLOR_BLUE);
    keep_output_back();
    wattrset(stdscr, A_BOLD | COLOR_PAIR(2));
    draw(0, "x");
    show();
    news();
    addch('y');
    show();
    EXPECT_EQ(news(), "y");
}

TEST_F(TerminalOutput, deletes_no_characters) {
    keep_output_back();
    draw(0, "xyz 0123456789 abcdefghijklmnopqrstuvwxyz");
    show();
    news();
    draw(0, "0123456789 abcdefghijklmnopqrstuvwxyz    ");
    show();
    const std::string bytes = news();
    for (const char* sequence : {"\x1b[4P", "\x1b[4@", "\x1b[4h"})
        EXPECT_EQ(bytes.find(sequence), std::string::npos) << bytes;
    EXPECT_EQ(rowText(0), "0123456789 abcdefghijklmnopqrstuvwxyz");
}

TEST_F(TerminalOutputWithoutStore, draws_lines_in_utf8_and_repeats_them) {
    const std::string line = "─\x1b[68b─";
    EXPECT_NE(bytesOfLine().find(line), std::string::npos);
    EXPECT_EQ(std::getenv("NCURSES_NO_UTF8_ACS"), nullptr);
}

TEST_F(TerminalOutputWithoutStore, draws_lines_in_utf8_one_by_one_where_nothing_is_repeated) {
    setenv("TERM", "vt220", 1);
    EXPECT_NE(bytesOfLine().find("──────────"), std::string::npos);
}

TEST_F(TerminalOutputWithoutStore, draws_lines_as_the_environment_says) {
    setenv("NCURSES_NO_UTF8_ACS", "0", 1);
    EXPECT_NE(bytesOfLine().find("\x1b(0qqqqqqqqqq"), std::string::npos);
    EXPECT_STREQ(std::getenv("NCURSES_NO_UTF8_ACS"), "0");
}

TEST_F(TerminalOutput, that_was_kept_back_comes_before_the_end) {
    keep_output_back();
    curs_set(0);
    attron(A_BOLD);
    draw(0, "last words");
    refresh();
    close_terminal();
    const std::string bytes = news();
    EXPECT_LT(bytes.find("last words"), bytes.find(normal_screen));
    EXPECT_FALSE(emulator.alternateScreen());
    EXPECT_TRUE(emulator.image().cursor().visible);
    EXPECT_EQ(pty.modes(), modes_before);
    expectPlainText();
}

TEST_F(TerminalOutputWithoutStore, leaves_plain_text_where_no_other_screen_is_left) {
    showBoldTextWithoutOtherScreen();
    close_terminal();
    expectPlainText();
}

TEST_F(TerminalOutput, goes_on_after_the_screen_was_left_for_a_while) {
    keep_output_back();
    show();
    const TerminalModes modes_of_curses = pty.modes();
    close_terminal();
    EXPECT_EQ(pty.modes(), modes_before);
    renew_terminal();
    EXPECT_EQ(pty.modes(), modes_of_curses);
    draw(3, "back");
    show();
    EXPECT_NE(news().rfind(other_screen), std::string::npos);
    EXPECT_TRUE(emulator.alternateScreen());
    EXPECT_EQ(rowText(3), "back");
    draw(4, "kept");
    refresh();
    EXPECT_EQ(news(), "");
}

TEST_F(TerminalOutput, is_said_anew_whatever_the_terminal_shows) {
    keep_output_back();
    keypad(stdscr, TRUE);
    curs_set(0);
    attron(A_BOLD);
    draw(3, "bold");
    show();
    news();
    const TerminalModes modes_of_curses = pty.modes();
    const ScreenImage drawn = emulator.image();
    emulator.feed("\x1b[?1049l\x1b[2J\x1b[m\x1b[?25h\x1b[?1l\x1b[4;1H\r\nkernel: oops");
    tcsetattr(STDIN_FILENO, TCSANOW, &modes_before.settings);
    redraw_terminal();
    keypad(stdscr, TRUE);
    send_output();
    news();
    EXPECT_SAME_LOOK(drawn, emulator.image());
    EXPECT_TRUE(emulator.alternateScreen());
    EXPECT_EQ(emulator.keyBytes(Key::up), "\x1bOA");
    EXPECT_EQ(pty.modes(), modes_of_curses);
}

TEST_F(TerminalOutput, leaves_the_screen_once_before_it_comes_back) {
    keep_output_back();
    show();
    news();
    close_terminal();
    EXPECT_NE(news().find(normal_screen), std::string::npos);
    renew_terminal();
    show();
    EXPECT_EQ(news().find(normal_screen), std::string::npos);
}

TEST_F(TerminalOutputWithoutStore, has_its_attributes_again_after_somebody_else_used_the_terminal) {
    showBoldTextWithoutOtherScreen();
    EXPECT_EQ(write(STDOUT_FILENO, "\x1b[m", 3), 3);
    renew_terminal();
    draw(0, "bold");
    show();
    news();
    EXPECT_EQ(rowText(0), "bold");
    EXPECT_TRUE(emulator.image().cell(0, 0).bold);
}

TEST_F(TerminalOutputWithoutStore, is_all_said_to_a_terminal_that_does_not_speak_ecma_48) {
    setenv("TERM", "vt52", 1);
    open();
    keep_output_back();
    show();
    news();
    keypad(stdscr, TRUE);
    keypad(stdscr, TRUE);
    EXPECT_EQ(news(), "");
    send_output();
    EXPECT_EQ(news(), "\x1b=\x1b=");
}

TEST_F(TerminalOutput, leaves_nothing_open_in_other_programs) {
    keep_output_back();
    show();
    close_terminal();
    renew_terminal();
    EXPECT_EQ(inheritedDescriptors(), inherited_before);
}

TEST_F(TerminalOutputWithoutStore, goes_through_where_files_must_stay_small) {
    // Enough for most frames, not for all.
    limitResource(RLIMIT_FSIZE, 16 << 20);
    open();
    keep_output_back();
    draw(0, "through");
    curs_set(0);
    refresh();
    news();
    EXPECT_EQ(rowText(0), "through");
    pty.resize(34, 100);
    emulator.resize(34, 100);
    renew_terminal();
    EXPECT_EQ(getmaxy(stdscr), 34);
    close_terminal();
    EXPECT_EQ(pty.modes(), modes_before);
    news();
    EXPECT_FALSE(emulator.alternateScreen());
}

TEST_F(TerminalOutputWithoutStore, goes_through_where_descriptors_are_few) {
    // For a copy of each terminal's and one more.
    const int terminals = isatty(STDIN_FILENO) + isatty(STDOUT_FILENO) + isatty(STDERR_FILENO);
    std::vector<Descriptor> free_ones;
    for (int i = 0; i <= terminals; ++i)
        free_ones.emplace_back(dup(STDOUT_FILENO));
    const int last = free_ones.back().get();
    free_ones.clear();
    limitResource(RLIMIT_NOFILE, static_cast<rlim_t>(last) + 1);
    open();
    limitResource(RLIMIT_NOFILE, 1024);
    keep_output_back();
    draw(0, "through");
    refresh();
    news();
    EXPECT_EQ(rowText(0), "through");
}

TEST_F(TerminalOutputWithoutStore, goes_through_to_what_is_no_terminal) {
    Pipe pipe = make_pipe();
    dup2(pipe.write_end.get(), STDOUT_FILENO);
    open();
    keep_output_back();
    draw(0, "through");
    show();
    std::string arrived(1000, '\0');
    arrived.resize(static_cast<size_t>(
        checked(static_cast<int>(read(pipe.read_end.get(), arrived.data(), 1000)), "read")));
    endwin();
    dup2(output_before.get(), STDOUT_FILENO);
    EXPECT_NE(arrived.find(other_screen), std::string::npos);
}

/// More is kept back than the terminal takes at once.
class TerminalOutputInPlenty : public TerminalOutput {
  protected:
    TerminalOutputInPlenty() {
        keep_output_back();
        for (int frame = 0; frame < 200; ++frame) {
            for (int row = 0; row < 24; ++row)
                draw(row, letters(frame + row));
            refresh();
        }
    }

    /// No letter twice in a row, as curses would have the terminal repeat it.
    static std::string letters(int number) {
        std::string text;
        for (int col = 0; col < 79; ++col)
            text += static_cast<char>('a' + (number + col) % 26);
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

TEST_F(TerminalOutputInPlenty, gets_there) {
    expectArrivesThough([](std::thread&) {});
}

TEST_F(TerminalOutputInPlenty, gets_there_though_the_terminal_makes_nobody_wait) {
    fcntl(STDOUT_FILENO, F_SETFL, O_RDWR | O_NONBLOCK);
    expectArrivesThough([](std::thread&) {});
}

TEST_F(TerminalOutputInPlenty, gets_there_though_signals_interrupt_it) {
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

TEST_F(TerminalOutputInPlenty, is_dropped_when_the_terminal_is_gone) {
    const Descriptor terminal(dup(STDOUT_FILENO));
    const Descriptor gone(::open("/dev/null", O_RDONLY));
    dup2(gone.get(), STDOUT_FILENO);
    send_output();
    dup2(terminal.get(), STDOUT_FILENO);
    send_output();
    EXPECT_EQ(news(), "");
}

}  // namespace
