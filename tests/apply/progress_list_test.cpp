#include "apply/progress_list.h"

#include <gtest/gtest.h>
#include <panel.h>

#include <algorithm>
#include <csignal>
#include <string>
#include <vector>

#include "tests/apply/apply_rig.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "tests/support/waits.h"
#include "ui/message_dialogs.h"
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
    ProgressListTest() { open_box(); }
    ~ProgressListTest() override { progress = {}; }

    // The places for the lines, without the spaces at their ends.
    std::vector<std::string> lines() {
        const ScreenImage image =
            screen.terminal.image().region(lines_row, lines_col, line_count, 57);
        std::vector<std::string> texts;
        for (int row = 0; row < line_count; ++row) {
            const std::string text = image.rowText(row);
            texts.push_back(text.substr(0, text.find_last_not_of(' ') + 1));
        }
        while (!texts.empty() && texts.back().empty()) texts.pop_back();
        return texts;
    }

    CursesScreen screen;
};

using Lines = std::vector<std::string>;

void add_lines(int from, int to) {
    for (int number = from; number <= to; ++number) {
        const std::string name = "line " + std::to_string(number);
        progress_add(name.c_str(), name.c_str());
    }
}

Lines lines_from(int from, int to) {
    Lines lines;
    for (int number = from; number <= to; ++number)
        lines.push_back("line " + std::to_string(number) + " ...");
    return lines;
}

TEST_F(ProgressListTest, the_first_line_stands_in_the_box_in_the_colours_of_the_screen) {
    progress_add("pass", "--> setting admin password");
    EXPECT_SCREEN(screen.terminal.image(), "golden/first_line");
}

TEST_F(ProgressListTest, the_newest_eight_lines_are_visible) {
    for (int count = 1; count <= 12; ++count) {
        add_lines(count, count);
        EXPECT_EQ(lines(), lines_from(std::max(1, count - 7), count));
    }
    EXPECT_FALSE(screen.terminal.image().shows("line 1 "));
}

TEST_F(ProgressListTest, a_key_that_has_a_line_gets_no_other_even_when_it_has_scrolled_off) {
    add_lines(1, 9);
    progress_add("line 1", "again");
    progress_add("line 9", "again");
    EXPECT_EQ(lines(), lines_from(2, 9));
}

TEST_F(ProgressListTest, done_is_appended_once_to_the_line_of_its_key_only) {
    add_lines(1, 3);
    progress_done("line 2");
    progress_done("line 2");
    progress_done("another");
    EXPECT_EQ(lines(), (Lines{"line 1 ...", "line 2 ...  ... DONE", "line 3 ..."}));
}

TEST_F(ProgressListTest, a_finished_line_has_the_colours_of_the_box) {
    progress_add("pass", "first");
    progress_done("pass");
    EXPECT_COLOURS(screen.terminal.image().region(lines_row, lines_col, 1, 24), R"(
BBBBBbBBBbbBBBbBBBBbbbbb
)");
}

TEST_F(ProgressListTest, a_line_may_be_done_off_the_screen_and_stays_so_when_it_scrolls) {
    add_lines(1, 9);
    progress_done("line 1");
    EXPECT_EQ(lines(), lines_from(2, 9));
    progress_done("line 8");
    add_lines(10, 10);
    EXPECT_EQ(lines().at(5), "line 8 ...  ... DONE");
}

TEST_F(ProgressListTest, a_text_of_more_than_45_characters_is_cut_and_ends_in_two_dots) {
    progress_add("whole", std::string(45, 't').c_str());
    progress_add("cut", (std::string(44, 't') + "uv").c_str());
    EXPECT_EQ(lines(), (Lines{std::string(45, 't') + " ...", std::string(44, 't') + "u.. ..."}));
    progress_done("cut");
    EXPECT_TRUE(screen.terminal.image().shows(std::string(44, 't') + "u.. ...  ... DONE"));
}

TEST_F(ProgressListTest, hiding_takes_the_lines_off_and_showing_brings_them_over_a_new_box) {
    add_lines(1, 9);
    progress_done("line 9");
    const ScreenImage before = screen.terminal.image();
    progress_hide_all();
    closePending();
    update_panels();
    doupdate();
    EXPECT_FALSE(screen.terminal.image().shows("line"));
    open_box();
    EXPECT_FALSE(screen.terminal.image().shows("line"));
    progress_show_all();
    EXPECT_SAME_LOOK(before, screen.terminal.image());
    add_lines(10, 10);
    EXPECT_EQ(lines().back(), "line 10 ...");
}

class ProgressOk : public ProgressListTest {
  protected:
    ProgressOk() {
        waits.atKey = [this] {
            shown.push_back(screen.terminal.image());
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

TEST_F(ProgressOk, no_other_key_ends_it_or_changes_the_screen) {
    waitWith("\tax\x7f\n");
    ASSERT_EQ(shown.size(), 5u);
    for (const ScreenImage& image : shown) EXPECT_SAME_LOOK(shown[0], image);
}

TEST_F(ProgressOk, the_button_is_gone_afterwards) {
    waitWith(" ");
    update_panels();
    doupdate();
    EXPECT_FALSE(screen.terminal.image().shows("OK"));
}

TEST_F(ProgressOk, the_lines_and_the_button_move_with_the_box_when_the_terminal_is_resized) {
    waits.atKey = [this] {
        screen.terminal.resize(40, 120);
        resizeterm(40, 120);
        on_resize(SIGWINCH);
        shown.push_back(screen.terminal.image());
        screen.terminal.type("\n");
    };
    add_lines(1, 8);
    waitWith("");
    EXPECT_EQ(shown.at(0).find("line 2 ..."), (Position{11 + 5, 28 + 2}));
    EXPECT_EQ(shown.at(0).find("first ..."), (Position{11 + 12, 28 + 2}));
    EXPECT_EQ(shown.at(0).find("OK"), (Position{11 + 14 + 1, 28 + 27 + 2}));
}

}  // namespace
