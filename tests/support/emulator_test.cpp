#include "tests/support/emulator.h"

#include <gtest/gtest.h>

namespace {

class EmulatorTest : public testing::Test {
  protected:
    Emulator emulator{4, 10, "xterm-256color"};

    ScreenImage after(const std::string& output) {
        emulator.feed(output);
        return emulator.image();
    }
};

TEST_F(EmulatorTest, shows_text_colours_and_bold_as_they_were_sent) {
    const ScreenImage image =
        after("one\r\n\x1b[1;37;44mX\x1b[m\x1b[38;5;200;103mX\x1b[39;49mX\x1b[38;2;1;2;3mX");
    EXPECT_EQ(image.text(), "one\nXXXX\n\n\n");
    EXPECT_EQ(image.cell(0, 0), (Cell{"o", default_colour, default_colour, false}));
    EXPECT_EQ(image.cell(1, 0), (Cell{"X", 7, 4, true}));
    EXPECT_EQ(image.cell(1, 1), (Cell{"X", 200, 11, false}));
    EXPECT_EQ(image.cell(1, 2), Cell({"X"}));
    EXPECT_EQ(image.cell(1, 3).foreground, direct_colour);
    EXPECT_EQ(image.cursor().position, (Position{1, 4}));
}

TEST_F(EmulatorTest, a_repeated_character_leaves_the_cursor_on_its_line) {
    EXPECT_EQ(after("-\x1b[8bx").text(), "---------x\n\n\n\n");
}

TEST_F(EmulatorTest, lines_are_box_characters_whether_sent_as_utf8_or_from_the_alternate_set) {
    EXPECT_EQ(after("\x1b(0lqktuxmj\x1b(B").rowText(0), "┌─┐├┤│└┘  ");
    EXPECT_EQ(after("\r┌─┐├┤│└┘").rowText(0), "┌─┐├┤│└┘  ");
    EXPECT_EQ(after("\r\x1b)0\x0elqk\x0fq").rowText(0), "┌─┐q┤│└┘  ");
}

TEST_F(EmulatorTest, leaving_the_alternate_screen_brings_the_normal_one_back) {
    after("shell$ ");
    EXPECT_FALSE(emulator.alternateScreen());
    EXPECT_FALSE(after("\x1b[?1049h\x1b[?25l\x1b[H\x1b[2Jfull").shows("shell$"));
    EXPECT_FALSE(emulator.image().cursor().visible);
    EXPECT_TRUE(emulator.alternateScreen());
    const ScreenImage image = after("\x1b[?25h\x1b[?1049l");
    EXPECT_FALSE(emulator.alternateScreen());
    EXPECT_EQ(image.rowText(0), "shell$    ");
    EXPECT_EQ(image.cursor().position, (Position{0, 7}));
    EXPECT_TRUE(image.cursor().visible);
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

TEST_F(EmulatorTest, keys_send_what_a_terminal_sends_in_the_mode_that_is_set) {
    const std::pair<Key, const char*> keys[] = {
        {Key::tab, "\t"},      {Key::enter, "\r"},       {Key::space, " "},
        {Key::escape, "\x1b"}, {Key::backspace, "\x7f"}, {Key::backspace_as_8, "\b"},
        {Key::ctrl_c, "\x03"}, {Key::del, "\x1b[3~"},    {Key::page_down, "\x1b[6~"},
        {Key::up, "\x1b[A"},
    };
    for (const auto& [key, bytes] : keys) EXPECT_EQ(emulator.keyBytes(key), bytes);
    after("\x1b[?1h");
    EXPECT_EQ(emulator.keyBytes(Key::up), "\x1bOA");
    EXPECT_EQ(emulator.keyBytes(Key::home), "\x1bOH");
}

TEST_F(EmulatorTest, answers_a_question_for_the_cursor_and_does_not_mix_it_with_keys) {
    after("ab\x1b[6n");
    EXPECT_EQ(emulator.keyBytes(Key::tab), "\t");
    EXPECT_EQ(emulator.takeReplies(), "\x1b[1;3R");
    EXPECT_EQ(emulator.takeReplies(), "");
}

}  // namespace
