// What is particular about the password screen; its answers are the walk model's.

#include <gtest/gtest.h>

#include <cstring>

#include "tests/screens/screen_facts.h"
#include "tests/support/expect_screen.h"

namespace {

class PasswordScreen : public testing::Test {
  protected:
    const std::string title = all_screens()[state_password].title;
    WizardRig wizard{state_password};
};

TEST_F(PasswordScreen, different_passwords_give_an_error_and_keep_the_texts) {
    std::strcpy(wizard_settings.admin_password, "before");
    wizard.play({"secret", Key::tab, "Secre", Key::tab, Key::enter,
                 [&] { expect_error_box(wizard.image(), "Passwords do not match!", title); },
                 Key::enter});
    EXPECT_STREQ(wizard_settings.admin_password, "before");
    EXPECT_PICTURE(wizard.image().region(8, 17, 3, 45), R"(
│ Password:******                           │
│                                           │
│ Validate:*****                            │
)");
    EXPECT_TRUE(wizard.image().cursor().visible);
    EXPECT_EQ(wizard.image().cursor().position, (Position{8, 34}));
}

TEST_F(PasswordScreen, two_empty_passwords_are_blank_and_not_different) {
    wizard.play({"\t\t", Key::enter, [&] {
                     expect_error_box(wizard.image(), "A blank password is not allowed!", title);
                 }});
}

TEST_F(PasswordScreen, fifty_characters_are_taken_and_30_shown) {
    const std::string longest = fifty_characters;
    wizard.play({longest + "x", Key::tab, longest,
                 [&] {
                     EXPECT_PICTURE(wizard.image().region(8, 17, 3, 45), R"(
│ Password:******************************   │
│                                           │
│ Validate:******************************   │
)");
                     EXPECT_EQ(wizard.image().cursor().position, (Position{10, 58}));
                 },
                 Key::tab, Key::enter});
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(wizard_settings.admin_password, longest);
}

TEST_F(PasswordScreen, no_character_of_a_password_comes_to_the_terminal) {
    wizard.play({"7%7%7", Key::tab, "9#9#9", Key::tab, Key::enter, Key::enter});
    for (const char* typed : {"7%", "%7", "9#", "#9"})
        EXPECT_EQ(wizard.outputBytes().find(typed), std::string::npos) << typed;
}

TEST(PasswordScreenExit, leaves_the_wizard_with_nothing_stored_or_applied) {
    for (const Key press : {Key::enter, Key::space}) {
        WizardRig wizard(state_password);
        EXPECT_EQ(wizard.play({"secret", "\t\t\t", press}), WizardEnd::left);
        EXPECT_STREQ(wizard_settings.admin_password, "");
        EXPECT_EQ(apply_double.calls, 0);
    }
}

}  // namespace
