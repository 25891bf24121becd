#include "apply/progress_list.h"

#include <gtest/gtest.h>
#include <panel.h>

#include <csignal>
#include <string>
#include <vector>

#include "tests/apply/curses_screen.h"
#include "tests/apply/own_process.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "tests/support/waits.h"
#include "ui/pending_box.h"
#include "wizard/base/screen_state.h"
#include "wizard/terminal_session.h"

namespace {

// Where the box stands on 24 lines by 80 columns, and where the lines stand in it.
constexpr int box_row = 3;
constexpr int box_col = 8;
constexpr int lines_row = box_row + 5;
constexpr int lines_col = box_col + 2;
constexpr int line_count = 8;

void open_box() {
    showApplyPending("Please wait until the changes are applied!", "Operations pending");
}

class ProgressListTest : public testing::Test {
  protected:
    void SetUp() override {
        require_own_process();
        open_box();
    }

    // The place for the lines, to the inner edge of the box.
    ScreenImage lines() {
        return screen.terminal.image().region(lines_row, lines_col, line_count, 57);
    }

    CursesScreen screen;
};

void add_lines(int from, int to) {
    for (int number = from; number <= to; ++number) {
        const std::string name = "line " + std::to_string(number);
        progress_add(name.c_str(), name.c_str());
    }
}

TEST_F(ProgressListTest, a_line_shows_its_text_and_three_dots) {
    progress_add("pass", "--> setting admin password");
    EXPECT_PICTURE(lines(), R"(
--> setting admin password ...







)");
}

TEST_F(ProgressListTest, the_first_line_stands_in_the_box_in_the_colours_of_the_screen) {
    progress_add("pass", "--> setting admin password");
    EXPECT_SCREEN(screen.terminal.terminalImage(), "golden/first_line");
}

TEST_F(ProgressListTest, lines_stand_one_below_the_other) {
    add_lines(1, 8);
    EXPECT_PICTURE(lines(), R"(
line 1 ...
line 2 ...
line 3 ...
line 4 ...
line 5 ...
line 6 ...
line 7 ...
line 8 ...
)");
}

TEST_F(ProgressListTest, the_ninth_line_scrolls_so_that_the_newest_eight_are_visible) {
    add_lines(1, 9);
    EXPECT_PICTURE(lines(), R"(
line 2 ...
line 3 ...
line 4 ...
line 5 ...
line 6 ...
line 7 ...
line 8 ...
line 9 ...
)");
    EXPECT_FALSE(screen.terminal.terminalImage().shows("line 1 "));
}

TEST_F(ProgressListTest, every_further_line_scrolls_too) {
    add_lines(1, 12);
    EXPECT_EQ(lines().rowText(0).substr(0, 11), "line 5 ... ");
    EXPECT_EQ(lines().rowText(7).substr(0, 12), "line 12 ... ");
}

TEST_F(ProgressListTest, a_key_that_has_a_line_gets_no_other) {
    progress_add("pass", "first");
    progress_add("pass", "second");
    progress_add("login", "third");
    EXPECT_EQ(lines().rowText(0).substr(0, 10), "first ... ");
    EXPECT_EQ(lines().rowText(1).substr(0, 10), "third ... ");
}

TEST_F(ProgressListTest, a_key_that_has_scrolled_off_gets_no_other_line) {
    add_lines(1, 9);
    add_lines(1, 1);
    EXPECT_EQ(lines().rowText(7).substr(0, 11), "line 9 ... ");
}

TEST_F(ProgressListTest, done_stands_behind_a_blank_and_three_more_dots) {
    progress_add("pass", "--> setting admin password");
    progress_done("pass");
    EXPECT_EQ(lines().rowText(0).substr(0, 44), "--> setting admin password ...  ... DONE    ");
}

TEST_F(ProgressListTest, done_is_appended_once) {
    progress_add("pass", "first");
    progress_done("pass");
    progress_done("pass");
    EXPECT_EQ(lines().rowText(0).substr(0, 22), "first ...  ... DONE   ");
}

TEST_F(ProgressListTest, done_touches_the_line_of_its_key_only) {
    add_lines(1, 3);
    progress_done("line 2");
    EXPECT_PICTURE(lines(), R"(
line 1 ...
line 2 ...  ... DONE
line 3 ...





)");
}

TEST_F(ProgressListTest, a_finished_line_has_the_colours_of_the_box) {
    progress_add("pass", "first");
    progress_done("pass");
    EXPECT_COLOURS(lines().region(0, 0, 1, 24), R"(
BBBBBbBBBbbBBBbBBBBbbbbb
)");
}

TEST_F(ProgressListTest, done_for_a_key_without_a_line_does_nothing) {
    progress_add("pass", "first");
    const ScreenImage before = screen.terminal.image();
    progress_done("login");
    EXPECT_SAME_LOOK(before, screen.terminal.image());
}

TEST_F(ProgressListTest, a_line_that_has_scrolled_off_may_be_done) {
    add_lines(1, 9);
    progress_done("line 1");
    EXPECT_FALSE(screen.terminal.terminalImage().shows("line 1 "));
    EXPECT_EQ(lines().rowText(0).substr(0, 20), "line 2 ...          ");
}

TEST_F(ProgressListTest, a_line_keeps_its_done_when_it_scrolls) {
    add_lines(1, 8);
    progress_done("line 8");
    add_lines(9, 9);
    EXPECT_EQ(lines().rowText(6).substr(0, 20), "line 8 ...  ... DONE");
}

TEST_F(ProgressListTest, a_text_of_45_characters_is_shown_whole) {
    progress_add("cd", std::string(45, 't').c_str());
    EXPECT_EQ(lines().rowText(0).substr(0, 52), std::string(45, 't') + " ...   ");
}

TEST_F(ProgressListTest, a_longer_text_is_cut_to_45_characters_and_two_dots) {
    progress_add("cd", (std::string(44, 't') + "uv").c_str());
    EXPECT_EQ(lines().rowText(0).substr(0, 54), std::string(44, 't') + "u.. ...   ");
}

TEST_F(ProgressListTest, a_cut_line_that_is_done_is_shown_to_its_end) {
    progress_add("cd", std::string(46, 't').c_str());
    progress_done("cd");
    EXPECT_TRUE(screen.terminal.terminalImage().shows(std::string(45, 't') + ".. ...  ... DONE"));
}

TEST_F(ProgressListTest, hiding_takes_the_lines_off_and_showing_brings_them_over_a_new_box) {
    add_lines(1, 9);
    progress_done("line 9");
    const ScreenImage before = screen.terminal.terminalImage();
    progress_hide_all();
    closePending();
    update_panels();
    doupdate();
    EXPECT_FALSE(screen.terminal.terminalImage().shows("line"));
    open_box();
    EXPECT_FALSE(screen.terminal.terminalImage().shows("line"));
    progress_show_all();
    EXPECT_SAME_LOOK(before, screen.terminal.terminalImage());
}

TEST_F(ProgressListTest, lines_go_on_below_those_of_an_earlier_run) {
    add_lines(1, 2);
    progress_hide_all();
    closePending();
    open_box();
    progress_show_all();
    add_lines(1, 3);
    progress_done("line 2");
    EXPECT_PICTURE(lines(), R"(
line 1 ...
line 2 ...  ... DONE
line 3 ...





)");
}

TEST_F(ProgressListTest, the_lines_move_with_the_box_when_the_terminal_is_resized) {
    add_lines(1, 9);
    screen.terminal.resize(40, 120);
    resizeterm(40, 120);
    on_resize(SIGWINCH);
    const ScreenImage image = screen.terminal.terminalImage();
    EXPECT_EQ(image.find("line 2 ..."), (Position{11 + 5, 28 + 2}));
    EXPECT_EQ(image.find("line 9 ..."), (Position{11 + 12, 28 + 2}));
}

class ProgressOk : public ProgressListTest {
  protected:
    ProgressOk() {
        waits.atKey = [this] {
            shown.push_back(screen.terminal.terminalImage());
            screen.terminal.type(keys.substr(0, 1));
            keys.erase(0, 1);
        };
    }

    // Waits for the button with these keys typed one by one; keeps the screen before each.
    void waitWith(const std::string& typed) {
        keys = typed;
        progress_add("pass", "first");
        progress_wait_for_ok();
        EXPECT_EQ(keys, "");
    }

    Waits waits;
    std::string keys;
    std::vector<ScreenImage> shown;
};

TEST_F(ProgressOk, shows_a_button_that_has_the_focus_and_hides_the_cursor) {
    waitWith(" ");
    EXPECT_SCREEN(shown.at(0), "golden/ok_button");
}

TEST_F(ProgressOk, ends_with_enter) {
    waitWith("\n");
    EXPECT_EQ(shown.size(), 1u);
}

TEST_F(ProgressOk, no_other_key_ends_it_or_changes_the_screen) {
    waitWith("\tax\x7f\n");
    ASSERT_EQ(shown.size(), 5u);
    for (const ScreenImage& image : shown)
        EXPECT_SAME_LOOK(shown[0], image);
}

TEST_F(ProgressOk, the_button_is_gone_afterwards) {
    waitWith(" ");
    update_panels();
    doupdate();
    EXPECT_FALSE(screen.terminal.terminalImage().shows("OK"));
}

TEST_F(ProgressOk, the_button_moves_with_the_box_when_the_terminal_is_resized) {
    waits.atKey = [this] {
        screen.terminal.resize(40, 120);
        resizeterm(40, 120);
        on_resize(SIGWINCH);
        shown.push_back(screen.terminal.terminalImage());
        screen.terminal.type("\n");
    };
    waitWith("");
    EXPECT_EQ(shown.at(0).find("OK"), (Position{11 + 14 + 1, 28 + 27 + 2}));
}

}  // namespace
