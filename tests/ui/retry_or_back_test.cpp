#include <string>

#include "tests/support/golden.h"
#include "tests/support/local_port.h"
#include "tests/ui/dialog_test.h"
#include "ui/message_dialogs.h"
#include "ui/modal_dialog.h"
#include "ui/pending_box.h"

namespace {

const char* const warning =
    "There is already an application that binds the 25 port on the selected interface 10.0.0.1. "
    "Please stop that application and remove it from the automatic startup daemons at boot. More "
    "information about stopping common applications can be found in the "
    "/opt/teluma/doc/REMOVE-OTHERS.txt document.";

/// A warning about a port that is taken, until a test frees it.
class RetryOrBackTest : public DialogTest {
  protected:
    RetryOrBackTest() { taken.open(); }

    int ask(const char* message = warning) {
        return askRetryOrBack(message, "Warning!", "127.0.0.1", taken.number());
    }

    LocalPort taken;
};

TEST_F(RetryOrBackTest, warns_in_a_box_of_60_columns_with_the_focus_on_retry) {
    waits.then([&] {
        EXPECT_SCREEN(terminal.image(), "golden/retry_or_back");
        terminal.type("\t\n");
    });
    EXPECT_EQ(ask(), 0);
}

TEST_F(RetryOrBackTest, a_short_warning_has_a_narrow_box_with_the_buttons_beside_it) {
    waits.then([&] {
        EXPECT_SCREEN(terminal.image(), "golden/short_retry_or_back");
        terminal.type("\t\n");
    });
    EXPECT_EQ(ask("The port is taken."), 0);
}

TEST_F(RetryOrBackTest, enter_at_once_means_retry) {
    terminal.press(Key::enter);
    EXPECT_NE(ask(), 0);
    EXPECT_EQ(taken.takeAll(), 1);
}

TEST_F(RetryOrBackTest, retry_with_a_port_still_taken_is_minus_one) {
    terminal.press(Key::enter);
    EXPECT_EQ(ask(), -1);
}

TEST_F(RetryOrBackTest, retry_with_a_port_that_was_freed_while_the_warning_stood_is_one) {
    waits.then([&] {
        taken.close();
        terminal.press(Key::enter);
    });
    EXPECT_EQ(ask(), 1);
}

TEST_F(RetryOrBackTest, space_presses_retry_too) {
    waits.then([&] {
        taken.close();
        terminal.press(Key::space);
    });
    EXPECT_EQ(ask(), 1);
}

TEST_F(RetryOrBackTest, tab_then_enter_means_back_and_probes_nothing) {
    terminal.type("\t\n");
    EXPECT_EQ(ask(), 0);
    EXPECT_EQ(taken.takeAll(), 0);
    EXPECT_FALSE(terminal.image().shows("Operation pending!"));
}

TEST_F(RetryOrBackTest, tab_then_space_means_back) {
    terminal.type("\t ");
    EXPECT_EQ(ask(), 0);
}

TEST_F(RetryOrBackTest, tab_twice_then_enter_means_retry) {
    terminal.type("\t\t\n");
    EXPECT_EQ(ask(), -1);
}

TEST_F(RetryOrBackTest, keys_other_than_tab_do_not_change_the_answer) {
    terminal.press(Key::left);
    terminal.type("bB");
    terminal.press(Key::enter);
    EXPECT_EQ(ask(), -1);
}

TEST_F(RetryOrBackTest, tab_swaps_the_looks_of_the_two_buttons_on_the_screen) {
    const auto expect_looks = [&](const std::string& retry, const std::string& back) {
        EXPECT_COLOURS(terminal.image().region(15, 57, 1, 7), retry + "\n");
        EXPECT_COLOURS(terminal.image().region(15, 17, 1, 6), back + "\n");
    };
    waits.then([&] {
        expect_looks("rKKKKKr", "rrrrrr");
        terminal.press(Key::tab);
    });
    waits.then([&] {
        expect_looks("rrrrrrr", "rKKKKr");
        terminal.press(Key::tab);
    });
    waits.then([&] {
        expect_looks("rKKKKKr", "rrrrrr");
        terminal.type("\t\n");
    });
    EXPECT_EQ(ask(), 0);
}

TEST_F(RetryOrBackTest, has_its_own_screen_state_while_it_is_shown_and_puts_the_former_back) {
    waits.then([&] {
        EXPECT_EQ(screen_state, 104);
        EXPECT_FALSE(terminal.image().cursor().visible);
        terminal.type("\t\n");
    });
    ask();
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(panels_shown(), 0);
}

TEST_F(RetryOrBackTest, stands_where_a_new_size_of_the_terminal_puts_it) {
    waits.then([&] {
        resizeDialogTo(60, 200);
        EXPECT_EQ(terminal.image().find("┌"), (Position{22, 70}));
        EXPECT_EQ(terminal.image().find("Retry"), (Position{33, 118}));
        EXPECT_EQ(terminal.image().find("Back"), (Position{33, 78}));
        terminal.type("\t\n");
    });
    EXPECT_EQ(ask(), 0);
}

TEST_F(RetryOrBackTest, retry_probes_under_a_pending_box_in_place_of_the_warning) {
    terminal.press(Key::enter);
    waits.inSleep = [&] {
        EXPECT_EQ(screen_state, 102);
        EXPECT_EQ(dialog_frame(), nullptr);
        EXPECT_NE(pending_frame(), nullptr);
        EXPECT_EQ(taken.takeAll(), 0);
        EXPECT_SCREEN(terminal.image(), "golden/pending");
    };
    EXPECT_EQ(ask(), -1);
    EXPECT_EQ(waits.sleeps, std::vector<int>{0});
    EXPECT_EQ(pending_frame(), nullptr);
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(panels_shown(), 0);
}

}  // namespace
