#include "ui/modal_dialog.h"

#include <string>

#include "tests/ui/dialog_test.h"
#include "ui/keys.h"
#include "ui/message_dialogs.h"

namespace {

using ModalDialogTest = DialogTest;

const char* const message = "Some words that are long enough for two lines of the dialog.";

TEST_F(ModalDialogTest, a_bigger_terminal_gets_it_into_its_middle_on_top_with_a_hidden_cursor) {
    waits.then([&] {
        curs_set(1);
        resizeDialogTo(60, 200);
        EXPECT_EQ(terminal.image().find("┌"), (Position{25, 69}));
        EXPECT_EQ(terminal.image().find("Sure?"), (Position{28, 70}));
        EXPECT_EQ(terminal.image().find("Yes"), (Position{31, 123}));
        EXPECT_FALSE(terminal.image().cursor().visible);
        terminal.press(Key::enter);
    });
    EXPECT_EQ(askYesNo("Sure?", "WARNING!"), 0);
}

TEST_F(ModalDialogTest, looks_the_same_after_a_resize_as_one_made_in_the_new_size) {
    for (const Position& size : {Position{20, 72}, Position{60, 200}, Position{25, 81}}) {
        ScreenImage moved(1, 1);
        resizeTo(24, 80);
        waits.then([&] {
            resizeDialogTo(size.row, size.col);
            moved = terminal.image();
            terminal.press(Key::enter);
        });
        askYesNo(message, "WARNING!");
        shown();
        terminal.press(Key::enter);
        askYesNo(message, "WARNING!");
        EXPECT_SAME_LOOK(terminal.image(), moved);
    }
}

TEST_F(ModalDialogTest, keeps_the_focus_over_a_resize) {
    waits.then([&] { terminal.press(Key::tab); });
    waits.then([&] {
        resizeDialogTo(20, 72);
        EXPECT_COLOURS(terminal.image().region(11, 58, 1, 6), "rKKKrr\n");
        terminal.press(Key::enter);
    });
    EXPECT_EQ(askYesNo("Sure?", "WARNING!"), 1);
}

// The widgets that reach over the edge get new curses windows while a key is waited for.
TEST_F(ModalDialogTest, higher_than_the_terminal_has_become_it_still_takes_keys) {
    std::string lines;
    for (int line = 0; line < 15; ++line)
        lines += std::string(30, static_cast<char>('a' + line)) + " " + std::string(30, '.') + " ";
    waits.then([&] {
        resizeDialogTo(20, 72);
        EXPECT_EQ(terminal.image().find("WARNING!"), (Position{1, 32}));
        EXPECT_TRUE(terminal.image().shows(std::string(30, 'a')));
        terminal.press(Key::tab);
    });
    waits.then([&] {
        resizeDialogTo(60, 200);
        EXPECT_TRUE(terminal.image().shows("Yes"));
        terminal.press(Key::enter);
    });
    EXPECT_EQ(askYesNo(lines.c_str(), "WARNING!"), 1);
}

TEST_F(ModalDialogTest, an_empty_message_is_placed_anew_too) {
    waits.then([&] {
        resizeDialogTo(60, 200);
        EXPECT_EQ(terminal.image().find("┌"), (Position{25, 99}));
        terminal.press(Key::enter);
    });
    showMessage("", "Error!");
    EXPECT_EQ(panels_shown(), 0);
}

TEST_F(ModalDialogTest, left_in_no_delay_mode_by_a_resize_waits_for_its_keys_all_the_same) {
    waits.then([&] { drain_key(dialog_frame()->getCursesWindow(), true); });
    waits.then([&] {
        EXPECT_TRUE(is_nodelay(dialog_frame()->getCursesWindow()));
        terminal.press(Key::tab);
    });
    waits.then([&] {
        EXPECT_TRUE(is_nodelay(dialog_frame()->getCursesWindow()));
        terminal.press(Key::enter);
    });
    EXPECT_EQ(askYesNo("Sure?", "WARNING!"), 1);
}

/// The places of the stock dialogs in terminals of several sizes.
struct PlacesInSize {
    int rows;
    int cols;
    Position short_message;
    Position long_message;
    Position yes_no;
};

void PrintTo(const PlacesInSize& size, std::ostream* out) {
    *out << size.cols << "x" << size.rows;
}

class DialogPlaces : public DialogTest, public testing::WithParamInterface<PlacesInSize> {
  protected:
    DialogPlaces() : DialogTest(GetParam().rows, GetParam().cols) { terminal.press(Key::enter); }

    std::optional<Position> corner() { return terminal.image().find("┌"); }
};

TEST_P(DialogPlaces, a_short_message_stands_in_the_middle) {
    showMessage("Message", "Error!");
    EXPECT_EQ(corner(), GetParam().short_message);
}

TEST_P(DialogPlaces, a_message_of_two_lines_stands_in_the_middle) {
    showMessage(message, "Error!");
    EXPECT_EQ(corner(), GetParam().long_message);
}

TEST_P(DialogPlaces, a_question_stands_in_the_middle) {
    askYesNo("Sure?", "WARNING!");
    EXPECT_EQ(corner(), GetParam().yes_no);
}

const PlacesInSize places[] = {
    {20, 72, {5, 31}, {4, 6}, {5, 5}},
    {24, 80, {7, 35}, {6, 10}, {7, 9}},
    {25, 81, {7, 36}, {7, 10}, {7, 9}},
    {60, 200, {25, 95}, {24, 70}, {25, 69}},
};

INSTANTIATE_TEST_SUITE_P(Sizes, DialogPlaces, testing::ValuesIn(places),
                         testing::PrintToStringParamName());

}  // namespace
