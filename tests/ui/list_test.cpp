#include "ui/list.h"

#include <cstring>

#include "tests/ui/ui_test.h"

namespace {

const char* const three_entries[] = {"all", "eth0 : 10.0.0.1", "lo"};

/// A list in the colours of the screens.
class ListTest : public UiTest {
  protected:
    ListTest() : list(root(), 3, three_entries, 2, 4, 2, 1) {}

    ScreenImage draw() {
        list.draw();
        return look();
    }

    /// The list as it has been drawn last.
    ScreenImage look() { return shown(2, 4, 3, 17); }

    List list;
};

TEST_F(ListTest, is_as_high_as_it_has_entries_and_two_columns_wider_than_the_longest) {
    EXPECT_EQ(list.getHeight(), 3);
    EXPECT_EQ(list.getWidth(), 17);
    EXPECT_TRUE(is_keypad(list.getCursesWindow()));
    EXPECT_EQ(list.getRow(), 2);
    EXPECT_EQ(list.getCol(), 4);
}

TEST_F(ListTest, starts_with_the_bar_on_the_first_entry_marked_by_a_dollar) {
    EXPECT_EQ(list.getSelected(), 0);
    EXPECT_PICTURE(draw(), R"(
$ all
  eth0 : 10.0.0.1
  lo
)");
}

TEST_F(ListTest, the_bar_is_bold_white_on_black_and_covers_the_longest_entry_on_every_line) {
    EXPECT_COLOURS(draw(), R"(
KkKKKkkkkkkkkkkkk
bbbbbbbbbbbbbbbbb
bbbbbbbbbbbbbbbbb
)");
    list.onKey(KEY_DOWN);
    list.onKey(KEY_DOWN);
    EXPECT_COLOURS(look(), R"(
bbbbbbbbbbbbbbbbb
bbbbbbbbbbbbbbbbb
KkKKkkkkkkkkkkkkk
)");
}

TEST_F(ListTest, takes_both_pairs_from_its_constructor) {
    List other(root(), 3, three_entries, 10, 4, 3, 2);
    other.draw();
    EXPECT_COLOURS(shown(10, 4, 3, 17), R"(
BbBBBbbbbbbbbbbbb
rrrrrrrrrrrrrrrrr
rrrrrrrrrrrrrrrrr
)");
}

TEST_F(ListTest, down_moves_the_bar_and_draws) {
    draw();
    list.onKey(KEY_DOWN);
    EXPECT_EQ(list.getSelected(), 1);
    EXPECT_PICTURE(look(), R"(
  all
$ eth0 : 10.0.0.1
  lo
)");
}

TEST_F(ListTest, up_moves_the_bar_back_and_draws) {
    list.setSelected(2);
    draw();
    list.onKey(KEY_UP);
    EXPECT_EQ(list.getSelected(), 1);
    EXPECT_PICTURE(look(), R"(
  all
$ eth0 : 10.0.0.1
  lo
)");
}

TEST_F(ListTest, up_on_the_first_entry_does_nothing_and_does_not_redraw) {
    draw();
    mvwaddch(list.getCursesWindow(), 0, 0, '!');
    list.onKey(KEY_UP);
    EXPECT_EQ(list.getSelected(), 0);
    EXPECT_EQ(look().cell(0, 0).text, "!");
}

TEST_F(ListTest, down_on_the_last_entry_does_nothing_and_does_not_redraw) {
    list.setSelected(2);
    draw();
    mvwaddch(list.getCursesWindow(), 0, 0, '!');
    list.onKey(KEY_DOWN);
    EXPECT_EQ(list.getSelected(), 2);
    EXPECT_EQ(look().cell(0, 0).text, "!");
}

TEST_F(ListTest, every_other_key_is_ignored_enter_and_space_too) {
    list.setSelected(1);
    draw();
    mvwaddch(list.getCursesWindow(), 0, 0, '!');
    for (const int key :
         {10, 32, 9, 27, int{'l'}, KEY_LEFT, KEY_RIGHT, KEY_NPAGE, KEY_PPAGE, KEY_HOME, KEY_END})
        list.onKey(key);
    EXPECT_EQ(list.getSelected(), 1);
    EXPECT_EQ(look().cell(0, 0).text, "!");
}

TEST_F(ListTest, set_selected_moves_the_bar_without_drawing) {
    draw();
    list.setSelected(2);
    EXPECT_EQ(list.getSelected(), 2);
    EXPECT_EQ(look().cell(0, 0).text, "$");
    EXPECT_PICTURE(draw(), R"(
  all
  eth0 : 10.0.0.1
$ lo
)");
}

TEST_F(ListTest, set_selected_to_minus_one_or_the_number_of_entries_leaves_the_selection) {
    list.setSelected(1);
    list.setSelected(-1);
    EXPECT_EQ(list.getSelected(), 1);
    list.setSelected(3);
    EXPECT_EQ(list.getSelected(), 1);
}

TEST_F(ListTest, the_cursor_is_placed_at_the_last_column_of_the_bar) {
    list.setSelected(1);
    list.draw();
    list.placeCursor();
    EXPECT_EQ(cursor_in(list.getCursesWindow()), (Position{1, 16}));
}

TEST_F(ListTest, drawing_leaves_the_cursor_where_the_last_entry_ends) {
    list.draw();
    EXPECT_EQ(cursor_in(list.getCursesWindow()), (Position{2, 16}));
}

TEST_F(ListTest, an_entry_behind_the_bar_is_not_bold) {
    List other(root(), 3, three_entries, 10, 4, 2, 1);
    other.setSelected(1);
    other.draw();
    EXPECT_COLOURS(shown(10, 4, 3, 17), R"(
bbbbbbbbbbbbbbbbb
KkKKKKkKkKKKKKKKK
bbbbbbbbbbbbbbbbb
)");
}

TEST_F(ListTest, with_one_entry_has_the_bar_on_it_and_nowhere_to_go) {
    List one(root(), 1, three_entries, 10, 4, 2, 1);
    one.onKey(KEY_DOWN);
    one.onKey(KEY_UP);
    EXPECT_EQ(one.getSelected(), 0);
    one.draw();
    EXPECT_PICTURE(shown(10, 4, 1, 5), "$ all\n");
}

TEST_F(ListTest, keeps_copies_of_its_entries) {
    char text[] = "First";
    const char* const entries[] = {text};
    List copied(root(), 1, entries, 10, 4, 2, 1);
    std::strcpy(text, "wrong");
    copied.draw();
    EXPECT_PICTURE(shown(10, 4, 1, 7), "$ First\n");
}

TEST_F(ListTest, percent_signs_are_plain_characters) {
    const char* const entries[] = {"%s%d"};
    List percent(root(), 1, entries, 10, 4, 2, 1);
    percent.draw();
    EXPECT_PICTURE(shown(10, 4, 1, 6), "$ %s%d\n");
}

}  // namespace
