// Somebody else has written on the terminal: Ctrl-L draws everything anew.

#include <fcntl.h>
#include <unistd.h>

#include "tests/e2e/dialogs.h"
#include "tests/e2e/stop_params.h"
#include "tests/support/descriptor.h"
#include "tests/support/expect_screen.h"

namespace {

// As wall(1) does, or the kernel on its console; on another screen and with the cursor shown.
void write_on_terminal_of(WizardRun& wizard) {
    const std::string path = "/proc/" + std::to_string(wizard.pid()) + "/fd/1";
    const Descriptor terminal(checked(open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC), "open"));
    const std::string message = "\x1b[?1049l\x1b[?25h\x1b[m\r\nBroadcast message from root\r\n";
    checked(static_cast<int>(write(terminal.get(), message.data(), message.size())), "write");
    wizard.waitForText("Broadcast message");
}

void expect_drawn_anew(WizardRun& wizard) {
    const ScreenImage drawn = wizard.image();
    write_on_terminal_of(wizard);
    wizard.type("\f");
    wizard.waitForKey();
    EXPECT_SAME_LOOK(drawn, wizard.image());
    EXPECT_TRUE(wizard.alternateScreen());
}

class RedrawnScreen : public AtScreen {};

INSTANTIATE_TEST_SUITE_P(Screens, RedrawnScreen, testing::ValuesIn(every_stop()), stop_name);

TEST_P(RedrawnScreen, is_what_it_was_whatever_has_the_focus) {
    for (int control = 0; control < 3; ++control) {
        expect_drawn_anew(wizard);
        wizard.press(Key::tab);
        wizard.waitForKey();
    }
}

class RedrawnDialog : public AtDialog {};

INSTANTIATE_TEST_SUITE_P(Dialogs, RedrawnDialog,
                         testing::Values(Dialog::message, Dialog::question, Dialog::retry_back),
                         dialog_name);

TEST_P(RedrawnDialog, is_what_it_was) {
    expect_drawn_anew(wizard);
}

// What presses a button by itself presses none in a sequence.
TEST_P(RedrawnDialog, stays_open_at_control_sequences_that_nobody_knows) {
    const ScreenImage drawn = wizard.image();
    wizard.type("\x1b[2 q\x1b[1;5~\x1b[[A");
    wizard.waitForKey();
    EXPECT_SAME_LOOK(drawn, wizard.image());
}

}  // namespace
