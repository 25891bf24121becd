// Somebody drags the terminal's corner about while somebody types: the wizard loses keys, as every
// resize swallows some, but not its wits.

#include <gtest/gtest.h>

#include "tests/e2e/dialogs.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/sizes.h"
#include "tests/e2e/stop_params.h"
#include "tests/support/expect_screen.h"

namespace {

// Resizes and keys that leave no screen, as fast as the terminal takes them.
void raise_storm(WizardRun& wizard) {
    constexpr int resizes = 300;
    for (int i = 0; i < resizes; ++i) {
        wizard.resize(20 + i * 7 % 41, 72 + i * 31 % 129);
        wizard.type(i % 5 == 0 ? "\t" : "ab");
        if (i % 7 == 0)
            wizard.press(i % 2 == 0 ? Key::down : Key::backspace);
    }
    wizard.resize(24, 80);
}

class Storm : public AtScreen {
  protected:
    // A screen with the answers of the default walk and the focus where it was at first.
    static void tidyUp(WizardRun& tidied) {
        Answers answers;
        answers.domain = "localdomain";
        answers.location = "/var/opt/teluma/domains/localdomain/";
        tidied.answer(GetParam(), answers);
        tidied.pressBack(nextStop());
        tidied.moveFocus(GetParam(), 0);
        tidied.waitForKey();
    }
};

INSTANTIATE_TEST_SUITE_P(Screens, Storm,
                         testing::Values(Stop::password, Stop::domain, Stop::aliases,
                                         Stop::services, Stop::relay),
                         stop_name);

TEST_P(Storm, of_resizes_while_typing_leaves_a_screen_that_looks_right_and_can_be_answered) {
    raise_storm(wizard);
    wizard.waitForKey();
    tidyUp(wizard);
    WizardRun calm;
    calm.walk(Stop::password, GetParam());
    tidyUp(calm);
    EXPECT_SAME_LOOK(calm.image(), wizard.image());
}

using StormOnAListener = Storm;

INSTANTIATE_TEST_SUITE_P(Listeners, StormOnAListener, testing::ValuesIn(listener_stops()),
                         stop_name);

TEST_P(StormOnAListener, leaves_a_screen_that_can_be_answered) {
    raise_storm(wizard);
    wizard.waitForKey();
    wizard.answerListener(GetParam(), {2, "7777"});
    wizard.waitForScreen(nextStop());
}

using StormOverADialog = AtDialog;

INSTANTIATE_TEST_SUITE_P(Dialogs, StormOverADialog, every_dialog(), dialog_name);

TEST_P(StormOverADialog, leaves_a_dialog_that_looks_right_and_can_be_interrupted) {
    const std::string text = wizard.image().text();
    raise_storm(wizard);
    // A pending box reads no keys, so the wizard can't be waited for.
    wizard.waitUntil([&](const ScreenImage& screen) { return screen.text() == text; },
                     "the screen looked as before the storm");
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

}  // namespace
