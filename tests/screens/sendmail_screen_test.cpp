#include <gtest/gtest.h>

#include "screens/screen_table.h"
#include "tests/screens/apply_double.h"
#include "tests/screens/wizard_rig.h"
#include "tests/support/golden.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

namespace {

class SendmailAnswer : public testing::TestWithParam<Key> {
  protected:
    WizardRig wizard{state_sendmail};
};

TEST_P(SendmailAnswer, yes_is_stored_and_starts_the_apply_sequence_with_the_screen_closed) {
    wizard.play({GetParam()});
    EXPECT_EQ(apply_double.calls, 1);
    EXPECT_EQ(apply_double.sendmail_wrapper, 1);
    EXPECT_EQ(apply_double.state, state_sendmail);
    EXPECT_EQ(apply_double.focus, 0);
    EXPECT_TRUE(apply_double.screen_is_gone);
}

TEST_P(SendmailAnswer, no_is_stored_and_starts_the_apply_sequence_with_the_screen_closed) {
    wizard_settings.sendmail_wrapper = 1;
    wizard.play({"\t", GetParam()});
    EXPECT_EQ(apply_double.calls, 1);
    EXPECT_EQ(apply_double.sendmail_wrapper, 0);
    EXPECT_EQ(apply_double.state, state_sendmail);
    EXPECT_EQ(apply_double.focus, 0);
    EXPECT_TRUE(apply_double.screen_is_gone);
}

TEST_P(SendmailAnswer, back_leads_to_the_relay_screen_and_applies_nothing) {
    wizard_settings.sendmail_wrapper = 7;
    wizard.play({"\t\t", GetParam()});
    EXPECT_EQ(screen_state, state_relay);
    EXPECT_EQ(screen_focus(state_sendmail), 0);
    EXPECT_EQ(apply_double.calls, 0);
    EXPECT_EQ(wizard_settings.sendmail_wrapper, 7);
    EXPECT_TRUE(wizard.image().shows("Relay Configuration"));
    EXPECT_FALSE(wizard.image().shows("Sendmail Wrapper Configuration"));
}

INSTANTIATE_TEST_SUITE_P(ByEnterAndSpace, SendmailAnswer, testing::Values(Key::enter, Key::space));

TEST(SendmailScreen, TAB_moves_from_yes_to_no_to_back_and_round) {
    WizardRig wizard(state_sendmail);
    for (const int focus : {0, 1, 2, 0}) {
        EXPECT_EQ(screen_focus(state_sendmail), focus);
        wizard.play({"\t"});
    }
}

TEST(SendmailScreen, is_shown_again_with_the_focus_on_yes_when_its_step_has_failed) {
    WizardRig wizard(state_sendmail);
    apply_double.leads_to = state_sendmail;
    wizard.play({"\t", Key::enter});
    EXPECT_EQ(apply_double.calls, 1);
    EXPECT_SCREEN(wizard.image(), "golden/sendmail_on_yes");
}

TEST(SendmailScreen, the_answer_can_be_changed_when_a_step_has_failed) {
    WizardRig wizard(state_sendmail);
    apply_double.leads_to = state_relay;
    wizard.play({Key::enter, "\t", Key::enter, "\t", Key::enter});
    EXPECT_EQ(apply_double.calls, 2);
    EXPECT_EQ(apply_double.sendmail_wrapper, 0);
}

}  // namespace
