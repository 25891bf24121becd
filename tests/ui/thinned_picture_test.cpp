// Thinned or not, a terminal shows the same.

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
#include "ui/terminal/output_thinner.h"

namespace {

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
        switch (upTo(5)) {
            case 0:
                hline(0, upTo(cols - 1));
                break;
            case 1:
                addnstr("Please wait until the changes are applied!", upTo(42));
                break;
            case 2:
                printw("%*s", upTo(cols - 1), "");
                break;
            case 3:
                clrtoeol();
                break;
            case 4:
                bkgd(COLOR_PAIR(look));
                break;
            default:
                addch(ACS_VLINE);
        }
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
    expectSamePictures(200, [&] {
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
    expectSamePictures(300, [&] {
        for (int i = upTo(8); i >= 0; --i) drawSomething();
        keypad(stdscr, upTo(3) != 0);
        curs_set(upTo(1));
        refresh();
        const std::string output = curses.outputBytes();
        return output.substr(std::exchange(said, output.size()));
    });
}

}  // namespace
