// A screen that is drawn again when a dialog over it has been closed, the terminal having been
// resized meanwhile.

#include <gtest/gtest.h>

#include <string>

#include "screens/screen_table.h"
#include "tests/support/case_name.h"
#include "tests/support/expect_screen.h"
#include "tests/support/local_port.h"
#include "tests/wizard/screen_session.h"
#include "wizard/base/screen_state.h"

namespace {

struct Interruption {
    const char* name;
    int state;  // of the screen
    int dialog_state;
    std::string keys;   // typed on the screen, lead to the dialog
    std::string close;  // closes it
    std::string leave;  // typed on the screen that comes back, ends its loop
};

const std::string down = "\033OB";
const std::string erase_port = "\x7f\x7f\x7f\x7f\x7f";

// The screen that comes back; the terminal has its size from the beginning where `resized` is not
// set, and otherwise gets it while the dialog is open.
ScreenImage screen_after(const Interruption& interruption, Size size, bool resized) {
    ScreenSession session(resized ? Size{24, 80} : size);
    screen_state = interruption.state;
    session.terminal.type(interruption.keys);
    session.waits.then([&] {
        EXPECT_EQ(screen_state, interruption.dialog_state);
        if (resized)
            session.resize(size);
        session.terminal.type(interruption.close);
    });
    screen_table[interruption.state]();
    EXPECT_EQ(screen_state, interruption.state);

    ScreenImage image(1, 1);
    session.waits.then([&] {
        image = session.terminal.terminalImage();
        session.terminal.type(interruption.leave);
    });
    screen_table[interruption.state]();
    return image;
}

void expect_right_place(const Interruption& interruption) {
    for (const Size size : {Size{20, 72}, Size{60, 200}})
        EXPECT_SAME_LOOK(screen_after(interruption, size, false),
                         screen_after(interruption, size, true));
}

class ScreenUnderDialog : public testing::TestWithParam<Interruption> {};

TEST_P(ScreenUnderDialog, comes_back_where_the_new_size_puts_it_with_its_state_and_answers) {
    expect_right_place(GetParam());
}

const Interruption interruptions[] = {
    {"password_error", state_password, state_message, "abc\t\t\n", "\n", "\t\t\n\n"},
    {"domain_error", state_domain, state_message, "\t\t\t\n", "\n", "\t\t\n"},
    {"webadmin_error", state_webadmin, state_message, "\t" + erase_port + "\t\n", "\n", "\t\t\n"},
    {"pop3_error", state_pop3, state_message, "\t" + erase_port + "\t\n", "\n", "\t\t\n"},
    // Nothing listens at port 0.
    {"webadmin_question", state_webadmin, state_yes_no, down + "\t" + erase_port + "0\t\n", "\n",
     "\t\t\t\n"},
    {"pop3_question", state_pop3, state_yes_no, down + "\t" + erase_port + "0\t\n", "\n",
     "\t\t\t\n"},
};

INSTANTIATE_TEST_SUITE_P(Dialog, ScreenUnderDialog, testing::ValuesIn(interruptions), CaseName());

TEST(ScreenUnderWarning, comes_back_where_the_new_size_puts_it_when_the_user_goes_back) {
    LocalPort port;
    port.open();
    const std::string keys = down + "\t" + erase_port + std::to_string(port.number()) + "\t\n";
    expect_right_place({"webadmin", state_webadmin, state_retry_back, keys, "\t\n", "\t\t\n"});
    expect_right_place({"smtp", state_smtp, state_retry_back, keys, "\t\n", "\t\t\n"});
}

}  // namespace
