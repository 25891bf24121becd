#include "ui/keys.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

#include "tests/support/waits.h"
#include "tests/ui/ui_test.h"
#include "wizard/system/signal_gate.h"

namespace {

/// Key loops read from the windows of widgets; this is one.
class KeysTest : public UiTest {
  protected:
    KeysTest() : widget(root(), 5, 10, 3, 20) { widget.create(); }

    WINDOW* window() const { return widget.getCursesWindow(); }

    Window widget;
};

/// From now on the standard input is at its end, as when the terminal is gone.
void end_input() {
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    close(nothing);
}

TEST_F(KeysTest, enter_and_space_press_buttons_and_no_other_key_does) {
    EXPECT_TRUE(is_press(10));
    EXPECT_TRUE(is_press(32));
    for (const int key : {9, 13, 27, int{'y'}, KEY_ENTER, KEY_DOWN, ERR})
        EXPECT_FALSE(is_press(key)) << keyname(key);
}

TEST_F(KeysTest, the_key_loops_know_tab_enter_and_space_by_their_characters) {
    terminal.press(Key::tab);
    terminal.press(Key::enter);
    terminal.press(Key::space);
    EXPECT_EQ(read_key(widget), key_tab);
    EXPECT_EQ(read_key(widget), key_enter);
    EXPECT_EQ(read_key(widget), key_space);
}

TEST_F(KeysTest, keys_that_were_typed_ahead_are_read_in_their_order) {
    terminal.type("aB");
    terminal.press(Key::up);
    terminal.press(Key::backspace);
    for (const int key : {int{'a'}, int{'B'}, KEY_UP, KEY_BACKSPACE})
        EXPECT_EQ(read_key(widget), key) << keyname(key);
}

TEST_F(KeysTest, cursor_keys_are_single_keys_also_from_a_window_without_keypad) {
    ASSERT_FALSE(is_keypad(window()));
    terminal.press(Key::down);
    EXPECT_EQ(read_key(widget), KEY_DOWN);
    EXPECT_TRUE(is_keypad(window()));
}

TEST_F(KeysTest, a_control_sequence_that_is_known_to_nobody_is_one_key_that_is_no_character) {
    for (const std::string sequence :
         {"\033[11~", "\033[1;5~", "\033[27;5;9~", "\033[[A", "\033[7$", "\033[23^", "\033[2@",
          "\033[a", "\033OE", "\033O5P", "\033Oa", "\033[2 q", "\033[?1;2c"}) {
        terminal.type(sequence + "b");
        EXPECT_GT(read_key(widget), KEY_MIN) << sequence.substr(1);
        EXPECT_EQ(read_key(widget), 'b') << sequence.substr(1);
    }
}

TEST_F(KeysTest, escape_before_other_keys_leaves_them_as_they_are) {
    set_escdelay(10);
    const std::string too_long = "[" + std::string(40, '1');
    const std::vector<std::string> all = {"",       "a",   "\033", "[",  "O",     "[12",
                                          "[1\033", "[\n", "O\t",  "[[", too_long};
    for (const std::string& keys : all) {
        terminal.type("\033" + keys);
        EXPECT_EQ(read_key(widget), 27) << keys;
        for (const char key : keys)
            EXPECT_EQ(read_key(widget), key) << keys;
    }
    terminal.type("\033\033OA");
    EXPECT_EQ(read_key(widget), 27);
    EXPECT_EQ(read_key(widget), KEY_UP);
}

TEST_F(KeysTest, the_rest_of_a_sequence_that_comes_later_is_typed) {
    set_escdelay(10);
    KeyWaits waits;
    waits.then([&] { terminal.type("\033["); }).then([&] { terminal.type("5"); });
    for (const int key : {27, int{'['}, int{'5'}})
        EXPECT_EQ(read_key(widget), key);
}

TEST_F(KeysTest, ctrl_l_has_everything_drawn_anew) {
    mvwaddstr(window(), 1, 1, "drawn");
    shown();
    const size_t before = terminal.outputBytes().size();
    terminal.type("\f");
    EXPECT_EQ(read_key(widget), '\f');
    EXPECT_NE(terminal.outputBytes().find("drawn", before), std::string::npos);
}

TEST_F(KeysTest, a_key_that_curses_holds_already_comes_before_those_of_the_terminal) {
    terminal.type("b");
    ungetch('a');
    EXPECT_EQ(read_key(widget), 'a');
    EXPECT_EQ(read_key(widget), 'b');
}

TEST_F(KeysTest, waits_for_a_key_that_is_typed_later) {
    KeyWaits waits;
    waits.then([&] { terminal.type("z"); });
    EXPECT_EQ(read_key(widget), 'z');
}

int interrupts = 0;

void count_interrupts() {
    hold_signal(SIGUSR1, [](int) { ++interrupts; });
    interrupts = 0;
}

TEST_F(KeysTest, a_signal_that_brings_no_key_does_not_end_the_wait) {
    count_interrupts();
    const auto interrupt = [] { std::raise(SIGUSR1); };
    KeyWaits waits;
    waits.then(interrupt).then(interrupt).then([&] { terminal.type("z"); });
    EXPECT_EQ(read_key(widget), 'z');
    EXPECT_EQ(interrupts, 2);
}

TEST_F(KeysTest, an_interrupt_gets_in_although_there_is_a_key_to_read) {
    count_interrupts();
    std::raise(SIGUSR1);
    EXPECT_EQ(interrupts, 0);
    terminal.type("a");
    EXPECT_EQ(read_key(widget), 'a');
    EXPECT_EQ(interrupts, 1);
}

TEST_F(KeysTest, a_resize_stays_out_while_there_is_a_key_to_read) {
    static int resizes;
    resizes = 0;
    hold_signal(SIGWINCH, [](int) { ++resizes; });
    std::raise(SIGWINCH);
    terminal.type("a");
    EXPECT_EQ(read_key(widget), 'a');
    EXPECT_EQ(resizes, 0);
    KeyWaits waits;
    waits.then([] {}).then([&] {
        EXPECT_EQ(resizes, 1);
        terminal.type("b");
    });
    EXPECT_EQ(read_key(widget), 'b');
}

// As when a shell reads the same terminal: of what was there to read nothing is left.
TEST_F(KeysTest, input_that_somebody_else_has_read_is_no_end) {
    static int hang_ups;
    hang_ups = 0;
    hold_signal(SIGHUP, [](int) { ++hang_ups; });
    termios line_mode{};
    tcgetattr(STDIN_FILENO, &line_mode);
    line_mode.c_lflag |= ICANON;
    tcsetattr(STDIN_FILENO, TCSANOW, &line_mode);
    const std::string end_of_line = {static_cast<char>(line_mode.c_cc[VEOF])};
    KeyWaits waits;
    waits.then([&] { terminal.type(end_of_line); });
    waits.then([&] { terminal.type("z\n"); });
    EXPECT_EQ(read_key(widget), 'z');
    EXPECT_EQ(hang_ups, 0);
}

TEST_F(KeysTest, a_window_in_no_delay_mode_is_waited_for_too_and_stays_in_it) {
    nodelay(window(), TRUE);
    KeyWaits waits;
    waits.then([&] {
        EXPECT_TRUE(is_nodelay(window()));
        terminal.type("z");
    });
    EXPECT_EQ(read_key(widget), 'z');
    EXPECT_TRUE(is_nodelay(window()));
}

TEST_F(KeysTest, a_window_out_of_no_delay_mode_stays_out_of_it) {
    terminal.type("z");
    EXPECT_EQ(read_key(widget), 'z');
    EXPECT_FALSE(is_nodelay(window()));
}

TEST_F(KeysTest, a_window_put_into_no_delay_mode_by_a_signal_during_the_wait_stays_in_it) {
    KeyWaits waits;
    waits.then([&] {
        drain_key(window(), true);
        terminal.type("z");
    });
    EXPECT_EQ(read_key(widget), 'z');
    EXPECT_TRUE(is_nodelay(window()));
}

TEST_F(KeysTest, without_a_window_the_key_is_read_from_the_standard_screen) {
    terminal.press(Key::left);
    EXPECT_EQ(read_key(Window(nullptr, nullptr)), KEY_LEFT);
}

TEST_F(KeysTest, the_end_of_the_input_sends_a_hang_up) {
    static CursesTerminal* keyboard = nullptr;
    static int hang_ups;
    keyboard = &terminal;
    hang_ups = 0;
    hold_signal(SIGHUP, [](int) {
        ++hang_ups;
        keyboard->type("z");
    });
    end_input();
    EXPECT_EQ(read_key(widget), 'z');
    EXPECT_EQ(hang_ups, 1);
}

TEST_F(KeysTest, keys_typed_before_the_end_of_the_input_are_read_first) {
    end_input();
    terminal.type("ab");
    EXPECT_EQ(read_key(widget), 'a');
    EXPECT_EQ(read_key(widget), 'b');
}

TEST_F(KeysTest, drain_forgets_one_key_and_leaves_the_next) {
    terminal.type("ab");
    drain_key(window(), false);
    EXPECT_EQ(read_key(widget), 'b');
}

TEST_F(KeysTest, drain_takes_a_cursor_key_as_one_key) {
    ASSERT_FALSE(is_keypad(window()));
    terminal.press(Key::up);
    terminal.type("b");
    drain_key(window(), false);
    EXPECT_TRUE(is_keypad(window()));
    EXPECT_EQ(read_key(widget), 'b');
}

TEST_F(KeysTest, drain_takes_a_control_sequence_that_is_known_to_nobody_as_one_key) {
    terminal.type("\033[1;5~b");
    drain_key(window(), false);
    EXPECT_EQ(read_key(widget), 'b');
}

TEST_F(KeysTest, drain_does_not_wait_where_there_is_no_key) {
    drain_key(window(), false);
    EXPECT_FALSE(is_nodelay(window()));
}

TEST_F(KeysTest, drain_of_a_screen_leaves_no_delay_mode_and_drain_of_a_dialog_stays_in_it) {
    nodelay(window(), TRUE);
    drain_key(window(), false);
    EXPECT_FALSE(is_nodelay(window()));
    drain_key(window(), true);
    EXPECT_TRUE(is_nodelay(window()));
}

TEST_F(KeysTest, drain_shows_nothing_of_a_window_that_has_changed) {
    widget.hide();
    shown();
    mvwaddstr(window(), 1, 1, "changed");
    drain_key(window(), false);
    EXPECT_FALSE(terminal.image().shows("changed"));
    EXPECT_FALSE(shown().shows("changed"));
}

}  // namespace
