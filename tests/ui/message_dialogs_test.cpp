#include "ui/message_dialogs.h"

#include <string>

#include "tests/support/case_name.h"
#include "tests/support/local_port.h"
#include "tests/ui/dialog_test.h"
#include "ui/keys.h"

namespace {

const char* const question =
    "Selecting 127.0.0.1 will enable access to SMTP service \tonly from this machine and not "
    "remotely from other machines. Are you sure?";

const char* const warning =
    "There is already an application that binds the 25 port on the selected interface 10.0.0.1. "
    "Please stop that application and remove it from the automatic startup daemons at boot. More "
    "information about stopping common applications can be found in the "
    "/opt/teluma/doc/REMOVE-OTHERS.txt document.";

const char* const two_lines = "Some words that are long enough for two lines of the dialog.";

class MessageDialogTest : public DialogTest {
  protected:
    using DialogTest::DialogTest;

    /// Shows a message, runs `look` while it stands and presses "OK".
    template <class Look>
    void show(const std::string& message, const Look& look) {
        waits.then([&] {
            look();
            terminal.press(Key::enter);
        });
        showMessage(message.c_str(), "Error!");
    }

    int answer(const std::string& keys, const char* text = question) {
        terminal.type(keys);
        return askYesNo(text, "WARNING!");
    }
};

/// A dialog, how it is opened and what closes it without any further ado.
struct StockDialog {
    const char* name;
    int state;
    const char* closing_keys;
    int (*open)(const char* text);
};

void PrintTo(const StockDialog& dialog, std::ostream* out) {
    *out << dialog.name;
}

int show_message(const char* text) {
    showMessage(text, "Error!");
    return 0;
}

int ask_yes_no(const char* text) {
    return askYesNo(text, "WARNING!");
}

int ask_retry_or_back(const char* text) {
    return askRetryOrBack(text, "Warning!", "127.0.0.1", 1);
}

const StockDialog dialogs[] = {{"message", 100, "\n", show_message},
                               {"yes_no", 101, "\n", ask_yes_no},
                               {"retry_or_back", 104, "\t\n", ask_retry_or_back}};

class EveryDialog : public MessageDialogTest, public testing::WithParamInterface<StockDialog> {};

TEST_P(EveryDialog, stands_alone_on_top_with_its_own_state_and_leaves_nothing_when_it_goes) {
    Window screen(root(), 5, 10, 15, 60);
    screen.create();
    screen.draw();
    const ScreenImage before = shown();
    ASSERT_TRUE(before.cursor().visible);
    EXPECT_EQ(dialog_frame(), nullptr);
    waits.then([&] {
        EXPECT_EQ(screen_state, GetParam().state);
        EXPECT_TRUE(terminal.image().shows("Sure?"));
        EXPECT_FALSE(terminal.image().cursor().visible);
        EXPECT_TRUE(is_keypad(dialog_frame()->getCursesWindow()));
        terminal.type(GetParam().closing_keys);
    });
    EXPECT_EQ(GetParam().open("Sure?"), 0);
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(dialog_frame(), nullptr);
    EXPECT_EQ(panels_shown(), 1);
    ScreenImage after = shown();
    after.setCursor(before.cursor());
    EXPECT_SAME_LOOK(before, after);
}

TEST_P(EveryDialog, reads_other_keys_and_ignores_them) {
    waits.then([&] {
        const ScreenImage before = terminal.image();
        terminal.type("xyoYrb\x1b");
        for (const Key key : {Key::down, Key::right, Key::backspace})
            terminal.press(key);
        waits.then([&, before] {
            EXPECT_SAME_LOOK(before, terminal.image());
            terminal.type(GetParam().closing_keys);
        });
    });
    EXPECT_EQ(GetParam().open("Sure?"), 0);
}

TEST_P(EveryDialog, looks_the_same_after_a_resize_as_one_made_in_the_new_size) {
    for (const char* const text : {two_lines, ""}) {
        for (const Position& size : {Position{20, 72}, Position{60, 200}, Position{25, 81}}) {
            ScreenImage moved(1, 1);
            resizeTo(24, 80);
            waits.then([&] {
                curs_set(1);
                resizeDialogTo(size.row, size.col);
                moved = terminal.image();
                terminal.type(GetParam().closing_keys);
            });
            GetParam().open(text);
            EXPECT_EQ(panels_shown(), 0);
            shown();
            waits.then([&] {
                EXPECT_SAME_LOOK(terminal.image(), moved);
                terminal.type(GetParam().closing_keys);
            });
            GetParam().open(text);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Dialogs, EveryDialog, testing::ValuesIn(dialogs), CaseName());

TEST_F(MessageDialogTest, has_a_box_as_wide_as_its_message_and_60_columns_for_a_long_one) {
    show("The passwords don't match!", [&] { EXPECT_SCREEN(terminal.image(), "golden/message"); });
    show(
        "Could not create the aliases! Please make sure that a similar alias does not already "
        "exist!",
        [&] { EXPECT_SCREEN(terminal.image(), "golden/long_message"); });
    show("", [&] { EXPECT_SCREEN(terminal.image(), "golden/empty_message"); });
}

TEST_F(MessageDialogTest, is_60_columns_wide_from_58_characters_on) {
    for (const auto& [length, width] :
         {std::pair{0, 2}, {1, 3}, {57, 59}, {58, 60}, {59, 60}, {60, 60}, {61, 60}, {200, 60}})
        show(std::string(static_cast<size_t>(length), 'x'),
             [width = width] { EXPECT_EQ(dialog_frame()->getWidth(), width); });
    // Breaks into 58 and 2 characters.
    show("aaaaaaaaaaaaaaaaaaaaaaaaaaaa bbbbbbbbbbbbbbbbbbbbbbbbbbbbb cc", [&] {
        EXPECT_EQ(terminal.image().find("aaaa"), (Position{9, 11}));
        EXPECT_EQ(terminal.image().find("bb│"), (Position{9, 67}));
        EXPECT_EQ(terminal.image().find("cc"), (Position{10, 11}));
    });
}

TEST_F(MessageDialogTest, returns_on_space_too) {
    terminal.press(Key::space);
    showMessage("Space", "Title");
    EXPECT_TRUE(terminal.image().shows("Space"));
}

TEST_F(MessageDialogTest, asks_in_a_box_of_62_columns_whatever_the_question) {
    answer("\n");
    EXPECT_SCREEN(terminal.image(), "golden/yes_no");
    answer("\n", "Sure?");
    EXPECT_SCREEN(terminal.image(), "golden/short_yes_no");
}

TEST_F(MessageDialogTest, is_answered_no_at_first_and_yes_after_tab) {
    for (const char* const keys : {"\n", " ", "\t\t\n", "\t\t ", "yY\n"})
        EXPECT_EQ(answer(keys), 0) << keys;
    for (const char* const keys : {"\t\n", "\t ", "\t\t\t\n"})
        EXPECT_EQ(answer(keys), 1) << keys;
}

TEST_F(MessageDialogTest, tab_swaps_the_looks_of_no_and_yes_which_a_resize_keeps) {
    const auto expect_looks = [&](int row, int col, const char* no, const char* yes) {
        EXPECT_COLOURS(terminal.image().region(row, col, 1, 6), no);
        EXPECT_COLOURS(terminal.image().region(row, col + 50, 1, 6), yes);
    };
    waits.then([&] {
        expect_looks(14, 12, "rrKKrr\n", "rrrrrr\n");
        terminal.press(Key::tab);
    });
    waits.then([&] {
        expect_looks(14, 12, "rrrrrr\n", "rKKKrr\n");
        resizeDialogTo(20, 72);
        expect_looks(12, 8, "rrrrrr\n", "rKKKrr\n");
        resizeDialogTo(24, 80);
        terminal.press(Key::tab);
    });
    waits.then([&] {
        expect_looks(14, 12, "rrKKrr\n", "rrrrrr\n");
        terminal.press(Key::enter);
    });
    EXPECT_EQ(askYesNo(question, "WARNING!"), 0);
}

// The widgets that reach over the edge get new curses windows while a key is waited for.
TEST_F(MessageDialogTest, higher_than_the_terminal_has_become_it_still_takes_keys) {
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

TEST_F(MessageDialogTest, left_in_no_delay_mode_by_a_resize_waits_for_its_keys_all_the_same) {
    waits.then([&] { drain_key(dialog_frame()->getCursesWindow(), true); });
    for (const Key key : {Key::tab, Key::enter})
        waits.then([this, key] {
            EXPECT_TRUE(is_nodelay(dialog_frame()->getCursesWindow()));
            terminal.press(key);
        });
    EXPECT_EQ(askYesNo("Sure?", "WARNING!"), 1);
}

TEST_F(MessageDialogTest, none_can_be_placed_while_none_is_open) {
    const ScreenImage before = shown();
    place_dialog();
    EXPECT_SAME_LOOK(before, shown());
}

/// A warning about a port that is taken, until a test frees it.
class RetryOrBackTest : public DialogTest {
  protected:
    RetryOrBackTest() { taken.open(); }

    int ask(const std::string& keys, const char* message = warning) {
        terminal.type(keys);
        return askRetryOrBack(message, "Warning!", "127.0.0.1", taken.number());
    }

    LocalPort taken;
};

TEST_F(RetryOrBackTest, warns_in_a_box_like_a_messages_with_the_buttons_beside_a_narrow_one) {
    const auto look_at = [&](const char* golden) {
        waits.then([&, golden] {
            EXPECT_SCREEN(terminal.image(), golden);
            terminal.type("\t\n");
        });
    };
    look_at("golden/retry_or_back");
    EXPECT_EQ(ask(""), 0);
    look_at("golden/short_retry_or_back");
    EXPECT_EQ(ask("", "The port is taken."), 0);
}

TEST_F(RetryOrBackTest, back_probes_nothing) {
    for (const char* const keys : {"\t\n", "\t ", "\t\t\t\n"})
        EXPECT_EQ(ask(keys), 0) << keys;
    EXPECT_EQ(taken.takeAll(), 0);
    EXPECT_FALSE(terminal.image().shows("Operation pending!"));
}

TEST_F(RetryOrBackTest, retry_is_minus_one_while_the_port_is_taken_and_one_once_it_was_freed) {
    for (const char* const keys : {"\n", "\t\t\n", "bB\n"}) {
        EXPECT_EQ(ask(keys), -1) << keys;
        EXPECT_EQ(taken.takeAll(), 1);
    }
    waits.then([&] {
        taken.close();
        terminal.press(Key::space);
    });
    EXPECT_EQ(ask(""), 1);
}

TEST_F(RetryOrBackTest, tab_swaps_the_looks_of_the_two_buttons_on_the_screen) {
    const auto look_and_type = [&](const char* retry, const char* back, const char* keys) {
        waits.then([=] {
            EXPECT_COLOURS(terminal.image().region(15, 57, 1, 7), retry);
            EXPECT_COLOURS(terminal.image().region(15, 17, 1, 6), back);
            terminal.type(keys);
        });
    };
    look_and_type("rKKKKKr\n", "rrrrrr\n", "\t");
    look_and_type("rrrrrrr\n", "rKKKKr\n", "\t");
    look_and_type("rKKKKKr\n", "rrrrrr\n", "\t\n");
    EXPECT_EQ(ask(""), 0);
}

TEST_F(RetryOrBackTest, retry_probes_under_a_pending_box_in_place_of_the_warning) {
    waits.inSleep = [&] {
        EXPECT_EQ(screen_state, 102);
        EXPECT_EQ(dialog_frame(), nullptr);
        EXPECT_EQ(taken.takeAll(), 0);
        EXPECT_SCREEN(terminal.image(), "golden/pending");
    };
    EXPECT_EQ(ask("\n"), -1);
    EXPECT_EQ(waits.sleeps, std::vector<int>{0});
    EXPECT_EQ(pending_frame(), nullptr);
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(panels_shown(), 0);
}

/// Where a short message, one of two lines and a question stand.
const PlacesInSize places[] = {
    {{20, 72}, {{5, 31}, {4, 6}, {5, 5}}},
    {{24, 80}, {{7, 35}, {6, 10}, {7, 9}}},
    {{25, 81}, {{7, 36}, {7, 10}, {7, 9}}},
    {{60, 200}, {{25, 95}, {24, 70}, {25, 69}}},
};

TEST_F(MessageDialogTest, stands_in_the_middle_of_a_terminal_of_any_size) {
    for (const PlacesInSize& place : places) {
        resizeTo(place.size.row, place.size.col);
        show("Message", [&] { EXPECT_EQ(terminal.image().find("┌"), place.boxes[0]); });
        shown();
        show(two_lines, [&] { EXPECT_EQ(terminal.image().find("┌"), place.boxes[1]); });
        shown();
        answer("\n", "Sure?");
        EXPECT_EQ(terminal.image().find("┌"), place.boxes[2]);
        shown();
    }
}

}  // namespace
