// A terminal that is resized, or that somebody else has written on: what stands there looks as in a
// terminal that always had the size. One that is too small ends the wizard with status 0.

#include <fcntl.h>
#include <unistd.h>

#include <map>

#include "tests/e2e/dialogs.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/stop_params.h"
#include "tests/support/descriptor.h"
#include "tests/support/expect_screen.h"

namespace {

struct Size {
    int rows;
    int cols;
};

/// The smallest terminal there may be, the usual one and a large one.
constexpr Size terminal_sizes[] = {{20, 72}, {24, 80}, {60, 200}};

/// Resizes from the usual size that lead from each of these sizes to each other, in both
/// directions, and back to the usual one.
constexpr Size resize_round[] = {{20, 72}, {60, 200}, {20, 72}, {24, 80}, {60, 200}, {24, 80}};

class Resized : public testing::Test {
  protected:
    /// Expects that a resized wizard looks as others that always had the size, with the focus on
    /// each of the controls; `open` brings each of them to the place, `leave` away from it.
    template <class Open, class Leave>
    static void expectSameLook(int controls, const Open& open, const Leave& leave) {
        std::map<int, WizardRun> fresh;  // by columns
        WizardRun resized;
        for (const Size& size : terminal_sizes)
            open(fresh.try_emplace(size.cols, size.rows, size.cols).first->second);
        open(resized);
        compare(fresh, resized);
        for (int control = 0; control < controls; ++control) {
            for (auto& [cols, wizard] : fresh) pressTab(wizard);
            pressTab(resized);
            compare(fresh, resized);
        }
        leave(fresh.at(80));
        leave(resized);
        EXPECT_SAME_LOOK(fresh.at(80).image(), resized.image());
    }

  private:
    static void pressTab(WizardRun& wizard) {
        wizard.press(Key::tab);
        wizard.waitForKey();
    }

    static void compare(std::map<int, WizardRun>& fresh, WizardRun& resized) {
        for (const Size& size : resize_round) {
            resized.resize(size.rows, size.cols);
            resized.waitForKey();
            EXPECT_SAME_LOOK(fresh.at(size.cols).image(), resized.image());
        }
    }
};

class ResizedScreen : public Resized, public testing::WithParamInterface<Stop> {};

INSTANTIATE_TEST_SUITE_P(Screens, ResizedScreen, testing::Values(Stop::domain, Stop::pop3),
                         stop_name);

TEST_P(ResizedScreen, looks_as_in_a_terminal_that_always_had_the_size_whatever_has_the_focus) {
    expectSameLook(
        facts_of(GetParam()).controls,
        [](WizardRun& wizard) { wizard.walk(Stop::password, GetParam()); },
        [](WizardRun& wizard) {
            wizard.pressBack(GetParam());
            wizard.waitForScreen(stop_at(place_of(GetParam()) - 1));
        });
}

class ResizedDialog : public Resized, public testing::WithParamInterface<Dialog> {};

INSTANTIATE_TEST_SUITE_P(Dialogs, ResizedDialog, every_dialog(), dialog_name);

TEST_P(ResizedDialog, looks_as_in_a_terminal_that_always_had_the_size_and_so_does_what_follows) {
    DialogStage stage(GetParam());
    expectSameLook(
        stage.buttons(), [&stage](WizardRun& wizard) { stage.open(wizard); },
        [&stage](WizardRun& wizard) { stage.leave(wizard); });
}

testing::AssertionResult is_refused_as_too_small(WizardRun& wizard) {
    return ends_with(wizard, exited(0),
                     "Please enlarge your window so it will have at least 72 columns and 20 "
                     "lines!\n");
}

using ShrunkScreen = AtScreen;

INSTANTIATE_TEST_SUITE_P(Screens, ShrunkScreen, testing::Values(Stop::password, Stop::relay),
                         stop_name);

TEST_P(ShrunkScreen, to_72_columns_and_20_lines_goes_on_and_to_71_columns_is_refused) {
    wizard.resize(20, 72);
    wizard.waitForKey();
    EXPECT_TRUE(wizard.image().shows(title_of(GetParam())));
    wizard.resize(20, 71);
    EXPECT_TRUE(is_refused_as_too_small(wizard));
}

using ShrunkDialog = AtDialog;

INSTANTIATE_TEST_SUITE_P(Dialogs, ShrunkDialog, every_dialog(), dialog_name);

TEST_P(ShrunkDialog, to_19_lines_or_less_is_refused) {
    wizard.resize(GetParam() == Dialog::message ? 1 : 19, 80);
    EXPECT_TRUE(is_refused_as_too_small(wizard));
}

// Somebody else has written on the terminal: Ctrl-L draws everything anew.

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

using RedrawnScreen = AtScreen;

INSTANTIATE_TEST_SUITE_P(Screens, RedrawnScreen, testing::ValuesIn(every_stop()), stop_name);

TEST_P(RedrawnScreen, is_what_it_was_whatever_has_the_focus) {
    for (int control = 0; control < 3; ++control) {
        expect_drawn_anew(wizard);
        wizard.press(Key::tab);
        wizard.waitForKey();
    }
}

using RedrawnDialog = AtDialog;

INSTANTIATE_TEST_SUITE_P(Dialogs, RedrawnDialog,
                         testing::Values(Dialog::message, Dialog::question, Dialog::retry_back),
                         dialog_name);

// What presses a button by itself presses none in a sequence.
TEST_P(RedrawnDialog, is_what_it_was_and_stays_open_at_sequences_that_nobody_knows) {
    const ScreenImage drawn = wizard.image();
    expect_drawn_anew(wizard);
    wizard.type("\x1b[2 q\x1b[1;5~\x1b[[A");
    wizard.waitForKey();
    EXPECT_SAME_LOOK(drawn, wizard.image());
}

}  // namespace
