#include "apply/progress_list.h"

#include <gtest/gtest.h>
#include <panel.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/apply/apply_rig.h"
#include "tests/support/expect_screen.h"
#include "tests/support/golden.h"
#include "tests/support/waits.h"
#include "ui/message_dialogs.h"

namespace {

void open_box() {
    showApplyPending("Please wait until the changes are applied!", "Operations pending");
}

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

class ProgressListTest : public testing::Test {
  protected:
    ProgressListTest() { open_box(); }
    ~ProgressListTest() override { progress = {}; }

    // The lines below the title and the message.
    Lines lines() {
        const Lines all = boxed_lines(screen.terminal.image());
        return {all.begin() + 2, all.end()};
    }

    CursesScreen screen;
};

TEST_F(ProgressListTest, the_first_line_stands_in_the_box_in_the_colours_of_the_screen) {
    progress_add("pass", "--> setting admin password");
    EXPECT_SCREEN(screen.terminal.image(), "golden/first_line");
}

TEST_F(ProgressListTest, the_newest_eight_lines_are_visible) {
    for (int count = 1; count <= 12; ++count) {
        add_lines(count, count);
        EXPECT_EQ(lines(), lines_from(std::max(1, count - 7), count));
    }
}

TEST_F(ProgressListTest, a_key_that_has_a_line_gets_no_other_even_when_it_has_scrolled_off) {
    add_lines(1, 9);
    progress_add("line 1", "again");
    progress_add("line 9", "again");
    EXPECT_EQ(lines(), lines_from(2, 9));
}

TEST_F(ProgressListTest, done_is_appended_once_to_the_line_of_its_key_only) {
    add_lines(1, 3);
    for (const char* key : {"line 2", "line 2", "another"}) progress_done(key);
    EXPECT_EQ(lines(), (Lines{"line 1 ...", "line 2 ...  ... DONE", "line 3 ..."}));
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
    const std::string most(45, 't');
    progress_add("whole", most.c_str());
    progress_add("cut", (most + "u").c_str());
    EXPECT_EQ(lines(), (Lines{most + " ...", most + ".. ..."}));
    progress_done("cut");
    EXPECT_EQ(lines().back(), most + ".. ...  ... DONE");
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
    EXPECT_EQ(lines(), Lines{});
    progress_show_all();
    EXPECT_SAME_LOOK(before, screen.terminal.image());
    add_lines(10, 10);
    EXPECT_EQ(lines().back(), "line 10 ...");
}

class ProgressOk : public ProgressListTest {
  protected:
    // Waits for the button with these keys typed one by one. Returns the screen before each.
    std::vector<ScreenImage> waitWith(const std::string& keys) {
        std::vector<ScreenImage> shown;
        Waits waits;
        waits.atKey = [&] {
            shown.push_back(screen.terminal.image());
            screen.terminal.type(keys.substr(shown.size() - 1, 1));
        };
        progress_add("pass", "first");
        curs_set(1);
        progress_wait_for_ok();
        EXPECT_EQ(shown.size(), keys.size());
        return shown;
    }
};

TEST_F(ProgressOk, shows_a_button_that_has_the_focus_and_hides_the_cursor_until_it_is_pressed) {
    EXPECT_SCREEN(waitWith(" ").at(0), "golden/ok_button");
    update_panels();
    doupdate();
    EXPECT_FALSE(screen.terminal.image().shows("OK"));
}

TEST_F(ProgressOk, no_other_key_ends_it_or_changes_the_screen) {
    const std::vector<ScreenImage> shown = waitWith("\tax\x7f\n");
    for (const ScreenImage& image : shown) EXPECT_SAME_LOOK(shown[0], image);
}

}  // namespace
