#include "tests/support/emulator.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/support/escape_sequences.h"

namespace {

class EmulatorTest : public testing::Test {
  protected:
    Emulator emulator{4, 10, "xterm-256color"};

    ScreenImage after(const std::string& output) {
        emulator.feed(output);
        return emulator.image();
    }
};

TEST_F(EmulatorTest, shows_colours_and_bold_as_they_were_sent) {
    const ScreenImage image =
        after("\x1b[1;37;44mX\x1b[m\x1b[38;5;200;103mX\x1b[39;49mX\x1b[38;2;1;2;3mX");
    const Cell expected[] = {{"X", 7, 4, true},
                             {"X", 200, 11, false},
                             {"X", default_colour, default_colour, false},
                             {"X", direct_colour, default_colour, false}};
    for (int col = 0; col < 4; ++col) EXPECT_EQ(image.cell(0, col), expected[col]);
}

TEST_F(EmulatorTest, draws_lines_sent_either_way_and_repeats_a_character_on_its_line) {
    const std::pair<const char*, const char*> cases[] = {
        {"\x1b(0lqktuxmj\x1b(B", "┌─┐├┤│└┘  "},
        {"\r┌─┐├┤│└┘", "┌─┐├┤│└┘  "},
        {"\r\x1b)0\x0elqk\x0fq", "┌─┐q┤│└┘  "},
        {"\r-\x1b[8bx", "---------x"},
    };
    for (const auto& [output, row] : cases) EXPECT_EQ(after(output).rowText(0), row);
}

TEST_F(EmulatorTest, leaving_the_alternate_screen_brings_the_normal_one_back) {
    after("shell$ ");
    EXPECT_FALSE(after("\x1b[?1049h\x1b[?25l\x1b[H\x1b[2Jfull").shows("shell$"));
    EXPECT_FALSE(emulator.image().cursor().visible);
    EXPECT_TRUE(emulator.alternateScreen());
    const ScreenImage image = after("\x1b[?25h\x1b[?1049l");
    EXPECT_FALSE(emulator.alternateScreen());
    EXPECT_EQ(image.rowText(0), "shell$    ");
    EXPECT_EQ(image.cursor().position, (Position{0, 7}));
    EXPECT_TRUE(image.cursor().visible);
}

TEST_F(EmulatorTest, knows_the_mode_of_the_keys_and_does_not_mix_them_with_its_answers) {
    EXPECT_EQ(emulator.keyBytes(Key::up), "\x1b[A");
    after("\x1b[?1hab\x1b[6n");
    EXPECT_EQ(emulator.keyBytes(Key::up), "\x1bOA");
    EXPECT_EQ(emulator.keyBytes(Key::backspace), "\x7f");
    EXPECT_EQ(emulator.keyBytes(Key::backspace_as_8), "\b");
    EXPECT_EQ(emulator.takeReplies(), "\x1b[1;3R");
    EXPECT_EQ(emulator.takeReplies(), "");
}

TEST(OutputFilter, gives_the_same_wherever_the_stream_is_cut) {
    const std::string stream =
        "ab\x1b[3bc\x1b[1;37m\x1b[2b\x1b(0d\x1b[b\xe2\x94\x80\x1b[2b\r\x1b[12be\x1b\x1b[2bf"
        "\xe2\x94\x1b]Rg\xc3h\x1b]0;title\x07i";
    const std::string filtered =
        "abbbbc\x1b[1;37mcc\x1b(0dd\xe2\x94\x80\xe2\x94\x80\xe2\x94\x80\r\x1b[12be\x1b"
        "eefgh\x1b]0;title\x07i";
    for (size_t cut = 0; cut <= stream.size(); ++cut) {
        OutputFilter filter(true);
        const std::string first = filter.filter(stream.substr(0, cut));
        EXPECT_EQ(first + filter.filter(stream.substr(cut)), filtered) << "cut at " << cut;
    }
    EXPECT_EQ(OutputFilter(false).filter("\x1b]Ra"), "\x1b]Ra") << "no Linux console";
}

TEST(PlainText, leaves_escape_sequences_and_carriage_returns_out) {
    EXPECT_EQ(plain_text("\x1b[1;37;44mone\x1b(B\x1b[m\r\n\ttwo\x1b[?1l\x1b>\x07"), "one\n\ttwo");
    EXPECT_EQ(plain_text("\x1b]0;a title\x07one\x1b]0;another\x1b\\two\x1b]Rthree"), "onetwothree");
    for (const char* unfinished : {"one\x1b", "one\x1b[", "one\x1b]0;tit", "one\x1b]0;tit\x1b"})
        EXPECT_EQ(plain_text(unfinished), "one");
}

}  // namespace
