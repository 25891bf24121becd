// The terminal is resized while a dialog stands on top of a screen.

#include <map>

#include "tests/e2e/dialogs.h"
#include "tests/e2e/sizes.h"
#include "tests/support/expect_screen.h"

namespace {

class ResizedDialog : public EveryDialog {
  protected:
    ResizedDialog() {
        for (const Size& size : terminal_sizes)
            stage.open(fresh.try_emplace(size.cols, size.rows, size.cols).first->second);
        stage.open(resized);
    }

    void resize(const Size& size) {
        resized.resize(size.rows, size.cols);
        resized.waitForKey();
    }

    // The dialog as it looks in terminals that always had their size, and the resized one.
    void expectSameLook() {
        for (const Size& size : resize_round) {
            resize(size);
            EXPECT_SAME_LOOK(fresh.at(size.cols).image(), resized.image());
        }
    }

    void pressEverywhere(Key key) {
        for (auto& [cols, wizard] : fresh) {
            wizard.press(key);
            wizard.waitForKey();
        }
        resized.press(key);
        resized.waitForKey();
    }

    std::map<int, WizardRun> fresh;  // by columns
    WizardRun resized;
};

INSTANTIATE_TEST_SUITE_P(Dialogs, ResizedDialog, every_dialog(), dialog_name);

TEST_P(ResizedDialog, looks_as_in_a_terminal_that_always_had_the_size_whatever_has_the_focus) {
    expectSameLook();
    for (int button = 0; button < stage.buttons(); ++button) {
        pressEverywhere(Key::tab);
        expectSameLook();
    }
}

using ResizedModalDialog = ResizedDialog;

INSTANTIATE_TEST_SUITE_P(Dialogs, ResizedModalDialog,
                         testing::Values(Dialog::message, Dialog::question, Dialog::retry_back),
                         dialog_name);

TEST_P(ResizedModalDialog, leaves_a_screen_that_stands_where_the_new_size_puts_it) {
    for (const Size& size : terminal_sizes) {
        resize(size);
        stage.goBack(resized);
        WizardRun& wizard = fresh.at(size.cols);
        stage.goBack(wizard);
        EXPECT_SAME_LOOK(wizard.image(), resized.image());
        stage.openAgain(resized);
    }
}

class ResizedPendingBox : public ResizedDialog {};

INSTANTIATE_TEST_SUITE_P(Dialogs, ResizedPendingBox, testing::Values(Dialog::pending), dialog_name);

TEST_P(ResizedPendingBox, goes_on_once_the_connection_attempt_is_decided) {
    for (const Size& size : terminal_sizes)
        resize(size);
    stage.freePort();
    resized.waitForScreen(Stop::smtp);
    WizardRun& wizard = fresh.at(200);
    wizard.waitForScreen(Stop::smtp);
    EXPECT_SAME_LOOK(wizard.image(), resized.image());
}

}  // namespace
