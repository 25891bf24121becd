#include "ui/pending_box.h"

#include <string>

#include "tests/support/golden.h"
#include "tests/ui/dialog_test.h"

namespace {

class PendingBoxTest : public DialogTest {
  protected:
    ~PendingBoxTest() override { closePending(); }
};

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

TEST_F(PendingBoxTest, is_as_wide_as_its_message_and_four_columns) {
    showPending("Please wait until the port is being checked!", "Operation pending!");
    EXPECT_SCREEN(terminal.image(), "golden/pending");
    EXPECT_EQ(pending_frame()->getWidth(), 48);
    EXPECT_EQ(pending_frame()->getHeight(), 7);
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
}

TEST_F(PendingBoxTest, stays_when_the_call_returns_and_reads_no_key) {
    terminal.type("a");
    showPending("Message", "Title");
    EXPECT_NE(pending_frame(), nullptr);
    EXPECT_TRUE(shown().shows("Message"));
    EXPECT_EQ(getch(), 'a');
}

TEST_F(PendingBoxTest, has_its_own_screen_state_until_it_is_closed) {
    showPending("Message", "Title");
    EXPECT_EQ(screen_state, 102);
    closePending();
    EXPECT_EQ(screen_state, state_domain);
}

TEST_F(PendingBoxTest, hides_the_cursor_and_reads_cursor_keys_as_one) {
    showPending("Message", "Title");
    EXPECT_FALSE(terminal.image().cursor().visible);
    EXPECT_TRUE(is_keypad(pending_frame()->getCursesWindow()));
}

TEST_F(PendingBoxTest, hide_takes_it_off_the_screen_and_leaves_it_open) {
    showPending("Message", "Title");
    hidePending();
    EXPECT_FALSE(shown().shows("Message"));
    EXPECT_NE(pending_frame(), nullptr);
    EXPECT_EQ(screen_state, 102);
}

TEST_F(PendingBoxTest, close_takes_it_away) {
    showPending("Message", "Title");
    closePending();
    EXPECT_EQ(pending_frame(), nullptr);
    EXPECT_EQ(panels_shown(), 0);
    EXPECT_FALSE(shown().shows("Message"));
}

TEST_F(PendingBoxTest, hide_and_close_without_a_box_do_nothing) {
    hidePending();
    closePending();
    EXPECT_EQ(screen_state, state_domain);
    showPending("Message", "Title");
    closePending();
    screen_state = state_relay;
    closePending();
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
    EXPECT_FALSE(terminal.image().shows("Error!"));
    EXPECT_TRUE(terminal.image().shows("│ " + std::string(76, 'x') + " │"));
    EXPECT_EQ(pending_frame()->getHeight(), 7);
}

TEST_F(PendingBoxTest, with_a_message_longer_than_that_is_broken_into_lines_under_the_title_error) {
    showPending(repeated("123456789 ", 17).c_str(), "Title");
    EXPECT_SCREEN(terminal.image(), "golden/long_pending");
    EXPECT_EQ(pending_frame()->getRow(), 7);
    EXPECT_EQ(pending_frame()->getCol(), 3);
    EXPECT_EQ(pending_frame()->getHeight(), 9);
    EXPECT_EQ(pending_frame()->getWidth(), 72);
}

TEST_F(PendingBoxTest, one_character_more_than_fits_is_an_error) {
    showPending(std::string(77, 'x').c_str(), "Title");
    EXPECT_FALSE(terminal.image().shows("Title"));
    EXPECT_TRUE(terminal.image().shows("Error!"));
    EXPECT_EQ(pending_frame()->getHeight(), 8);
}

TEST_F(PendingBoxTest, percent_signs_are_plain_characters) {
    showPending("100%s%d done", "Title");
    EXPECT_TRUE(terminal.image().shows("100%s%d done"));
}

TEST_F(PendingBoxTest, for_the_apply_sequence_is_18_lines_by_60_columns) {
    showApplyPending("Please wait until the changes are applied!", "Operations pending");
    EXPECT_SCREEN(terminal.image(), "golden/apply_pending");
    EXPECT_EQ(screen_state, 102);
    EXPECT_TRUE(is_keypad(pending_frame()->getCursesWindow()));
    closePending();
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(panels_shown(), 0);
}

TEST_F(PendingBoxTest, for_the_apply_sequence_keeps_size_and_title_whatever_its_message) {
    showApplyPending(std::string(100, 'x').c_str(), "Title");
    EXPECT_TRUE(terminal.image().shows("Title"));
    EXPECT_TRUE(terminal.image().shows("┌" + repeated("─", 58) + "┐"));
    EXPECT_EQ(pending_frame()->getHeight(), 18);
}

TEST_F(PendingBoxTest, a_bigger_terminal_gets_it_into_its_middle) {
    showPending("Message", "Title");
    resizeTo(60, 200);
    placePending();
    EXPECT_EQ(shown().find("┌"), (Position{26, 92}));
    EXPECT_TRUE(shown().shows("│ Message │"));
    EXPECT_FALSE(shown().cursor().visible);
}

TEST_F(PendingBoxTest, looks_the_same_after_a_resize_as_one_made_in_the_new_size) {
    for (const bool applies : {false, true}) {
        const auto show = applies ? showApplyPending : showPending;
        resizeTo(24, 80);
        show("Please wait!", "Title");
        resizeTo(20, 72);
        placePending();
        const ScreenImage moved = shown();
        closePending();
        show("Please wait!", "Title");
        EXPECT_SAME_LOOK(shown(), moved);
    }
}

TEST_F(PendingBoxTest, a_terminal_that_becomes_too_narrow_for_the_message_breaks_it_and_back) {
    const std::string message(70, 'x');
    showPending(message.c_str(), "Title");
    const ScreenImage in_one_line = shown();
    resizeTo(20, 72);
    placePending();
    EXPECT_EQ(pending_frame()->getWidth(), 64);
    EXPECT_EQ(pending_frame()->getHeight(), 8);
    EXPECT_FALSE(shown().shows("Title"));
    EXPECT_TRUE(shown().shows("Error!"));
    EXPECT_TRUE(shown().shows(std::string(60, 'x')));
    EXPECT_FALSE(shown().shows(std::string(61, 'x')));
    resizeTo(24, 80);
    paintScreen();
    placePending();
    EXPECT_SAME_LOOK(in_one_line, shown());
}

TEST_F(PendingBoxTest, place_without_a_box_does_nothing) {
    placePending();
    EXPECT_EQ(pending_frame(), nullptr);
    EXPECT_EQ(screen_state, state_domain);
}

/// The place of a pending box in terminals of several sizes.
struct PlaceInSize {
    int rows;
    int cols;
    Position pending;
    Position apply;
};

void PrintTo(const PlaceInSize& size, std::ostream* out) {
    *out << size.cols << "x" << size.rows;
}

class PendingBoxPlaces : public DialogTest, public testing::WithParamInterface<PlaceInSize> {
  protected:
    PendingBoxPlaces() : DialogTest(GetParam().rows, GetParam().cols) {}
    ~PendingBoxPlaces() override { closePending(); }
};

TEST_P(PendingBoxPlaces, stands_in_the_middle_two_columns_to_the_left) {
    showPending("Please wait until the port is being checked!", "Operation pending!");
    EXPECT_EQ(terminal.image().find("┌"), GetParam().pending);
}

TEST_P(PendingBoxPlaces, of_the_apply_sequence_stands_in_the_middle_two_columns_to_the_left) {
    showApplyPending("Please wait until the changes are applied!", "Operations pending");
    EXPECT_EQ(terminal.image().find("┌"), GetParam().apply);
}

const PlaceInSize places[] = {
    {20, 72, {6, 10}, {1, 4}},
    {24, 80, {8, 14}, {3, 8}},
    {25, 81, {9, 14}, {3, 8}},
    {60, 200, {26, 74}, {21, 68}},
};

INSTANTIATE_TEST_SUITE_P(Sizes, PendingBoxPlaces, testing::ValuesIn(places),
                         testing::PrintToStringParamName());

}  // namespace
