// The terminal is made smaller than the wizard's screens need, wherever the wizard may be: it says
// so and ends with status 0.

#include "tests/e2e/dialogs.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/stop_params.h"

namespace {

testing::AssertionResult is_refused_as_too_small(WizardRun& wizard) {
    return ends_with(wizard, exited(0),
                     "Please enlarge your window so it will have at least 72 columns and 20 "
                     "lines!\n");
}

using ShrunkScreen = AtScreen;

INSTANTIATE_TEST_SUITE_P(Screens, ShrunkScreen, testing::ValuesIn(every_stop()), stop_name);

TEST_P(ShrunkScreen, to_19_lines_is_refused) {
    wizard.resize(19, 80);
    EXPECT_TRUE(is_refused_as_too_small(wizard));
}

TEST_P(ShrunkScreen, to_71_columns_is_refused) {
    wizard.resize(24, 71);
    EXPECT_TRUE(is_refused_as_too_small(wizard));
}

TEST_P(ShrunkScreen, to_72_columns_and_20_lines_goes_on) {
    wizard.resize(20, 72);
    wizard.waitForKey();
    EXPECT_TRUE(wizard.image().shows(title_of(GetParam())));
}

using ShrunkDialog = AtDialog;

INSTANTIATE_TEST_SUITE_P(Dialogs, ShrunkDialog, every_dialog(), dialog_name);

TEST_P(ShrunkDialog, to_19_lines_is_refused) {
    wizard.resize(19, 80);
    EXPECT_TRUE(is_refused_as_too_small(wizard));
}

TEST_P(ShrunkDialog, to_a_single_cell_is_refused) {
    wizard.resize(1, 1);
    EXPECT_TRUE(is_refused_as_too_small(wizard));
}

}  // namespace
