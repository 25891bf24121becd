#include "ui/message_dialogs.h"

#include <string>

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

/// A dialog, how it is opened and what closes it with the answer 0.
struct StockDialog {
    int state;
    const char* closing_keys;
    int (*open)(const char* text);
};

const StockDialog message_box = {100, "\n", [](const char* text) {
                                     showMessage(text, "Error!");
                                     return 0;
                                 }};
const StockDialog question_box = {101, "\n",
                                  [](const char* text) { return askYesNo(text, "WARNING!"); }};
const StockDialog retry_box = {
    104, "\t\n", [](const char* text) { return askRetryOrBack(text, "Warning!", "127.0.0.1", 1); }};
const StockDialog* const every_dialog[] = {&message_box, &question_box, &retry_box};

class MessageDialogTest : public DialogTest {
  protected:
    /// Opens a dialog, runs `look` while it stands and closes it.
    template <class Look>
    void show(const StockDialog& dialog, const std::string& text, const Look& look) {
        waits.then([&] {
            look();
            terminal.type(dialog.closing_keys);
        });
        EXPECT_EQ(dialog.open(text.c_str()), 0);
        shown();
    }

    int answer(const std::string& keys) {
        terminal.type(keys);
        return askYesNo(question, "WARNING!");
    }
};

TEST_F(MessageDialogTest, stands_alone_on_top_with_its_own_state_and_leaves_nothing_when_it_goes) {
    Window screen(root(), 5, 10, 15, 60);
    screen.create();
    screen.draw();
    const ScreenImage before = shown();
    ASSERT_TRUE(before.cursor().visible);
    for (const StockDialog* dialog : every_dialog) {
        EXPECT_EQ(on_screen.dialog, nullptr);
        show(*dialog, "Sure?", [&] {
            EXPECT_EQ(screen_state, dialog->state);
            EXPECT_TRUE(terminal.image().shows("Sure?"));
            EXPECT_FALSE(terminal.image().cursor().visible);
            EXPECT_TRUE(is_keypad(on_screen.dialog->getCursesWindow()));
        });
        EXPECT_EQ(screen_state, state_domain);
        EXPECT_EQ(on_screen.dialog, nullptr);
        EXPECT_EQ(panels_shown(), 1);
        ScreenImage after = shown();
        after.setCursor(before.cursor());
        EXPECT_SAME_LOOK(before, after);
        curs_set(1);
    }
}

TEST_F(MessageDialogTest, reads_other_keys_and_ignores_them) {
    for (const StockDialog* dialog : every_dialog) {
        waits.then([&] {
            const ScreenImage before = terminal.image();
            terminal.type("xyoYrb\x1b");
            for (const Key key : {Key::down, Key::right, Key::backspace}) terminal.press(key);
            waits.then([&, before] {
                EXPECT_SAME_LOOK(before, terminal.image());
                terminal.type(dialog->closing_keys);
            });
        });
        EXPECT_EQ(dialog->open("Sure?"), 0);
    }
}

/// A dialog and where it stands in terminals of the other sizes.
struct Placed {
    const StockDialog* dialog;
    const char* text;
    Position corners[std::size(other_sizes)];
};

TEST_F(MessageDialogTest, stands_in_the_middle_also_after_a_resize_and_looks_as_one_made_there) {
    for (const Placed& placed : {
             Placed{&message_box, "Message", {{5, 31}, {7, 36}, {25, 95}}},
             Placed{&message_box, "", {{5, 35}, {8, 39}, {25, 99}}},
             Placed{&question_box, two_lines, {{4, 5}, {7, 9}, {24, 69}}},
             Placed{&retry_box, two_lines, {{4, 6}, {7, 10}, {24, 70}}},
         }) {
        for (size_t i = 0; i < std::size(other_sizes); ++i) {
            ScreenImage moved(1, 1);
            resizeTo(24, 80);
            show(*placed.dialog, placed.text, [&] {
                curs_set(1);
                resizeDialogTo(other_sizes[i].row, other_sizes[i].col);
                moved = terminal.image();
            });
            EXPECT_EQ(panels_shown(), 0);
            EXPECT_EQ(moved.find("┌"), placed.corners[i]);
            show(*placed.dialog, placed.text, [&] { EXPECT_SAME_LOOK(terminal.image(), moved); });
        }
    }
}

/// A dialog and what it looks like.
struct Pictured {
    const StockDialog* dialog;
    const char* text;
    const char* golden;
};

TEST_F(MessageDialogTest, looks_as_the_wizard_always_has) {
    for (const Pictured& pictured : {
             Pictured{&message_box, "The passwords don't match!", "golden/message"},
             Pictured{&message_box,
                      "Could not create the aliases! Please make sure that a similar alias does "
                      "not already exist!",
                      "golden/long_message"},
             Pictured{&message_box, "", "golden/empty_message"},
             Pictured{&question_box, question, "golden/yes_no"},
             Pictured{&question_box, "Sure?", "golden/short_yes_no"},
             Pictured{&retry_box, warning, "golden/retry_or_back"},
             Pictured{&retry_box, "The port is taken.", "golden/short_retry_or_back"},
         })
        show(*pictured.dialog, pictured.text,
             [&] { EXPECT_SCREEN(terminal.image(), pictured.golden); });
}

TEST_F(MessageDialogTest, is_as_wide_as_its_message_or_60_columns_from_58_characters_on) {
    for (const auto& [length, width] :
         {std::pair{0, 2}, {1, 3}, {57, 59}, {58, 60}, {59, 60}, {60, 60}, {61, 60}, {200, 60}})
        show(message_box, std::string(static_cast<size_t>(length), 'x'),
             [width = width] { EXPECT_EQ(on_screen.dialog->getWidth(), width); });
}

TEST_F(MessageDialogTest, a_question_is_answered_no_at_first_and_yes_after_tab) {
    for (const char* const keys : {"\n", " ", "\t\t\n", "\t\t ", "yY\n"})
        EXPECT_EQ(answer(keys), 0) << keys;
    for (const char* const keys : {"\t\n", "\t ", "\t\t\t\n"}) EXPECT_EQ(answer(keys), 1) << keys;
}

/// A dialog of two buttons, the first of which has the focus at first.
struct TwoButtons {
    const StockDialog* dialog;
    const char* captions[2];
};

TEST_F(MessageDialogTest, tab_swaps_the_looks_of_the_two_buttons_which_a_resize_keeps) {
    for (const TwoButtons& two :
         {TwoButtons{&question_box, {"No", "Yes"}}, TwoButtons{&retry_box, {"Retry", "Back"}}}) {
        const auto expect_focus = [&](int focus) {
            for (int i = 0; i < 2; ++i) {
                const std::string caption = two.captions[i];
                const Position at = terminal.image().find(caption).value_or(Position());
                const int width = static_cast<int>(caption.size());
                EXPECT_COLOURS(terminal.image().region(at.row, at.col, 1, width),
                               std::string(caption.size(), i == focus ? 'K' : 'r'));
            }
        };
        for (const int focus : {0, 1})
            waits.then([this, focus, &expect_focus] {
                expect_focus(focus);
                resizeDialogTo(60, 200);
                resizeDialogTo(24, 80);
                expect_focus(focus);
                terminal.press(Key::tab);
            });
        show(*two.dialog, "Sure?", [&] { expect_focus(0); });
    }
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
    waits.then([&] { drain_key(on_screen.dialog->getCursesWindow(), true); });
    for (const Key key : {Key::tab, Key::enter})
        waits.then([this, key] {
            EXPECT_TRUE(is_nodelay(on_screen.dialog->getCursesWindow()));
            terminal.press(key);
        });
    EXPECT_EQ(askYesNo("Sure?", "WARNING!"), 1);
}

/// A warning about a port that is taken, until a test frees it.
class RetryOrBackTest : public DialogTest {
  protected:
    RetryOrBackTest() { taken.open(); }

    int ask(const std::string& keys) {
        terminal.type(keys);
        return askRetryOrBack(warning, "Warning!", "127.0.0.1", taken.number());
    }

    LocalPort taken;
};

TEST_F(RetryOrBackTest, back_probes_nothing) {
    for (const char* const keys : {"\t\n", "\t ", "\t\t\t\n"}) EXPECT_EQ(ask(keys), 0) << keys;
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

TEST_F(RetryOrBackTest, retry_probes_under_a_pending_box_in_place_of_the_warning) {
    waits.inSleep = [&] {
        EXPECT_EQ(screen_state, 102);
        EXPECT_EQ(on_screen.dialog, nullptr);
        EXPECT_EQ(taken.takeAll(), 0);
        EXPECT_SCREEN(terminal.image(), "golden/pending");
    };
    EXPECT_EQ(ask("\n"), -1);
    EXPECT_EQ(waits.sleeps, std::vector<int>{0});
    EXPECT_EQ(pending_frame(), nullptr);
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(panels_shown(), 0);
}

}  // namespace
