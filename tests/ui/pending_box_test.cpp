#include <string>

#include "tests/ui/dialog_test.h"

namespace {

class PendingBoxTest : public DialogTest {
  protected:
    ~PendingBoxTest() override { closePending(); }
};

TEST_F(PendingBoxTest, is_as_wide_as_its_message_and_four_columns_but_at_least_8) {
    showPending("Please wait until the port is being checked!", "Operation pending!");
    EXPECT_SCREEN(terminal.image(), "golden/pending");
    showPending("100%s%d done", "Title");
    EXPECT_TRUE(terminal.image().shows("│ 100%s%d done │"));
    for (const char* const message : {"abc ", ""}) {
        showPending(message, "wait");
        EXPECT_TRUE(terminal.image().shows("│ wait │"));
        EXPECT_EQ(size_of(*pending_frame()), (Position{7, 8}));
    }
}

TEST_F(PendingBoxTest, stays_with_its_own_state_and_reads_no_key_until_it_is_closed) {
    for (const auto show : {showPending, showApplyPending}) {
        terminal.type("a");
        show("Message", "Title");
        EXPECT_EQ(screen_state, 102);
        EXPECT_TRUE(shown().shows("Message"));
        EXPECT_FALSE(terminal.image().cursor().visible);
        EXPECT_TRUE(is_keypad(pending_frame()->getCursesWindow()));
        EXPECT_EQ(getch(), 'a');
        hidePending();
        EXPECT_FALSE(shown().shows("Message"));
        EXPECT_NE(pending_frame(), nullptr);
        EXPECT_EQ(screen_state, 102);
        for (const auto take_away : {closePending, closePending, hidePending}) take_away();
        EXPECT_EQ(pending_frame(), nullptr);
        EXPECT_EQ(panels_shown(), 0);
        EXPECT_EQ(screen_state, state_domain);
        curs_set(1);
    }
}

TEST_F(PendingBoxTest, a_second_box_takes_the_place_of_the_first) {
    showPending("First", "Title");
    showPending("Second", "Title");
    EXPECT_FALSE(shown().shows("First"));
    EXPECT_TRUE(shown().shows("Second"));
    EXPECT_EQ(panels_shown(), 1);
    closePending();
    EXPECT_EQ(screen_state, state_domain);
}

TEST_F(PendingBoxTest, with_a_message_too_long_for_a_line_has_more_lines_under_the_title_error) {
    showPending(std::string(76, 'x').c_str(), "Title");
    EXPECT_TRUE(terminal.image().shows("Title"));
    EXPECT_TRUE(terminal.image().shows("│ " + std::string(76, 'x') + " │"));
    EXPECT_EQ(pending_frame()->getHeight(), 7);
    showPending(std::string(77, 'x').c_str(), "Title");
    EXPECT_FALSE(terminal.image().shows("Title"));
    EXPECT_TRUE(terminal.image().shows("Error!"));
    for (const auto& [length, height] : {std::pair{77, 8}, {143, 8}, {144, 9}}) {
        showPending(std::string(static_cast<size_t>(length), 'x').c_str(), "Title");
        EXPECT_EQ(pending_frame()->getHeight(), height);
    }
    std::string message;
    for (int i = 0; i < 17; ++i) message += "123456789 ";
    showPending(message.c_str(), "Title");
    EXPECT_SCREEN(terminal.image(), "golden/long_pending");
}

TEST_F(PendingBoxTest, for_the_apply_sequence_is_18_lines_by_60_columns_whatever_its_message) {
    showApplyPending("Please wait until the changes are applied!", "Operations pending");
    EXPECT_SCREEN(terminal.image(), "golden/apply_pending");
    showApplyPending(std::string(100, 'x').c_str(), "Title");
    EXPECT_TRUE(terminal.image().shows("Title"));
    EXPECT_EQ(size_of(*pending_frame()), (Position{18, 60}));
}

/// A box, how long its message is, and where it stands in terminals of the other sizes: two columns
/// to the left of the middle if its message fits.
struct Placed {
    void (*show)(const char* message, const char* title);
    size_t length;
    Position corners[std::size(other_sizes)];
};

TEST_F(PendingBoxTest, stands_in_its_place_also_after_a_resize_and_looks_as_one_made_there) {
    for (const Placed& placed : {
             Placed{showPending, 7, {{6, 28}, {9, 33}, {26, 92}}},
             Placed{showPending, 70, {{6, 3}, {9, 1}, {26, 61}}},
             Placed{showPending, 250, {{5, 3}, {7, 3}, {26, 3}}},
             Placed{showApplyPending, 100, {{1, 4}, {3, 8}, {21, 68}}},
         }) {
        const std::string message(placed.length, 'x');
        for (size_t i = 0; i < std::size(other_sizes); ++i) {
            resizeDialogTo(24, 80);
            placed.show(message.c_str(), "Title");
            resizeDialogTo(other_sizes[i].row, other_sizes[i].col);
            const ScreenImage moved = shown();
            EXPECT_EQ(moved.find("┌"), placed.corners[i]);
            placed.show(message.c_str(), "Title");
            EXPECT_SAME_LOOK(shown(), moved);
            closePending();
        }
    }
}

}  // namespace
