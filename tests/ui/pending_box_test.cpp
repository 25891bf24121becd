#include <string>

#include "tests/ui/dialog_test.h"

namespace {

class PendingBoxTest : public DialogTest {
  protected:
    ~PendingBoxTest() override { closePending(); }

    std::optional<Position> corner() { return shown().find("┌"); }
};

TEST_F(PendingBoxTest, is_as_wide_as_its_message_and_four_columns) {
    showPending("Please wait until the port is being checked!", "Operation pending!");
    EXPECT_SCREEN(terminal.image(), "golden/pending");
    showPending("100%s%d done", "Title");
    EXPECT_TRUE(terminal.image().shows("│ 100%s%d done │"));
}

TEST_F(PendingBoxTest, is_at_least_8_columns_wide) {
    showPending("abc", "wait");
    EXPECT_PICTURE(terminal.image().region(8, 34, 7, 8), R"(
┌──────┐
│ wait │
├──────┤
│ abc  │
│      │
│      │
└──────┘
)");
    showPending("", "wait");
    EXPECT_EQ(pending_frame()->getWidth(), 8);
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
        closePending();
        EXPECT_EQ(pending_frame(), nullptr);
        EXPECT_EQ(panels_shown(), 0);
        EXPECT_EQ(screen_state, state_domain);
        curs_set(1);
    }
}

TEST_F(PendingBoxTest, without_a_box_hide_close_and_place_do_nothing) {
    screen_state = state_relay;
    hidePending();
    placePending();
    closePending();
    EXPECT_EQ(pending_frame(), nullptr);
    EXPECT_EQ(screen_state, state_relay);
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

TEST_F(PendingBoxTest, with_a_message_as_long_as_fits_keeps_its_title_and_one_line) {
    showPending(std::string(76, 'x').c_str(), "Title");
    EXPECT_TRUE(terminal.image().shows("Title"));
    EXPECT_TRUE(terminal.image().shows("│ " + std::string(76, 'x') + " │"));
    EXPECT_EQ(pending_frame()->getHeight(), 7);
}

TEST_F(PendingBoxTest, with_a_message_longer_than_that_is_broken_into_lines_under_the_title_error) {
    showPending(std::string(77, 'x').c_str(), "Title");
    EXPECT_FALSE(terminal.image().shows("Title"));
    EXPECT_TRUE(terminal.image().shows("Error!"));
    EXPECT_EQ(pending_frame()->getHeight(), 8);
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
    EXPECT_EQ(pending_frame()->getHeight(), 18);
    EXPECT_EQ(pending_frame()->getWidth(), 60);
}

TEST_F(PendingBoxTest, looks_the_same_after_a_resize_as_one_made_in_the_new_size) {
    for (const auto show : {showPending, showApplyPending}) {
        for (const size_t length : {7U, 70U, 100U}) {
            const std::string message(length, 'x');
            resizeDialogTo(24, 80);
            show(message.c_str(), "Title");
            for (const Position& size : {Position{20, 72}, Position{60, 200}, Position{24, 80}}) {
                resizeDialogTo(size.row, size.col);
                const ScreenImage moved = shown();
                show(message.c_str(), "Title");
                EXPECT_SAME_LOOK(shown(), moved);
            }
            closePending();
        }
    }
}

/// Where the boxes for a port, for the apply sequence and for a long message stand: the first two
/// two columns to the left of the middle.
const PlacesInSize places[] = {
    {{20, 72}, {{6, 10}, {1, 4}, {5, 3}}},
    {{24, 80}, {{8, 14}, {3, 8}, {7, 3}}},
    {{25, 81}, {{9, 14}, {3, 8}, {7, 3}}},
    {{60, 200}, {{26, 74}, {21, 68}, {26, 3}}},
};

TEST_F(PendingBoxTest, stands_in_its_place_of_a_terminal_of_any_size) {
    for (const PlacesInSize& place : places) {
        resizeTo(place.size.row, place.size.col);
        showPending("Please wait until the port is being checked!", "Operation pending!");
        EXPECT_EQ(corner(), place.boxes[0]);
        showApplyPending("Please wait until the changes are applied!", "Operations pending");
        EXPECT_EQ(corner(), place.boxes[1]);
        showPending(std::string(250, 'x').c_str(), "Title");
        EXPECT_EQ(corner(), place.boxes[2]);
    }
}

}  // namespace
