#include "ui/message_dialogs.h"

#include <string>

#include "tests/support/golden.h"
#include "tests/ui/dialog_test.h"
#include "ui/modal_dialog.h"

namespace {

using MessageTest = DialogTest;
using YesNoTest = DialogTest;

/// Words that add up to `length` characters.
std::string words_of_length(size_t length) {
    std::string text;
    while (text.size() < length)
        text += "word ";
    text.resize(length);
    if (!text.empty())
        text.back() = '.';
    return text;
}

const char* const question =
    "Selecting 127.0.0.1 will enable access to SMTP service \tonly from this machine and not "
    "remotely from other machines. Are you sure?";

TEST_F(MessageTest, shows_a_short_message_in_a_box_as_wide_as_it) {
    terminal.press(Key::enter);
    showMessage("The passwords don't match!", "Error!");
    EXPECT_SCREEN(terminal.image(), "golden/message");
}

TEST_F(MessageTest, shows_a_long_message_in_a_box_of_60_columns) {
    terminal.press(Key::enter);
    showMessage(
        "Could not create the aliases! Please make sure that a similar alias does not already "
        "exist!",
        "Error!");
    EXPECT_SCREEN(terminal.image(), "golden/long_message");
}

TEST_F(MessageTest, of_58_characters_is_60_columns_wide) {
    waits.then([&] {
        EXPECT_EQ(dialog_frame()->getWidth(), 60);
        terminal.press(Key::enter);
    });
    showMessage(words_of_length(58).c_str(), "Error!");
}

TEST_F(MessageTest, of_59_or_more_characters_is_60_columns_wide_too) {
    for (const size_t length : {59U, 60U, 61U, 200U}) {
        waits.then([&] {
            EXPECT_EQ(dialog_frame()->getWidth(), 60) << length;
            terminal.press(Key::enter);
        });
        showMessage(words_of_length(length).c_str(), "Error!");
    }
}

TEST_F(MessageTest, of_57_characters_is_59_columns_wide) {
    waits.then([&] {
        EXPECT_EQ(dialog_frame()->getWidth(), 59);
        terminal.press(Key::enter);
    });
    showMessage(words_of_length(57).c_str(), "Error!");
}

TEST_F(MessageTest, of_more_than_58_characters_is_wrapped_on_58_columns) {
    terminal.press(Key::enter);
    // Breaks into 58 and 2 characters.
    showMessage("aaaaaaaaaaaaaaaaaaaaaaaaaaaa bbbbbbbbbbbbbbbbbbbbbbbbbbbbb cc", "Error!");
    EXPECT_EQ(terminal.image().find("aaaaaaaaaaaaaaaaaaaaaaaaaaaa bbbbbbbbbbbbbbbbbbbbbbbbbbbbb│"),
              (Position{9, 11}));
    EXPECT_EQ(terminal.image().find("cc"), (Position{10, 11}));
}

TEST_F(MessageTest, empty_is_a_box_2_columns_wide_and_9_lines_high) {
    waits.then([&] {
        EXPECT_EQ(dialog_frame()->getWidth(), 2);
        EXPECT_EQ(dialog_frame()->getHeight(), 9);
        EXPECT_EQ(dialog_frame()->getRow(), 7);
        EXPECT_EQ(dialog_frame()->getCol(), 39);
        terminal.press(Key::enter);
    });
    showMessage("", "Error!");
    EXPECT_SCREEN(terminal.image(), "golden/empty_message");
}

TEST_F(MessageTest, returns_on_enter_and_on_space) {
    terminal.press(Key::enter);
    showMessage("Enter", "Title");
    terminal.press(Key::space);
    showMessage("Space", "Title");
    EXPECT_TRUE(terminal.image().shows("Space"));
}

TEST_F(MessageTest, other_keys_are_read_and_ignored) {
    waits.then([&] {
        const ScreenImage before = terminal.image();
        terminal.type("xyo\x1b");
        terminal.press(Key::tab);
        terminal.press(Key::down);
        terminal.press(Key::backspace);
        waits.then([&, before] {
            EXPECT_SAME_LOOK(before, terminal.image());
            terminal.press(Key::enter);
        });
    });
    showMessage("Message", "Title");
}

TEST_F(MessageTest, has_its_own_screen_state_while_it_is_shown_and_puts_the_former_back) {
    waits.then([&] {
        EXPECT_EQ(screen_state, 100);
        terminal.press(Key::enter);
    });
    showMessage("Message", "Title");
    EXPECT_EQ(screen_state, state_domain);
}

TEST_F(MessageTest, hides_the_cursor) {
    ASSERT_TRUE(terminal.image().cursor().visible);
    waits.then([&] {
        EXPECT_FALSE(terminal.image().cursor().visible);
        terminal.press(Key::enter);
    });
    showMessage("Message", "Title");
}

TEST_F(MessageTest, leaves_nothing_behind_when_it_goes) {
    const ScreenImage before = terminal.image();
    terminal.press(Key::enter);
    showMessage("Message", "Title");
    EXPECT_EQ(panels_shown(), 0);
    EXPECT_EQ(dialog_frame(), nullptr);
    ScreenImage after = shown();
    after.setCursor(before.cursor());
    EXPECT_SAME_LOOK(before, after);
}

TEST_F(MessageTest, stands_on_top_of_the_screen_that_it_was_called_from) {
    Window screen(root(), 5, 10, 15, 60);
    screen.create();
    screen.setColors(3, 3, 0);
    screen.draw();
    terminal.press(Key::enter);
    showMessage("Message", "Title");
    EXPECT_TRUE(terminal.image().shows("Message"));
    EXPECT_EQ(terminal.image().cell(5, 10).background, COLOR_RED);
    EXPECT_FALSE(shown().shows("Message"));
}

TEST_F(YesNoTest, asks_in_a_box_of_62_columns) {
    terminal.press(Key::enter);
    askYesNo(question, "WARNING!");
    EXPECT_SCREEN(terminal.image(), "golden/yes_no");
}

TEST_F(YesNoTest, is_62_columns_wide_also_for_a_short_question) {
    terminal.press(Key::enter);
    askYesNo("Sure?", "WARNING!");
    EXPECT_SCREEN(terminal.image(), "golden/short_yes_no");
}

TEST_F(YesNoTest, enter_at_once_is_no) {
    terminal.press(Key::enter);
    EXPECT_EQ(askYesNo(question, "WARNING!"), 0);
}

TEST_F(YesNoTest, space_at_once_is_no) {
    terminal.press(Key::space);
    EXPECT_EQ(askYesNo(question, "WARNING!"), 0);
}

TEST_F(YesNoTest, tab_then_enter_is_yes) {
    terminal.type("\t\n");
    EXPECT_EQ(askYesNo(question, "WARNING!"), 1);
}

TEST_F(YesNoTest, tab_then_space_is_yes) {
    terminal.type("\t ");
    EXPECT_EQ(askYesNo(question, "WARNING!"), 1);
}

TEST_F(YesNoTest, tab_twice_then_space_is_no) {
    terminal.type("\t\t ");
    EXPECT_EQ(askYesNo(question, "WARNING!"), 0);
}

TEST_F(YesNoTest, keys_other_than_tab_do_not_change_the_answer) {
    terminal.press(Key::right);
    terminal.press(Key::down);
    terminal.type("yY");
    terminal.press(Key::enter);
    EXPECT_EQ(askYesNo(question, "WARNING!"), 0);
}

TEST_F(YesNoTest, tab_swaps_the_looks_of_the_two_buttons_on_the_screen) {
    const auto expect_looks = [&](const std::string& no, const std::string& yes) {
        EXPECT_COLOURS(terminal.image().region(14, 12, 1, 6), no + "\n");
        EXPECT_COLOURS(terminal.image().region(14, 62, 1, 6), yes + "\n");
    };
    const auto expect_no_focused = [=] { expect_looks("rrKKrr", "rrrrrr"); };
    const auto expect_yes_focused = [=] { expect_looks("rrrrrr", "rKKKrr"); };
    waits.then([&] {
        expect_no_focused();
        terminal.press(Key::tab);
    });
    waits.then([&] {
        expect_yes_focused();
        terminal.press(Key::tab);
    });
    waits.then([&] {
        expect_no_focused();
        terminal.press(Key::enter);
    });
    askYesNo(question, "WARNING!");
}

TEST_F(YesNoTest, has_its_own_screen_state_while_it_is_shown_and_puts_the_former_back) {
    waits.then([&] {
        EXPECT_EQ(screen_state, 101);
        terminal.press(Key::enter);
    });
    askYesNo(question, "WARNING!");
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(panels_shown(), 0);
}

TEST_F(YesNoTest, hides_the_cursor_and_reads_cursor_keys_as_one) {
    waits.then([&] {
        EXPECT_FALSE(terminal.image().cursor().visible);
        EXPECT_TRUE(is_keypad(dialog_frame()->getCursesWindow()));
        terminal.press(Key::enter);
    });
    askYesNo(question, "WARNING!");
}

}  // namespace
