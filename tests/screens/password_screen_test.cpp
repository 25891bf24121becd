#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "screens/screen_table.h"
#include "tests/screens/apply_double.h"
#include "tests/screens/dialog_region.h"
#include "tests/screens/long_texts.h"
#include "tests/screens/wizard_rig.h"
#include "tests/support/expect_screen.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"

namespace {

/// The rows of the two fields, from frame to frame.
ScreenImage fields(WizardRig& wizard) {
    return wizard.image().region(8, 17, 3, 45);
}

TEST(PasswordScreen, TAB_moves_from_password_to_validate_to_next_to_exit_and_round) {
    WizardRig wizard(state_password);
    for (const int focus : {0, 1, 2, 3, 0}) {
        EXPECT_EQ(screen_focus(state_password), focus);
        wizard.play({Key::tab});
    }
}

TEST(PasswordScreen, Enter_in_the_password_field_moves_on_to_the_validate_field) {
    WizardRig wizard(state_password);
    wizard.play({"secret", Key::enter});
    EXPECT_EQ(screen_focus(state_password), 1);
}

TEST(PasswordScreen, Enter_in_the_validate_field_does_not_validate_but_moves_on_to_next) {
    WizardRig wizard(state_password);
    wizard.play({"secret", Key::enter, "other", Key::enter});
    EXPECT_EQ(screen_focus(state_password), 2);
    EXPECT_EQ(screen_state, state_password);
    EXPECT_TRUE(wizard.image().shows("Please enter admin's password"));
}

TEST(PasswordScreen, equal_passwords_are_stored_and_lead_to_the_first_field_of_the_domain_screen) {
    for (const Key press : {Key::enter, Key::space}) {
        WizardRig wizard(state_password);
        screen_focus(state_domain) = 3;
        wizard.play({"secret", Key::tab, "secret", Key::tab, press});
        EXPECT_STREQ(wizard_settings.admin_password, "secret");
        EXPECT_EQ(screen_state, state_domain);
        EXPECT_EQ(screen_focus(state_domain), 0);
        EXPECT_TRUE(wizard.image().shows("Domain configuration"));
        EXPECT_FALSE(wizard.image().shows("Please enter admin's password"));
    }
}

TEST(PasswordScreen, a_blank_is_a_character_of_a_password) {
    WizardRig wizard(state_password);
    wizard.play({"my secret", Key::tab, "my secret", Key::tab, Key::enter});
    EXPECT_STREQ(wizard_settings.admin_password, "my secret");
}

TEST(PasswordScreen, different_passwords_give_an_error_and_store_nothing) {
    WizardRig wizard(state_password);
    std::strcpy(wizard_settings.admin_password, "before");
    wizard.play({"secret", Key::tab, "Secret", Key::tab, Key::enter, [&] {
                     EXPECT_EQ(screen_state, state_message);
                     EXPECT_PICTURE(dialog_region(wizard.image(), 2, 25), R"(
┌───────────────────────┐
│        Error!         │
├───────────────────────┤
│Passwords do not match!│
│                       │
│                       │
│                       │
│          OK           │
│                       │
│                       │
└───────────────────────┘
)");
                     EXPECT_FALSE(wizard.image().shows("Validate:"));
                 }});
    EXPECT_STREQ(wizard_settings.admin_password, "before");
}

TEST(PasswordScreen, after_the_error_the_focus_is_on_the_password_field_and_the_texts_are_kept) {
    WizardRig wizard(state_password);
    wizard.play({"secret", Key::tab, "other", Key::tab, Key::enter, Key::enter});
    EXPECT_EQ(screen_state, state_password);
    EXPECT_EQ(screen_focus(state_password), 0);
    EXPECT_PICTURE(fields(wizard), R"(
│ Password:******                           │
│                                           │
│ Validate:*****                            │
)");
    EXPECT_TRUE(wizard.image().cursor().visible);
    EXPECT_EQ(wizard.image().cursor().position, (Position{8, 34}));
}

TEST(PasswordScreen, the_texts_that_were_kept_after_the_error_can_be_corrected) {
    WizardRig wizard(state_password);
    wizard.play({"secret", Key::tab, "secreT", Key::tab, Key::enter, Key::enter, Key::tab,
                 Key::backspace, "t", Key::tab, Key::enter});
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_STREQ(wizard_settings.admin_password, "secret");
}

TEST(PasswordScreen, two_empty_passwords_are_blank_and_not_different_and_empty_the_setting) {
    WizardRig wizard(state_password);
    std::strcpy(wizard_settings.admin_password, "before");
    wizard.play({"\t\t", Key::enter,
                 [&] {
                     EXPECT_EQ(screen_state, state_message);
                     expect_error_box(wizard.image(), "A blank password is not allowed!");
                 },
                 Key::enter});
    EXPECT_EQ(screen_state, state_password);
    EXPECT_EQ(screen_focus(state_password), 0);
    EXPECT_STREQ(wizard_settings.admin_password, "");
}

TEST(PasswordScreen, one_empty_password_does_not_match_the_other) {
    WizardRig wizard(state_password);
    wizard.play({"secret", "\t\t", Key::enter});
    EXPECT_TRUE(wizard.image().shows("Passwords do not match!"));
}

TEST(PasswordScreen, fifty_characters_are_kept_whole_and_the_51st_is_refused) {
    const std::string longest = fifty_characters;
    WizardRig wizard(state_password);
    wizard.play({longest + "x", Key::tab, longest, Key::tab, Key::enter});
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(wizard_settings.admin_password, longest);
}

TEST(PasswordScreen, at_most_30_characters_are_shown) {
    WizardRig wizard(state_password);
    wizard.play({std::string(31, 'x'), Key::tab, std::string(30, 'x')});
    EXPECT_PICTURE(fields(wizard), R"(
│ Password:******************************   │
│                                           │
│ Validate:******************************   │
)");
    EXPECT_EQ(wizard.image().cursor().position, (Position{10, 58}));
}

TEST(PasswordScreen, no_character_of_a_password_comes_to_the_terminal) {
    WizardRig wizard(state_password);
    const auto expect_hidden = [&] {
        for (const char* character : {"7", "%", "9", "#"})
            EXPECT_FALSE(wizard.terminalImage().shows(character)) << character;
    };
    wizard.play({"7%7%7", expect_hidden, Key::tab, "9#9#9", expect_hidden, Key::tab, Key::enter,
                 expect_hidden, Key::enter, expect_hidden});
    EXPECT_EQ(wizard.outputBytes().find("7%7%7"), std::string::npos);
    EXPECT_EQ(wizard.outputBytes().find("9#9#9"), std::string::npos);
}

TEST(PasswordScreen, a_user_who_comes_back_from_the_domain_screen_finds_the_first_field) {
    WizardRig wizard(state_password);
    wizard.play({"secret", Key::tab, "secret", Key::tab, Key::enter, "\t\t\t\t", Key::enter});
    EXPECT_EQ(screen_state, state_password);
    EXPECT_EQ(screen_focus(state_password), 0);
    EXPECT_PICTURE(fields(wizard), R"(
│ Password:******                           │
│                                           │
│ Validate:******                           │
)");
    EXPECT_STREQ(wizard_settings.admin_password, "secret");
}

TEST(PasswordScreen, exit_leaves_the_wizard_with_nothing_stored_or_applied) {
    for (const Key press : {Key::enter, Key::space}) {
        WizardRig wizard(state_password);
        EXPECT_EQ(wizard.play({"secret", "\t\t\t", press}), WizardEnd::left);
        EXPECT_STREQ(wizard_settings.admin_password, "");
        EXPECT_EQ(apply_double.calls, 0);
    }
}

}  // namespace
