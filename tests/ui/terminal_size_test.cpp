// What size the standard screen has, and what becomes of it when the terminal has another.

#include <termios.h>

#include <utility>

#include "tests/ui/terminal_test.h"

namespace {

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
        endwin();
        wizard_terminal = {};
        set_term(nullptr);
        news();
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
    if (GetParam()) {
        EXPECT_EQ(sizeRenewedAt({0, 0}), Size(34, 100));
    }
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

}  // namespace
