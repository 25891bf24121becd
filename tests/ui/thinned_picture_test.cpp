// Thinned or not, a terminal shows the same.

#include <curses.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "tests/support/curses_terminal.h"
#include "tests/support/emulator.h"
#include "tests/support/expect_screen.h"
#include "ui/terminal/output_thinner.h"

namespace {

constexpr int rows = 24;
constexpr int cols = 80;

const auto terminal_types =
    testing::Values("xterm-256color", "xterm", "linux", "screen-256color", "tmux-256color", "vt220",
                    "putty", "rxvt", "rxvt-unicode-256color");

/// Two terminals of a kind, one of which hears everything and the other what a thinner leaves.
class ThinnedPicture : public testing::TestWithParam<const char*> {
  protected:
    void say(const std::string& said) {
        full.feed(said);
        thinned.feed(thinner.thin(said));
    }

    void expectSamePicture() {
        EXPECT_SAME_LOOK(full.image(), thinned.image());
        for (const Key key : {Key::up, Key::backspace, Key::enter})
            EXPECT_EQ(full.keyBytes(key), thinned.keyBytes(key));
        EXPECT_EQ(full.alternateScreen(), thinned.alternateScreen());
    }

    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(random); }

    Emulator full{rows, cols, GetParam()};
    Emulator thinned{rows, cols, GetParam()};
    OutputThinner thinner{true};
    std::mt19937 random{7};
};

std::string name_of(const testing::TestParamInfo<const char*>& info) {
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Terminals, ThinnedPicture, terminal_types, name_of);

// What is said in any order, also such as curses would never use.
const std::vector<std::string> pieces = {"text",
                                         "a",
                                         " ",
                                         "      ",
                                         "┌─┐",
                                         "└───────────────┘",
                                         "\r",
                                         "\n",
                                         "\b",
                                         "\x1b[m",
                                         "\x1b[0;1m",
                                         "\x1b[0;10;1m",
                                         "\x1b[1m",
                                         "\x1b[30m",
                                         "\x1b[37m",
                                         "\x1b[39m",
                                         "\x1b[40m",
                                         "\x1b[44m",
                                         "\x1b[41m",
                                         "\x1b[49m",
                                         "\x1b[39;49m",
                                         "\x1b(B",
                                         "\x1b(0",
                                         "\x0e",
                                         "\x0f",
                                         "\x1b)0",
                                         "\x1b[K",
                                         "\x1b[1K",
                                         "\x1b[J",
                                         "\x1b[2J",
                                         "\x1b[7X",
                                         "\x1b[3P",
                                         "\x1b[2@",
                                         "\x1b[L",
                                         "\x1b[M",
                                         "\x1bM",
                                         "\x1b"
                                         "D",
                                         "\x1b[7m",
                                         "\x1b[27m",
                                         "\x1b[4m",
                                         "\x1b[38;5;9m",
                                         "\x1b[22m",
                                         "\x1b"
                                         "7",
                                         "\x1b"
                                         "8",
                                         "\x1b[?1h",
                                         "\x1b[?1l",
                                         "\x1b=",
                                         "\x1b>",
                                         "\x1b[?25l",
                                         "\x1b[?25h",
                                         "\x1b[?7h",
                                         "\x1b[?1049h",
                                         "\x1b[?1049l",
                                         "\x1b[?12l\x1b[?25h"};

TEST_P(ThinnedPicture, is_the_same_whatever_is_said) {
    for (int round = 0; round < 200; ++round) {
        std::string said;
        for (int i = 0; i < 40; ++i) {
            const int at = upTo(static_cast<int>(pieces.size()) + 10);
            said +=
                at < static_cast<int>(pieces.size())
                    ? pieces[static_cast<size_t>(at)]
                    : "\x1b[" + std::to_string(upTo(rows)) + ";" + std::to_string(upTo(cols)) + "H";
        }
        say(said);
        expectSamePicture();
        if (HasFailure()) {
            ADD_FAILURE() << "in round " << round;
            return;
        }
    }
}

// A terminal with curses on it, whose output goes to the two others as well.
class ThinnedCurses : public ThinnedPicture {
  protected:
    void drawSomething() {
        const int look = upTo(3);
        attrset((upTo(1) == 1 ? A_BOLD : A_NORMAL) | COLOR_PAIR(look));
        const int row = upTo(rows - 1);
        const int col = upTo(cols - 1);
        switch (upTo(5)) {
            case 0:
                mvhline(row, col, 0, upTo(cols - 1));
                break;
            case 1:
                mvaddnstr(row, col, "Please wait until the changes are applied!", upTo(42));
                break;
            case 2:
                mvprintw(row, col, "%*s", upTo(cols - 1), "");
                break;
            case 3:
                move(row, col);
                clrtoeol();
                break;
            case 4:
                bkgd(COLOR_PAIR(look));
                break;
            default:
                mvaddch(row, col, ACS_VLINE);
        }
    }

    void sayWhatIsNew() {
        const std::string output = curses.outputBytes();
        say(output.substr(said));
        said = output.size();
    }

    CursesTerminal curses{rows, cols, GetParam()};
    size_t said = 0;
};

INSTANTIATE_TEST_SUITE_P(Terminals, ThinnedCurses, terminal_types, name_of);

TEST_P(ThinnedCurses, is_the_same_whatever_is_drawn) {
    for (int frame = 0; frame < 300; ++frame) {
        for (int i = upTo(8); i >= 0; --i)
            drawSomething();
        keypad(stdscr, upTo(3) != 0);
        curs_set(upTo(1));
        refresh();
        sayWhatIsNew();
        expectSamePicture();
        if (HasFailure()) {
            ADD_FAILURE() << "in frame " << frame;
            return;
        }
    }
}

}  // namespace
