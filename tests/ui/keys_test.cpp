#include "ui/keys.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/descriptor.h"
#include "tests/support/wait_until.h"
#include "tests/support/waits.h"
#include "tests/ui/ui_test.h"
#include "ui/terminal/terminal_record.h"
#include "wizard/system/signal_gate.h"

namespace {

int signals_seen = 0;

void count_signals(int signal_number) {
    signals_seen = 0;
    hold_signal(signal_number, [](int) { ++signals_seen; });
}

/// Key loops read from the windows of widgets; this is one.
class KeysTest : public UiTest {
  protected:
    KeysTest() : widget(root(), 5, 10, 3, 20) { widget.create(); }

    WINDOW* window() const { return widget.getCursesWindow(); }

    void expectKeys(const std::vector<int>& keys) {
        for (const int key : keys) EXPECT_EQ(read_key(widget), key) << keyname(key);
    }

    Window widget;
    KeyWaits waits;
};

TEST_F(KeysTest, enter_and_space_press_buttons_and_no_other_key_does) {
    EXPECT_TRUE(is_press(10));
    EXPECT_TRUE(is_press(32));
    for (const int key : {9, 13, 27, int{'y'}, KEY_ENTER, KEY_DOWN, ERR})
        EXPECT_FALSE(is_press(key)) << keyname(key);
}

TEST_F(KeysTest, keys_that_were_typed_ahead_are_read_in_their_order_also_without_keypad) {
    ASSERT_FALSE(is_keypad(window()));
    terminal.type("aB");
    for (const Key key : {Key::up, Key::backspace, Key::tab, Key::enter, Key::space})
        terminal.press(key);
    expectKeys({'a', 'B', KEY_UP, KEY_BACKSPACE, key_tab, key_enter, key_space});
    EXPECT_TRUE(is_keypad(window()));
}

TEST_F(KeysTest, a_control_sequence_that_is_known_to_nobody_is_one_key_that_is_no_character) {
    for (const std::string sequence :
         {"\033[11~", "\033[1;5~", "\033[27;5;9~", "\033[[A", "\033[7$", "\033[23^", "\033[2@",
          "\033[a", "\033OE", "\033O5P", "\033Oa", "\033[2 q", "\033[?1;2c"}) {
        terminal.type(sequence + "b");
        EXPECT_GT(read_key(widget), KEY_MIN) << sequence.substr(1);
        EXPECT_EQ(read_key(widget), 'b') << sequence.substr(1);
        terminal.type(sequence + "b");
        drain_key(window(), false);
        EXPECT_EQ(read_key(widget), 'b') << sequence.substr(1);
    }
}

TEST_F(KeysTest, escape_before_other_keys_leaves_them_as_they_are) {
    set_escdelay(10);
    const std::string too_long = "[" + std::string(40, '1');
    for (const std::string& keys : std::vector<std::string>{
             "", "a", "\033", "[", "O", "[12", "[1\033", "[\n", "O\t", "[[", too_long}) {
        terminal.type("\033" + keys);
        expectKeys({27});
        expectKeys({keys.begin(), keys.end()});
    }
    terminal.type("\033\033OA");
    expectKeys({27, KEY_UP});
    waits.then([&] { terminal.type("\033["); }).then([&] { terminal.type("5"); });
    expectKeys({27, '[', '5'});
}

TEST_F(KeysTest, a_sequence_that_arrives_in_pieces_in_time_is_one_key) {
    set_escdelay(static_cast<int>(patience().count()));
    terminal.type("\033[");
    std::thread line([&] {
        const auto are_read = [] {
            int unread = 0;
            return ioctl(STDIN_FILENO, FIONREAD, &unread) == 0 && unread == 0;
        };
        wait_until(are_read, "the first ones are read");
        terminal.type("11~b");
    });
    EXPECT_GT(read_key(widget), KEY_MIN);
    expectKeys({'b'});
    line.join();
}

TEST_F(KeysTest, ctrl_l_has_everything_drawn_anew) {
    mvwaddstr(window(), 1, 1, "drawn");
    shown();
    const size_t before = terminal.outputBytes().size();
    terminal.type("\f");
    expectKeys({'\f'});
    EXPECT_NE(terminal.outputBytes().find("drawn", before), std::string::npos);
}

TEST_F(KeysTest, a_key_that_curses_holds_already_comes_before_those_of_the_terminal) {
    terminal.type("b");
    ungetch('a');
    expectKeys({'a', 'b'});
}

TEST_F(KeysTest, a_signal_that_brings_no_key_does_not_end_the_wait) {
    count_signals(SIGUSR1);
    const auto interrupt = [] { std::raise(SIGUSR1); };
    waits.then(interrupt).then(interrupt).then([&] { terminal.type("z"); });
    expectKeys({'z'});
    EXPECT_EQ(signals_seen, 2);
}

TEST_F(KeysTest, an_interrupt_gets_in_although_there_is_a_key_to_read) {
    count_signals(SIGUSR1);
    std::raise(SIGUSR1);
    EXPECT_EQ(signals_seen, 0);
    terminal.type("a");
    expectKeys({'a'});
    EXPECT_EQ(signals_seen, 1);
}

TEST_F(KeysTest, a_resize_stays_out_while_there_is_a_key_to_read) {
    count_signals(SIGWINCH);
    std::raise(SIGWINCH);
    terminal.type("a");
    expectKeys({'a'});
    EXPECT_EQ(signals_seen, 0);
    waits.then([] {}).then([&] {
        EXPECT_EQ(signals_seen, 1);
        terminal.type("b");
    });
    expectKeys({'b'});
}

// As when a shell reads the same terminal: of what was there to read nothing is left.
TEST_F(KeysTest, input_that_somebody_else_has_read_is_no_end) {
    count_signals(SIGHUP);
    termios line_mode{};
    tcgetattr(STDIN_FILENO, &line_mode);
    line_mode.c_lflag |= ICANON;
    tcsetattr(STDIN_FILENO, TCSANOW, &line_mode);
    const std::string end_of_line = {static_cast<char>(line_mode.c_cc[VEOF])};
    waits.then([&] { terminal.type(end_of_line); });
    waits.then([&] { terminal.type("z\n"); });
    expectKeys({'z'});
    EXPECT_EQ(signals_seen, 0);
}

TEST_F(KeysTest, the_end_of_the_input_sends_a_hang_up_after_the_keys_before) {
    static CursesTerminal* keyboard = nullptr;
    keyboard = &terminal;
    signals_seen = 0;
    hold_signal(SIGHUP, [](int) {
        ++signals_seen;
        keyboard->type("z");
    });
    const Descriptor nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
    dup2(nothing.get(), STDIN_FILENO);
    terminal.type("ab");
    expectKeys({'a', 'b'});
    EXPECT_EQ(signals_seen, 0);
    expectKeys({'z'});
    EXPECT_EQ(signals_seen, 1);
}

TEST_F(KeysTest, a_window_is_waited_for_in_no_delay_mode_or_not_and_stays_as_it_is) {
    for (const bool polled : {false, true}) {
        nodelay(window(), polled);
        waits.then([&] {
            EXPECT_EQ(is_nodelay(window()), polled);
            terminal.type("z");
        });
        expectKeys({'z'});
        EXPECT_EQ(is_nodelay(window()), polled);
    }
    // A signal during the wait may change that.
    waits.then([&] {
        drain_key(window(), true);
        terminal.type("z");
    });
    nodelay(window(), FALSE);
    expectKeys({'z'});
    EXPECT_TRUE(is_nodelay(window()));
}

TEST_F(KeysTest, without_a_window_the_key_is_read_from_the_standard_screen) {
    terminal.press(Key::left);
    EXPECT_EQ(read_key(Window(nullptr, nullptr)), KEY_LEFT);
}

TEST_F(KeysTest, drain_forgets_one_key_at_most_and_sets_no_delay_mode_as_it_is_told) {
    terminal.type("a");
    terminal.press(Key::up);
    terminal.type("b");
    nodelay(window(), TRUE);
    drain_key(window(), false);
    EXPECT_TRUE(is_keypad(window()));
    EXPECT_FALSE(is_nodelay(window()));
    drain_key(window(), true);
    EXPECT_TRUE(is_nodelay(window()));
    expectKeys({'b'});
    drain_key(window(), false);
    EXPECT_FALSE(is_nodelay(window()));
}

TEST_F(KeysTest, drain_shows_nothing_of_a_window_that_has_changed) {
    widget.hide();
    shown();
    mvwaddstr(window(), 1, 1, "changed");
    drain_key(window(), false);
    EXPECT_FALSE(terminal.image().shows("changed"));
    EXPECT_FALSE(shown().shows("changed"));
}

/// A terminal of some kind whose sequences are learnt.
class KeySequences : public testing::TestWithParam<const char*> {
  protected:
    KeySequences() { learn_key_sequences(); }

    int keyOf(const std::string& sequence) {
        terminal.type(sequence);
        return read_key(root);
    }

    CursesTerminal terminal{24, 80, GetParam()};
    Window root{stdscr, nullptr};
};

INSTANTIATE_TEST_SUITE_P(Terminals, KeySequences,
                         testing::Values("xterm-256color", "xterm", "linux", "screen-256color",
                                         "tmux-256color", "vt220", "putty", "rxvt"));

TEST_P(KeySequences, are_keys_for_the_cursor_in_both_modes_and_for_the_keypad) {
    for (const std::string mode : {"\033[", "\033O"}) {
        EXPECT_EQ(keyOf(mode + "A"), KEY_UP);
        EXPECT_EQ(keyOf(mode + "B"), KEY_DOWN);
        EXPECT_EQ(keyOf(mode + "C"), KEY_RIGHT);
        EXPECT_EQ(keyOf(mode + "D"), KEY_LEFT);
    }
    for (const char* enter : {"\033OM", "\r", "\n"}) EXPECT_EQ(keyOf(enter), key_enter);
    for (const char* same : {"O", "[", "\t"}) EXPECT_EQ(keyOf(same), same[0]);
    EXPECT_EQ(keyOf("\033On"), '.');
    for (int digit = 0; digit <= 9; ++digit)
        EXPECT_EQ(keyOf(std::string("\033O") + static_cast<char>('p' + digit)), '0' + digit);
}

// Those above the cursor keys, and the report of a mouse.
TEST_P(KeySequences, are_single_keys_where_no_screen_knows_them) {
    for (const char* sequence :
         {"\033[H", "\033OH", "\033[F", "\033OF", "\033[1~", "\033[4~", "\033[7~", "\033[8~",
          "\033[2~", "\033[3~", "\033[5~", "\033[6~", "\033[<0;10;10M"})
        EXPECT_GT(keyOf(sequence), KEY_MIN) << sequence + 1;
    EXPECT_EQ(keyOf("a"), 'a');
}

TEST(KeySequencesOfDescription, stay_where_they_are_keys_that_the_screens_know) {
    CursesTerminal terminal(24, 80, "vt100");
    ASSERT_EQ(key_defined("\033Ot"), KEY_F(5));
    define_key("\033[A", KEY_DOWN);
    define_key("\033[D", KEY_BACKSPACE);
    learn_key_sequences();
    EXPECT_EQ(key_defined("\033[A"), KEY_DOWN);
    EXPECT_EQ(key_defined("\033[D"), KEY_BACKSPACE);
    EXPECT_EQ(key_defined("\033Ot"), '4');
}

}  // namespace
