// Signals that end the wizard, on every screen and in every dialog: what they leave behind.

#include "tests/e2e/dialogs.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/stop_params.h"
#include "tests/reliability/signals/deaths.h"

namespace {

template <class Place>
using PlaceAndDeath = std::tuple<Place, Death>;

class DeathOnScreen : public testing::TestWithParam<PlaceAndDeath<Stop>> {
  protected:
    DeathOnScreen() { wizard.run().walk(Stop::password, std::get<Stop>(GetParam())); }

    DyingWizard wizard;
};

std::string screen_and_death(const testing::TestParamInfo<PlaceAndDeath<Stop>>& info) {
    return std::string(facts_of(std::get<Stop>(info.param)).name) + "_" +
           std::get<Death>(info.param).name;
}

TEST_P(DeathOnScreen, leaves_a_usable_terminal) {
    wizard.dieOf(std::get<Death>(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Requests, DeathOnScreen,
                         testing::Combine(testing::ValuesIn(every_stop()), every_request_to_end()),
                         screen_and_death);
INSTANTIATE_TEST_SUITE_P(Crashes, DeathOnScreen,
                         testing::Combine(testing::ValuesIn(every_stop()), every_crash()),
                         screen_and_death);
INSTANTIATE_TEST_SUITE_P(Others, DeathOnScreen,
                         testing::Combine(testing::Values(Stop::domain), every_other_death()),
                         screen_and_death);

class DeathInDialog : public testing::TestWithParam<PlaceAndDeath<Dialog>> {
  protected:
    DeathInDialog() { stage.open(wizard.run()); }

    DialogStage stage{std::get<Dialog>(GetParam())};
    DyingWizard wizard;
};

std::string dialog_and_death(const testing::TestParamInfo<PlaceAndDeath<Dialog>>& info) {
    return dialog_name({std::get<Dialog>(info.param), info.index}) + "_" +
           std::get<Death>(info.param).name;
}

TEST_P(DeathInDialog, leaves_a_usable_terminal) {
    wizard.dieOf(std::get<Death>(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Requests, DeathInDialog,
                         testing::Combine(every_dialog(), every_request_to_end()),
                         dialog_and_death);
INSTANTIATE_TEST_SUITE_P(Crashes, DeathInDialog, testing::Combine(every_dialog(), every_crash()),
                         dialog_and_death);

TEST(QuitKey, ends_the_wizard_like_a_crash_and_leaves_a_usable_terminal) {
    DyingWizard wizard;
    wizard.run().waitForScreen(Stop::password);
    wizard.run().type("\x1c");
    EXPECT_EQ(wizard.run().waitExit(), killed_by(SIGQUIT));
    EXPECT_TRUE(leaves_terminal_usable(wizard.run()));
}

}  // namespace
