// The terminal is resized: what stands there looks as in a terminal that always had the size. A
// size that is too small ends the wizard with status 0.

#include <map>

#include "tests/e2e/dialogs.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/stop_params.h"
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

/// A wizard that is resized, and one in a terminal of each size, all at the same place.
class Resized {
  public:
    template <class Open>
    explicit Resized(const Open& open) {
        for (const Size& size : terminal_sizes)
            open(fresh.try_emplace(size.cols, size.rows, size.cols).first->second);
        open(wizard);
    }

    void resize(const Size& size) {
        wizard.resize(size.rows, size.cols);
        wizard.waitForKey();
    }

    void pressEverywhere(Key key) {
        for (auto& [cols, other] : fresh)
            pressAndWait(other, key);
        pressAndWait(wizard, key);
    }

    void expectSameLook() {
        for (const Size& size : resize_round) {
            resize(size);
            EXPECT_SAME_LOOK(fresh.at(size.cols).image(), wizard.image());
        }
    }

    /// The same, then once more with the focus on each of the controls, back to where it was.
    void expectSameLookOnEach(int controls) {
        expectSameLook();
        for (int control = 0; control < controls; ++control) {
            pressEverywhere(Key::tab);
            expectSameLook();
        }
    }

    std::map<int, WizardRun> fresh;  // by columns
    WizardRun wizard;

  private:
    static void pressAndWait(WizardRun& pressed, Key key) {
        pressed.press(key);
        pressed.waitForKey();
    }
};

class ResizedScreen : public testing::TestWithParam<Stop> {};

INSTANTIATE_TEST_SUITE_P(Screens, ResizedScreen, testing::Values(Stop::domain, Stop::pop3),
                         stop_name);

TEST_P(ResizedScreen, looks_as_in_a_terminal_that_always_had_the_size_whatever_has_the_focus) {
    Resized resized([](WizardRun& opened) { opened.walk(Stop::password, GetParam()); });
    resized.expectSameLookOnEach(facts_of(GetParam()).controls);
}

class ResizedDialog : public EveryDialog {};

INSTANTIATE_TEST_SUITE_P(Dialogs, ResizedDialog, every_dialog(), dialog_name);

TEST_P(ResizedDialog, looks_as_in_a_terminal_that_always_had_the_size_and_so_does_what_follows) {
    Resized resized([this](WizardRun& opened) { stage.open(opened); });
    resized.expectSameLookOnEach(stage.buttons());
    for (auto& [cols, other] : resized.fresh)
        stage.leave(other);
    resized.resize(terminal_sizes[2]);
    stage.leave(resized.wizard);
    EXPECT_SAME_LOOK(resized.fresh.at(200).image(), resized.wizard.image());
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

TEST_P(ShrunkDialog, to_19_lines_is_refused) {
    wizard.resize(19, 80);
    EXPECT_TRUE(is_refused_as_too_small(wizard));
}

TEST(ShrunkDialog, to_a_single_cell_is_refused) {
    WizardRun wizard;
    DialogStage(Dialog::message).open(wizard);
    wizard.resize(1, 1);
    EXPECT_TRUE(is_refused_as_too_small(wizard));
}

}  // namespace
