#include "ui/choice_list.h"

#include <cstring>
#include <string>
#include <vector>

#include "tests/ui/ui_test.h"
#include "wizard/base/heap_text.h"

namespace {

const char* const services[] = {"POP3", "IMAP", "WebMail"};
const unsigned char imap_only[] = {0, 1, 0};

/// The flags as a text of 0 and 1.
std::string flags_of(const ChoiceList& list) {
    int count = -1;
    const std::unique_ptr<unsigned char, FreeHeap> flags(list.getChecked(&count));
    std::string text;
    for (int i = 0; i < count; ++i)
        text += std::to_string(flags.get()[i]);
    return text;
}

/// A list in the colours of the screens.
class ChoiceListTest : public UiTest {
  protected:
    ChoiceListTest() : list(root(), 3, services, imap_only, 2, 4, 2, 1) { list.setColors(2, 2, 0); }

    ScreenImage draw() {
        list.draw();
        return look();
    }

    /// The list as it has been drawn last.
    ScreenImage look() { return shown(2, 4, 3, 11); }

    ChoiceList list;
};

TEST_F(ChoiceListTest, is_as_high_as_it_has_entries_and_four_columns_wider_than_the_longest) {
    EXPECT_EQ(list.getHeight(), 3);
    EXPECT_EQ(list.getWidth(), 11);
    EXPECT_TRUE(is_keypad(list.getCursesWindow()));
    EXPECT_EQ(list.getRow(), 2);
    EXPECT_EQ(list.getCol(), 4);
}

TEST_F(ChoiceListTest, shows_a_check_box_before_each_entry) {
    EXPECT_PICTURE(draw(), R"(
[ ] POP3
[x] IMAP
[ ] WebMail
)");
}

TEST_F(ChoiceListTest, the_bar_is_bold_white_on_black_and_covers_the_longest_entry_on_every_line) {
    EXPECT_COLOURS(draw(), R"(
KkKkKKKKkkk
bbbbbbbbbbb
bbbbbbbbbbb
)");
    list.onKey(KEY_DOWN);
    EXPECT_COLOURS(look(), R"(
bbbbbbbbbbb
KKKkKKKKkkk
bbbbbbbbbbb
)");
}

TEST_F(ChoiceListTest, a_bold_background_makes_the_other_entries_bold_too) {
    list.setColors(2, 2, 1);
    EXPECT_COLOURS(draw().region(1, 0, 1, 11), "BBBbBBBBbbb\n");
}

TEST_F(ChoiceListTest, takes_both_pairs_from_its_constructor) {
    ChoiceList other(root(), 3, services, imap_only, 10, 4, 3, 2);
    other.draw();
    EXPECT_COLOURS(shown(10, 4, 3, 11), R"(
BbBbBBBBbbb
rrrrrrrrrrr
rrrrrrrrrrr
)");
}

TEST_F(ChoiceListTest, space_turns_the_mark_under_the_bar_on_and_off_and_draws) {
    draw();
    list.onKey(32);
    EXPECT_EQ(flags_of(list), "110");
    EXPECT_PICTURE(look(), R"(
[x] POP3
[x] IMAP
[ ] WebMail
)");
    list.onKey(32);
    EXPECT_EQ(flags_of(list), "010");
    EXPECT_PICTURE(look(), R"(
[ ] POP3
[x] IMAP
[ ] WebMail
)");
}

TEST_F(ChoiceListTest, enter_turns_the_mark_under_the_bar_on_and_off_and_draws) {
    draw();
    list.onKey(KEY_DOWN);
    list.onKey(10);
    EXPECT_EQ(flags_of(list), "000");
    EXPECT_PICTURE(look(), R"(
[ ] POP3
[ ] IMAP
[ ] WebMail
)");
    list.onKey(10);
    EXPECT_EQ(flags_of(list), "010");
}

TEST_F(ChoiceListTest, down_and_up_move_the_bar_and_draw) {
    list.onKey(KEY_DOWN);
    list.onKey(KEY_DOWN);
    EXPECT_COLOURS(look(), R"(
bbbbbbbbbbb
bbbbbbbbbbb
KkKkKKKKKKK
)");
    list.onKey(KEY_UP);
    list.onKey(KEY_UP);
    EXPECT_COLOURS(look(), R"(
KkKkKKKKkkk
bbbbbbbbbbb
bbbbbbbbbbb
)");
}

TEST_F(ChoiceListTest, up_on_the_first_entry_does_nothing_and_does_not_redraw) {
    draw();
    mvwaddch(list.getCursesWindow(), 0, 0, '!');
    list.onKey(KEY_UP);
    EXPECT_EQ(look().cell(0, 0).text, "!");
}

TEST_F(ChoiceListTest, down_on_the_last_entry_does_nothing_and_does_not_redraw) {
    list.onKey(KEY_DOWN);
    list.onKey(KEY_DOWN);
    mvwaddch(list.getCursesWindow(), 0, 0, '!');
    list.onKey(KEY_DOWN);
    EXPECT_EQ(look().cell(0, 0).text, "!");
    list.onKey(32);
    EXPECT_EQ(flags_of(list), "011");
}

TEST_F(ChoiceListTest, every_other_key_is_ignored) {
    draw();
    mvwaddch(list.getCursesWindow(), 0, 0, '!');
    for (const int key : {9, 13, 27, int{'x'}, KEY_LEFT, KEY_RIGHT, KEY_NPAGE, KEY_PPAGE})
        list.onKey(key);
    EXPECT_EQ(flags_of(list), "010");
    EXPECT_EQ(look().cell(0, 0).text, "!");
}

TEST_F(ChoiceListTest, get_checked_gives_three_flags_in_the_order_of_three_entries) {
    EXPECT_EQ(flags_of(list), "010");
    list.onKey(KEY_DOWN);
    list.onKey(KEY_DOWN);
    list.onKey(32);
    EXPECT_EQ(flags_of(list), "011");
}

TEST_F(ChoiceListTest, get_checked_gives_a_copy_that_the_caller_may_change) {
    int count = 0;
    const std::unique_ptr<unsigned char, FreeHeap> flags(list.getChecked(&count));
    flags.get()[0] = 1;
    EXPECT_EQ(count, 3);
    EXPECT_EQ(flags_of(list), "010");
}

TEST_F(ChoiceListTest, keeps_copies_of_its_entries_and_flags) {
    char text[] = "First";
    const char* const entries[] = {text};
    unsigned char flags[] = {1};
    ChoiceList copied(root(), 1, entries, flags, 10, 4, 2, 1);
    std::strcpy(text, "wrong");
    flags[0] = 0;
    copied.draw();
    EXPECT_PICTURE(shown(10, 4, 1, 9), "[x] First\n");
    EXPECT_EQ(flags_of(copied), "1");
}

TEST_F(ChoiceListTest, without_flags_every_mark_is_off) {
    const ChoiceList unset(root(), 3, services, nullptr, 10, 4, 2, 1);
    EXPECT_EQ(flags_of(unset), "000");
}

TEST_F(ChoiceListTest, drawing_hides_the_terminals_cursor) {
    ASSERT_TRUE(shown().cursor().visible);
    list.draw();
    EXPECT_FALSE(shown().cursor().visible);
}

TEST_F(ChoiceListTest, drawing_leaves_the_cursor_two_columns_behind_the_length_of_the_bar) {
    list.onKey(KEY_DOWN);
    EXPECT_EQ(cursor_in(list.getCursesWindow()), (Position{1, 9}));
}

TEST_F(ChoiceListTest, the_cursor_is_placed_one_column_behind_the_length_of_the_bar) {
    list.onKey(KEY_DOWN);
    list.placeCursor();
    EXPECT_EQ(cursor_in(list.getCursesWindow()), (Position{1, 8}));
}

TEST_F(ChoiceListTest, of_more_than_a_hundred_entries_the_rest_is_left_out) {
    const std::vector<const char*> entries(150, "entry");
    const std::vector<unsigned char> flags(150, 1);
    ChoiceList list_of_many(root(), 150, entries.data(), flags.data(), 0, 0, 2, 1);
    EXPECT_EQ(list_of_many.getHeight(), 100);
    for (int i = 0; i < 150; ++i)
        list_of_many.onKey(KEY_DOWN);
    list_of_many.onKey(32);
    EXPECT_EQ(flags_of(list_of_many), std::string(99, '1') + "0");
}

TEST_F(ChoiceListTest, without_entries_shows_nothing_and_takes_every_key) {
    ChoiceList empty(root(), 0, nullptr, nullptr, 10, 4, 2, 1);
    empty.setColors(2, 2, 0);
    for (const int key : {32, 10, KEY_DOWN, KEY_UP})
        empty.onKey(key);
    EXPECT_EQ(flags_of(empty), "");
    EXPECT_EQ(empty.getHeight(), 1);
    EXPECT_EQ(shown().text().find_first_not_of(" \n"), std::string::npos);
}

}  // namespace
