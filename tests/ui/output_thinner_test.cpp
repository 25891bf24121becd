// What is left of the things that curses says to terminals, and that they show the same.

#include "ui/terminal/output_thinner.h"

#include <curses.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/curses_terminal.h"
#include "tests/support/emulator.h"
#include "tests/support/expect_screen.h"

namespace {

const std::string plain = "\033(B\033[m";
const std::string white_on_blue = "\033(B\033[0;1m\033[37m\033[44m";
const std::string said_so = "\033[1;37;44m";  // what is said of that

/// What a terminal is told, first one thing, then the other, and what is left of the second.
struct Said {
    std::string before;
    std::string said;
    std::string left;
};

/// To a terminal that shows plain text.
void expect_left(const std::vector<Said>& table, bool repeats = false) {
    for (const Said& row : table) {
        OutputThinner thinner(repeats);
        thinner.thin(plain + "x");
        thinner.thin(row.before);
        EXPECT_EQ(thinner.thin(row.said), row.left) << "after " << row.before;
    }
}

/// These pass as they are after what is owed; that is said of the white on blue before.
void expect_to_pass(const std::vector<std::string>& tokens, const std::string& owed) {
    for (const std::string& token : tokens)
        expect_left({{"", white_on_blue + token, owed + token}});
}

TEST(Thinner, says_attributes_once_and_in_one_sequence) {
    expect_left({
        {"", "Password: ┌──┐ \x7f\r\n", "Password: ┌──┐ \x7f\r\n"},
        {"", white_on_blue + "a", said_so + "a"},
        {white_on_blue + "a" + plain, white_on_blue + "b" + plain, "b"},
        {white_on_blue + "a", "\033[40mb", "\033[40mb"},
        {white_on_blue + "a", "\033[30mc", "\033[30mc"},
        {"", "\033[0;31;1;41;37;44ma", said_so + "a"},
        {"", "\033[0;30;40ma\033[m\033[31;47mb", "\033[30;40ma\033[31;47mb"},
    });
}

TEST(Thinner, takes_back_one_attribute_with_all_and_says_the_others_again) {
    expect_left({
        {white_on_blue + "a" + plain, "b", "\033[mb"},
        {white_on_blue + "a", "\033[0m\033[37m\033[44mb", "\033[;37;44mb"},
        {white_on_blue + "a", "\033[;1;44mb", "\033[;1;44mb"},
        {white_on_blue + "a", "\033[0;1;37mb", "\033[;1;37mb"},
        {white_on_blue + "a", "\033[39;49mb\033[mc", "\033[39;49mb\033[mc"},
    });
}

TEST(Thinner, owes_blanks_nothing_but_boldness) {
    expect_left({
        {white_on_blue + "a", "\033[0m\033[37m\033[44m   ", "   "},
        {white_on_blue + "a", "\033[0m\033[31m\033[44m ", "\033[;31;44m "},
        {white_on_blue + "a", "\033[m\033[1m\033[37m\033[41m ", "\033[41m "},
        {white_on_blue + "a", "\033[0;37;44m \033[20b", " \033[20b"},
    });
    const std::vector<std::string> blanks = {"\033[K",  "\033[1K", "\033[J", "\033[2J", "\033[5X",
                                             "\033[3P", "\033[2@", "\033[L", "\033[4M", "\033[S",
                                             "\033[T",  "\033D",   "\033M",  "\n",      "\v",
                                             "\f",      " "};
    expect_to_pass(blanks, said_so);
    for (const std::string& blank : blanks)
        expect_left({{white_on_blue + "a", "\033[0;37;44m" + blank, blank}});
}

TEST(Thinner, owes_what_shows_nothing_no_attributes) {
    const std::vector<std::string> harmless = {
        "\033[H",  "\033[5;7H", "\033[5;7f",  "\033[3A",      "\033[B",  "\033[C",  "\033[2D",
        "\033[E",  "\033[F",    "\033[9G",    "\033[9`",      "\033[9d", "\033[a",  "\033[e",
        "\033[I",  "\033[Z",    "\r",         "\b",           "\t",      "\a",      "\x7f",
        "\033[4l", "\033[4h",   "\033[1;24r", "\033[22;0;0t", "\033)0",  "\033[34h"};
    expect_to_pass(harmless, "");
    for (const std::string& token : harmless)
        expect_left(
            {{white_on_blue + "a", token + token + white_on_blue + "b", token + token + "b"}});
}

TEST(Thinner, has_characters_repeated_that_take_several_bytes) {
    expect_left({{"", "┌───────────┐──", "┌─\033[9b─┐──"},
                 {"", "───\033[m───", "──────"},
                 {"", "-----------", "-----------"},
                 {"", "\xc4\xc4\xc4\xc4\xc4\xc4\xc4\xc4\xd9", "\xc4\033[6b\xc4\xd9"},
                 {"", "\xc3\x28\x80\x80", "\xc3\x28\x80\x80"},
                 {"", white_on_blue + "-\033[79b", said_so + "-\033[79b"}},
                true);
    expect_left({{"", "┌───────────┐", "┌───────────┐"}});
}

TEST(Thinner, changes_the_character_set_when_it_matters) {
    expect_left({
        {"", "\033(0\033(B\033(0lqk\033(B\033[5;7H\033(0x\033(Ba", "\033(0lqk\033[5;7Hx\033(Ba"},
        // Blanks of the line-drawing characters are boxes on some terminals.
        {"", "\033(0lqk\033(B  \033(0x\033(Ba", "\033(0lqk\033(B  \033(0x\033(Ba"},
        {"\017", "\016xx\017\033[K", "\016xx\017\033[K"},
        {"\017", "a\016\017\016qq\017", "a\016qq\017"},
        // In the end the letters are there, for others who write.
        {"", "\033(0x\033(B", "\033(0x\033(B"},
        {"\017", "\016x\017", "\016x\017"},
    });
}

// Some consoles go back to their plain font when all is taken back, and a font puts a Linux console
// back to letters.
TEST(Thinner, changes_a_consoles_font_when_it_matters) {
    expect_left({
        {"", "\033[0;10;1ma", "\033[1;10ma"},
        {"\033[10ma", "\033[11mq\033[10m \033[11mq\033[10m", "\033[11mq\033[10m \033[11mq\033[10m"},
        {"\033[10ma", "\033[11mq\033[10m\033[11mq\033[10m", "\033[11mqq\033[10m"},
        {"\033[10;1ma", "\033[0;11mq\033[0;1;11mr", "\033[;11mq\033[1mr"},
        {"\033[10;1ma", "\033[0;10mb", "\033[mb"},
        {"\033[0;10ma", "\033[0;11;37mx\033[0;10m", "\033[37;11mx\033[10m"},
        {"", "\016\033[0;10;1mq\017", "\033[1;10m\016q\017"},
        {"\033[10ma", "\016q\033[0;10;37;44mq\017", "\016q\033[37;44mq\017"},
        {"\033[10ma", "\016q\033[11mq\017", "\016q\033[11m\016q\017"},
        {"", "\033(0\033[30mq\033(B", "\033[30m\033(0q\033(B"},
    });
}

TEST(Thinner, says_a_mode_once) {
    const std::string modes = "\033[?1h\033=\033[?25l";
    expect_left({{"", modes, modes},
                 {modes, modes, ""},
                 {modes + "\033[?1l\033>", modes, "\033[?1h\033="},
                 {"", "\033[?7h\033[?12l\033[?7h\033[?12l", "\033[?7h\033[?12l"}});
}

TEST(Thinner, says_all_before_and_after_a_sequence_that_it_does_not_know) {
    const std::vector<std::string> sequences = {
        "\033[?1049h", "\033[?1;25h",  "\033[!p",           "\0337",        "\0338",
        "\033c",       "\033]104\a",   "\033[2 q",          "\033[>4m",     "\033[=K",
        "\033#8",      "\033%G",       "\033[6n",           "\033[4m",      "\033[7m",
        "\033[22m",    "\033[38;5;1m", "\033[48;2;0;1;30m", "\033[58;5;4m", "\033[0;1;2m",
        "\033[90m",    "\033[100m",    "\033[99999999999m"};
    for (const std::string& sequence : sequences) {
        expect_left({{"", white_on_blue + sequence, said_so + sequence},
                     {white_on_blue + sequence, white_on_blue + "x", "\033[;1;37;44m\033(Bx"},
                     {white_on_blue + sequence, "\033[1mx\033[41my ", "\033[1mx\033[41my "},
                     {"\033[?25l" + sequence, "\033[?25l", "\033[?25l"}});
    }
}

TEST(Thinner, lets_through_what_it_can_not_make_out) {
    for (const std::string said :
         {"\033", "\033[", "\033[1;", "\033(", "\033[?", "\033[!",
          "\033G4\033=!\"Password\033G0\033`9\033*\033.\033H\002\033H\003"})
        expect_left({{"", said, said}});
}

TEST(Thinner, takes_no_attributes_for_granted_at_first) {
    OutputThinner thinner;
    EXPECT_EQ(thinner.thin("\033[1ma\033[1;44mb "), "\033[1ma\033[44mb ");
    EXPECT_EQ(thinner.thin("\033[0;44mc"), "\033[;44mc");
}

TEST(Thinner, says_what_it_owes_after_it_has_forgotten_what_it_knew) {
    OutputThinner thinner;
    thinner.thin(white_on_blue + "a\033[?25l" + plain);
    thinner.forget();
    EXPECT_EQ(thinner.thin(""), "\033[m");
    EXPECT_EQ(thinner.thin(""), "");
    EXPECT_EQ(thinner.thin("\033[?25l" + plain + "b"), "\033[?25l\033[m\033(Bb");
}

constexpr int rows = 24;
constexpr int cols = 80;

/// Two terminals of a kind, one of which hears everything and the other what a thinner leaves; the
/// same goes for a terminal with curses on it.
class ThinnedPicture : public testing::TestWithParam<const char*> {
  protected:
    /// Has them told so many frames, each by `draw`, which returns what is said.
    void expectSamePictures(int frames, const std::function<std::string()>& draw) {
        for (int frame = 0; frame < frames && !HasFailure(); ++frame) {
            SCOPED_TRACE("frame " + std::to_string(frame));
            const std::string said = draw();
            full.feed(said);
            thinned.feed(thinner.thin(said));
            EXPECT_SAME_LOOK(full.image(), thinned.image());
            for (const Key key : {Key::up, Key::backspace, Key::enter})
                EXPECT_EQ(full.keyBytes(key), thinned.keyBytes(key));
            EXPECT_EQ(full.alternateScreen(), thinned.alternateScreen());
        }
    }

    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(random); }

    void drawSomething() {
        const int look = upTo(3);
        attrset((upTo(1) == 1 ? A_BOLD : A_NORMAL) | COLOR_PAIR(look));
        move(upTo(rows - 1), upTo(cols - 1));
        const std::function<void()> ways[] = {
            [&] { hline(0, upTo(cols - 1)); },
            [&] { addnstr("Please wait until the changes are applied!", upTo(42)); },
            [&] { printw("%*s", upTo(cols - 1), ""); },
            [&] { clrtoeol(); },
            [&] { bkgd(COLOR_PAIR(look)); },
            [&] { addch(ACS_VLINE); }};
        ways[upTo(5)]();
    }

    Emulator full{rows, cols, GetParam()};
    Emulator thinned{rows, cols, GetParam()};
    OutputThinner thinner{true};
    std::mt19937 random{7};
};

INSTANTIATE_TEST_SUITE_P(Terminals, ThinnedPicture,
                         testing::Values("xterm-256color", "xterm", "linux", "screen-256color",
                                         "tmux-256color", "vt220", "putty", "rxvt",
                                         "rxvt-unicode-256color"));

// In any order, also such as curses would never use.
TEST_P(ThinnedPicture, is_the_same_whatever_is_said) {
    const std::vector<std::string> pieces = {
        "text",      "a",         " ",           "      ",      "┌─┐",          "└─────┘",
        "\r",        "\n",        "\b",          "\033[m",      "\033[0;1m",    "\033[0;10;1m",
        "\033[1m",   "\033[30m",  "\033[37m",    "\033[39m",    "\033[40m",     "\033[44m",
        "\033[41m",  "\033[49m",  "\033[39;49m", "\033(B",      "\033(0",       "\016",
        "\017",      "\033)0",    "\033[K",      "\033[1K",     "\033[J",       "\033[2J",
        "\033[7X",   "\033[3P",   "\033[2@",     "\033[L",      "\033[M",       "\033M",
        "\033D",     "\033[7m",   "\033[27m",    "\033[4m",     "\033[38;5;9m", "\033[22m",
        "\0337",     "\0338",     "\033[?1h",    "\033[?1l",    "\033=",        "\033>",
        "\033[?25l", "\033[?25h", "\033[?7h",    "\033[?1049h", "\033[?1049l",  "\033[?12l"};
    expectSamePictures(100, [&] {
        std::string said;
        for (int i = 0; i < 40; ++i) {
            const auto at = static_cast<size_t>(upTo(static_cast<int>(pieces.size()) + 10));
            said += at < pieces.size() ? pieces[at]
                                       : "\033[" + std::to_string(upTo(rows)) + ";" +
                                             std::to_string(upTo(cols)) + "H";
        }
        return said;
    });
}

TEST_P(ThinnedPicture, is_the_same_whatever_curses_draws) {
    CursesTerminal curses(rows, cols, GetParam());
    size_t said = 0;
    expectSamePictures(100, [&] {
        for (int i = upTo(8); i >= 0; --i) drawSomething();
        keypad(stdscr, upTo(3) != 0);
        curs_set(upTo(1));
        refresh();
        const std::string output = curses.outputBytes();
        return output.substr(std::exchange(said, output.size()));
    });
}

}  // namespace
