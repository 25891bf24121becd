#include "ui/list.h"

#include <string>
#include <vector>

#include "tests/ui/ui_test.h"
#include "wizard/base/heap_text.h"

namespace {

const char* const interfaces[] = {"all", "eth0 : 10.0.0.1", "lo"};
const char* const services[] = {"POP3", "IMAP", "WebMail"};
const unsigned char imap_only[] = {0, 1, 0};

/// The flags as a text of 0 and 1.
std::string flags_of(const ChoiceList& list) {
    int count = -1;
    const std::unique_ptr<unsigned char, FreeHeap> flags(list.getChecked(&count));
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += std::to_string(flags.get()[i]);
        flags.get()[i] = 7;  // a copy, which the caller may change
    }
    return text;
}

/// The two kinds of list in the colours of the screens.
class ListTest : public UiTest {
  protected:
    ListTest()
        : list(root(), 3, interfaces, 2, 4, 2, 1),
          choices(root(), 3, services, imap_only, 8, 4, 2, 1) {
        choices.setColors(2, 2, 0);
    }

    void press(Window& window, std::initializer_list<int> keys) {
        for (const int key : keys) EXPECT_EQ(window.onKey(key), key);
    }

    /// Expects that none of the keys draws anything.
    void expectIgnored(Window& window, std::initializer_list<int> keys) {
        window.draw();
        mvwaddch(window.getCursesWindow(), 0, 0, '!');
        press(window, keys);
        EXPECT_EQ(look(window).cell(0, 0).text, "!");
    }

    List list;
    ChoiceList choices;
};

TEST_F(ListTest, is_as_high_as_its_entries_and_as_wide_as_the_longest_and_what_stands_before_it) {
    EXPECT_EQ(place_of(list), (Position{2, 4}));
    EXPECT_EQ(size_of(list), (Position{3, 17}));
    EXPECT_EQ(place_of(choices), (Position{8, 4}));
    EXPECT_EQ(size_of(choices), (Position{3, 11}));
    for (const Window* window : {static_cast<Window*>(&list), static_cast<Window*>(&choices)}) {
        EXPECT_TRUE(is_keypad(window->getCursesWindow()));
        EXPECT_FALSE(window->showsCursor());
    }
}

TEST_F(ListTest, marks_the_entry_under_the_bar_by_a_dollar_and_bold_white_on_black) {
    EXPECT_EQ(list.getSelected(), 0);
    EXPECT_PICTURE(drawn(list), "$ all\n  eth0 : 10.0.0.1\n  lo");
    EXPECT_COLOURS(look(list), "KkKKKkkkkkkkkkkkk\nbbbbbbbbbbbbbbbbb\nbbbbbbbbbbbbbbbbb");
    mvwaddch(list.getCursesWindow(), 0, 0, '!');
    EXPECT_COLOURS(look(list).region(0, 0, 1, 1), "b") << "the others' pair stays on";
    press(list, {KEY_DOWN, KEY_DOWN});
    EXPECT_EQ(list.getSelected(), 2);
    EXPECT_PICTURE(look(list), "  all\n  eth0 : 10.0.0.1\n$ lo");
    EXPECT_COLOURS(look(list), "bbbbbbbbbbbbbbbbb\nbbbbbbbbbbbbbbbbb\nKkKKkkkkkkkkkkkkk");
    press(list, {KEY_UP});
    EXPECT_EQ(list.getSelected(), 1);
    EXPECT_COLOURS(look(list), "bbbbbbbbbbbbbbbbb\nKkKKKKkKkKKKKKKKK\nbbbbbbbbbbbbbbbbb");
}

TEST_F(ListTest, takes_both_pairs_from_its_constructor) {
    List other(root(), 3, interfaces, 12, 4, 3, 2);
    EXPECT_COLOURS(drawn(other), "BbBBBbbbbbbbbbbbb\nrrrrrrrrrrrrrrrrr\nrrrrrrrrrrrrrrrrr");
    ChoiceList choice(root(), 3, services, imap_only, 16, 4, 3, 2);
    EXPECT_COLOURS(drawn(choice), "BbBbBBBBbbb\nrrrrrrrrrrr\nrrrrrrrrrrr");
}

TEST_F(ListTest, keys_that_move_no_bar_and_turn_no_mark_draw_nothing) {
    expectIgnored(list, {KEY_UP, 10, 32, 9, 27, 'l', KEY_LEFT, KEY_RIGHT, KEY_NPAGE, KEY_END});
    EXPECT_EQ(list.getSelected(), 0);
    list.setSelected(2);
    expectIgnored(list, {KEY_DOWN});
    EXPECT_EQ(list.getSelected(), 2);
    expectIgnored(choices, {KEY_UP, 9, 13, 27, 'x', KEY_LEFT, KEY_RIGHT, KEY_NPAGE, KEY_END});
    press(choices, {KEY_DOWN, KEY_DOWN});
    expectIgnored(choices, {KEY_DOWN});
    EXPECT_EQ(flags_of(choices), "010");
}

TEST_F(ListTest, set_selected_moves_the_bar_without_drawing_to_an_entry_that_there_is) {
    list.draw();
    for (const int index : {2, -1, 3}) {
        list.setSelected(index);
        EXPECT_EQ(list.getSelected(), 2);
    }
    EXPECT_EQ(look(list).cell(0, 0).text, "$");
    EXPECT_EQ(drawn(list).cell(2, 0).text, "$");
    list.setSelected(0);
    EXPECT_EQ(list.getSelected(), 0);
}

TEST_F(ListTest, the_cursor_stands_in_the_last_column_of_the_bar_once_placed) {
    list.setSelected(1);
    list.draw();
    EXPECT_EQ(cursor_in(list), (Position{2, 16}));
    list.placeCursor();
    EXPECT_EQ(cursor_in(list), (Position{1, 16}));
    press(choices, {KEY_DOWN});
    EXPECT_EQ(cursor_in(choices), (Position{1, 9}));
    choices.placeCursor();
    EXPECT_EQ(cursor_in(choices), (Position{1, 8}));
}

TEST_F(ListTest, keeps_copies_of_its_entries_which_are_plain_characters) {
    std::string text = "%s%d";
    const char* const entries[] = {text.c_str()};
    unsigned char flags[] = {1};
    List one(root(), 1, entries, 12, 4, 2, 1);
    ChoiceList choice(root(), 1, entries, flags, 14, 4, 2, 1);
    text = "lost";
    flags[0] = 0;
    press(one, {KEY_DOWN, KEY_UP});
    EXPECT_PICTURE(drawn(one), "$ %s%d");
    EXPECT_PICTURE(drawn(choice), "[x] %s%d");
}

TEST_F(ListTest, of_check_boxes_shows_its_bar_in_bold_white_on_black_and_hides_the_cursor) {
    ASSERT_TRUE(shown().cursor().visible);
    EXPECT_PICTURE(drawn(choices), "[ ] POP3\n[x] IMAP\n[ ] WebMail");
    EXPECT_FALSE(shown().cursor().visible);
    EXPECT_COLOURS(look(choices), "KkKkKKKKkkk\nbbbbbbbbbbb\nbbbbbbbbbbb");
    press(choices, {KEY_DOWN, KEY_DOWN});
    EXPECT_COLOURS(look(choices), "bbbbbbbbbbb\nbbbbbbbbbbb\nKkKkKKKKKKK");
    press(choices, {KEY_UP});
    EXPECT_COLOURS(look(choices), "bbbbbbbbbbb\nKKKkKKKKkkk\nbbbbbbbbbbb");
    choices.setColors(2, 2, 1);
    EXPECT_COLOURS(drawn(choices), "BbBbBBBBbbb\nKKKkKKKKkkk\nBbBbBBBBBBB");
}

TEST_F(ListTest, of_check_boxes_turns_the_one_under_the_bar_on_and_off_by_space_and_enter) {
    for (const int key : {32, 10}) {
        press(choices, {key});
        EXPECT_EQ(flags_of(choices), "110");
        EXPECT_PICTURE(look(choices), "[x] POP3\n[x] IMAP\n[ ] WebMail");
        press(choices, {key, KEY_DOWN, key});
        EXPECT_EQ(flags_of(choices), "000");
        EXPECT_PICTURE(look(choices), "[ ] POP3\n[ ] IMAP\n[ ] WebMail");
        press(choices, {key, KEY_UP});
    }
}

TEST_F(ListTest, of_check_boxes_leaves_out_what_comes_after_a_hundred_entries) {
    const std::vector<const char*> entries(150, "entry");
    const std::vector<unsigned char> flags(150, 1);
    ChoiceList many(root(), 150, entries.data(), flags.data(), 0, 0, 2, 1);
    EXPECT_EQ(many.getHeight(), 100);
    for (int i = 0; i < 150; ++i) many.onKey(KEY_DOWN);
    many.onKey(32);
    EXPECT_EQ(flags_of(many), std::string(99, '1') + "0");
}

TEST_F(ListTest, of_check_boxes_may_have_no_flags_and_no_entries) {
    const ChoiceList unset(root(), 3, services, nullptr, 12, 4, 2, 1);
    EXPECT_EQ(flags_of(unset), "000");
    ChoiceList empty(root(), 0, nullptr, nullptr, 20, 4, 2, 1);
    press(empty, {32, 10, KEY_DOWN, KEY_UP});
    EXPECT_EQ(flags_of(empty), "");
    EXPECT_EQ(empty.getHeight(), 1);
    EXPECT_EQ(look(empty).text(), "\n");
}

}  // namespace
