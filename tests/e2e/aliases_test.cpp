// The check marks of the aliases, whichever way their screen is left.

#include <gtest/gtest.h>

#include "tests/e2e/stop_params.h"

namespace {

using Aliases = std::vector<bool>;  // root, localhost, localhost.localdomain

std::string name_of(const testing::TestParamInfo<Aliases>& info) {
    return choice_name(info.param, {"root", "localhost", "localhost_localdomain"});
}

class AliasChoice : public testing::TestWithParam<Aliases> {
  protected:
    AliasChoice() { wizard.walk(Stop::password, Stop::aliases); }

    WizardRun wizard;
};

INSTANTIATE_TEST_SUITE_P(Aliases, AliasChoice, testing::ValuesIn(every_choice_of_three()), name_of);

TEST_P(AliasChoice, is_kept_when_the_screen_is_left_forwards) {
    wizard.answerBoxes(Stop::aliases, GetParam());
    wizard.pressBack(Stop::webadmin);
    wizard.waitForScreen(Stop::aliases);
    EXPECT_EQ(wizard.ticks(), GetParam());
}

TEST_P(AliasChoice, is_kept_when_the_screen_is_left_backwards) {
    wizard.setTicks(GetParam());
    wizard.pressBack(Stop::aliases);
    wizard.pressNext(Stop::domain);
    wizard.waitForScreen(Stop::aliases);
    EXPECT_EQ(wizard.ticks(), GetParam());
}

TEST(AliasScreen, names_a_changed_domain_and_keeps_the_earlier_check_marks) {
    WizardRun wizard;
    Answers answers;
    answers.domain = "example.com";
    wizard.walk(Stop::password, Stop::aliases, answers);
    wizard.waitForText("\"example.com\"");
    wizard.setTicks({false, true, false});
    wizard.pressBack(Stop::aliases);
    answers.domain = "example.org";
    wizard.answerDomain(answers);
    wizard.waitForScreen(Stop::aliases);
    EXPECT_TRUE(wizard.image().shows("\"example.org\""));
    EXPECT_EQ(wizard.ticks(), (Aliases{false, true, false}));
}

}  // namespace
