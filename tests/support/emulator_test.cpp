#include "tests/support/emulator.h"

#include <gtest/gtest.h>

#include "tests/support/expect_screen.h"

namespace {

class EmulatorTest : public testing::Test {
  protected:
    Emulator emulator{4, 10, "xterm-256color"};

    ScreenImage after(const std::string& output) {
        emulator.feed(output);
        return emulator.image();
    }
};

TEST_F(EmulatorTest, shows_plain_text_in_default_colours) {
    const ScreenImage image = after("one\r\ntwo");
    EXPECT_EQ(image.text(), "one\ntwo\n\n\n");
    EXPECT_EQ(image.cell(0, 0), (Cell{"o", default_colour, default_colour, false}));
    EXPECT_EQ(image.cursor().position, (Position{1, 3}));
}

TEST_F(EmulatorTest, leaves_broken_characters_out_wherever_the_stream_is_cut) {
    EXPECT_EQ(after("\xc3").text(), "\n\n\n\n");
    EXPECT_EQ(after("a\xe2\x94").text(), "a\n\n\n\n");
    EXPECT_EQ(after("\x1b[1;3H\xe2").text(), "a\n\n\n\n");
    EXPECT_EQ(after("\x94\x80").text(), "a ─\n\n\n\n");
}

TEST_F(EmulatorTest, bold_leaves_the_colour_as_it_is) {
    EXPECT_EQ(after("\x1b[1;37;44mX").cell(0, 0), (Cell{"X", 7, 4, true}));
}

TEST_F(EmulatorTest, colours_go_back_to_the_default) {
    EXPECT_EQ(after("\x1b[30;41m\x1b[39;49mX").cell(0, 0), Cell({"X"}));
}

TEST_F(EmulatorTest, colours_beyond_the_eight_keep_their_palette_number) {
    const ScreenImage image = after("\x1b[38;5;200;103mX\x1b[38;2;1;2;3mY");
    EXPECT_EQ(image.cell(0, 0), (Cell{"X", 200, 11, false}));
    EXPECT_EQ(image.cell(0, 1).foreground, direct_colour);
}

TEST_F(EmulatorTest, a_cleared_line_gets_the_background_that_is_set) {
    const ScreenImage image = after("\x1b[44m\x1b[K");
    EXPECT_COLOURS(image.region(0, 0, 2, 10), R"(
bbbbbbbbbb
..........
)");
}

TEST_F(EmulatorTest, a_repeated_character_is_drawn_as_often) {
    EXPECT_EQ(after("-\x1b[4bx").rowText(0), "-----x    ");
    EXPECT_EQ(after("\r-\x1b[8bx").text(), "---------x\n\n\n\n");
}

TEST_F(EmulatorTest, lines_are_box_characters_whether_sent_as_utf8_or_from_the_alternate_set) {
    EXPECT_EQ(after("\x1b(0lqktuxmj\x1b(B").rowText(0), "┌─┐├┤│└┘  ");
    EXPECT_EQ(after("\r┌─┐├┤│└┘").rowText(0), "┌─┐├┤│└┘  ");
    EXPECT_EQ(after("\r\x1b)0\x0elqk\x0fq").rowText(0), "┌─┐q┤│└┘  ");
}

TEST_F(EmulatorTest, a_sequence_or_character_may_arrive_in_pieces) {
    after("\x1b[4");
    after("4m\xe2\x94");
    EXPECT_EQ(after("\x80").cell(0, 0), (Cell{"─", default_colour, 4, false}));
}

TEST_F(EmulatorTest, a_wide_character_fills_two_cells) {
    const ScreenImage image = after("日x");
    EXPECT_EQ(image.cell(0, 0).text, "日");
    EXPECT_EQ(image.cell(0, 1).text, "");
    EXPECT_EQ(image.cell(0, 2).text, "x");
}

TEST_F(EmulatorTest, the_cursor_is_hidden_and_shown_again) {
    EXPECT_FALSE(after("\x1b[?25l").cursor().visible);
    EXPECT_TRUE(after("\x1b[?25h").cursor().visible);
}

TEST_F(EmulatorTest, leaving_the_alternate_screen_brings_the_normal_one_back) {
    after("shell$ ");
    EXPECT_FALSE(emulator.alternateScreen());
    EXPECT_FALSE(after("\x1b[?1049h\x1b[H\x1b[2Jfull").shows("shell$"));
    EXPECT_TRUE(emulator.alternateScreen());
    const ScreenImage image = after("\x1b[?1049l");
    EXPECT_FALSE(emulator.alternateScreen());
    EXPECT_EQ(image.rowText(0), "shell$    ");
    EXPECT_EQ(image.cursor().position, (Position{0, 7}));
}

TEST_F(EmulatorTest, a_resized_screen_has_the_new_size_and_can_be_drawn_whole) {
    after("\x1b[?1049hold");
    emulator.resize(6, 20);
    EXPECT_EQ(emulator.image().rows(), 6);
    EXPECT_EQ(emulator.image().cols(), 20);
    EXPECT_TRUE(after("\x1b[6;20Hx").find("x") == (Position{5, 19}));
    emulator.resize(2, 5);
    EXPECT_EQ(after("\x1b[H\x1b[2Jab\x1b[2;5Hc").text(), "ab\n    c\n");
}

TEST_F(EmulatorTest, keys_send_what_a_terminal_sends) {
    EXPECT_EQ(emulator.keyBytes(Key::tab), "\t");
    EXPECT_EQ(emulator.keyBytes(Key::enter), "\r");
    EXPECT_EQ(emulator.keyBytes(Key::space), " ");
    EXPECT_EQ(emulator.keyBytes(Key::escape), "\x1b");
    EXPECT_EQ(emulator.keyBytes(Key::backspace), "\x7f");
    EXPECT_EQ(emulator.keyBytes(Key::backspace_as_8), "\b");
    EXPECT_EQ(emulator.keyBytes(Key::ctrl_c), "\x03");
    EXPECT_EQ(emulator.keyBytes(Key::del), "\x1b[3~");
    EXPECT_EQ(emulator.keyBytes(Key::page_down), "\x1b[6~");
}

TEST_F(EmulatorTest, cursor_keys_follow_the_application_mode) {
    EXPECT_EQ(emulator.keyBytes(Key::up), "\x1b[A");
    after("\x1b[?1h");
    EXPECT_EQ(emulator.keyBytes(Key::up), "\x1bOA");
    EXPECT_EQ(emulator.keyBytes(Key::home), "\x1bOH");
    after("\x1b[?1l");
    EXPECT_EQ(emulator.keyBytes(Key::left), "\x1b[D");
}

TEST_F(EmulatorTest, answers_a_question_for_the_cursor_and_does_not_mix_it_with_keys) {
    after("ab\x1b[6n");
    EXPECT_EQ(emulator.keyBytes(Key::tab), "\t");
    EXPECT_EQ(emulator.takeReplies(), "\x1b[1;3R");
    EXPECT_EQ(emulator.takeReplies(), "");
}

TEST(LinuxEmulator, the_reset_of_the_palette_does_not_swallow_what_follows) {
    Emulator console(2, 10, "linux");
    console.feed("a\x1b");
    console.feed("]");
    console.feed("Rb\x1b]Rc\x1b[1md");
    EXPECT_EQ(console.image().rowText(0), "abcd      ");
    EXPECT_TRUE(console.image().cell(0, 3).bold);
}

}  // namespace
