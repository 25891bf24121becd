// The check marks of the networks that may relay, whichever way their screen is left.

#include <gtest/gtest.h>

#include "tests/e2e/wizard_run.h"

namespace {

using Networks = std::vector<bool>;  // 127.0.0.0, 192.168.7.0, 10.0.0.0

std::string name_of(const testing::TestParamInfo<Networks>& info) {
    static const char* const names[] = {"none", "one", "several", "all"};
    return names[info.index];
}

class RelayChoice : public testing::TestWithParam<Networks> {
  protected:
    RelayChoice() {
        wizard.walk(Stop::password, Stop::relay);
        EXPECT_EQ(wizard.ticks(), (Networks{true, true, true}));
        wizard.setTicks(GetParam());
    }

    WizardRun wizard;
};

INSTANTIATE_TEST_SUITE_P(Networks, RelayChoice,
                         testing::Values(Networks{false, false, false},
                                         Networks{false, true, false}, Networks{true, false, true},
                                         Networks{true, true, true}),
                         name_of);

TEST_P(RelayChoice, is_kept_when_the_screen_is_left_forwards) {
    wizard.pressNext(Stop::relay);
    wizard.pressBack(Stop::sendmail);
    wizard.waitForScreen(Stop::relay);
    EXPECT_EQ(wizard.ticks(), GetParam());
}

TEST_P(RelayChoice, is_kept_when_the_screen_is_left_backwards) {
    wizard.pressBack(Stop::relay);
    wizard.pressNext(Stop::webmail);
    wizard.waitForScreen(Stop::relay);
    EXPECT_EQ(wizard.ticks(), GetParam());
}

}  // namespace
