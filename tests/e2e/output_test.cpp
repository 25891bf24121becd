// How much the wizard says to the terminal: on a slow line each byte is to be seen.

#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/wizard_run.h"

namespace {

/// A run and a count of what it has written.
class Output : public testing::Test {
  protected:
    /// How many bytes the wizard has written since the last call, when it waits for a key.
    size_t news() {
        wizard.waitForKey();
        wizard.image();
        const size_t before = counted;
        counted = wizard.output().size();
        return counted - before;
    }

    /// The bytes for a character typed into the field that has the focus, which already holds one
    /// that was typed.
    size_t bytesForCharacter() {
        wizard.type("a");
        news();
        wizard.type("b");
        return news();
    }

    WizardRun wizard;
    size_t counted = 0;
};

TEST_F(Output, of_the_first_screen_is_no_more_than_that_of_a_plain_password_box) {
    wizard.waitForScreen(Stop::password);
    EXPECT_LE(news(), 1388U);
}

TEST_F(Output, of_a_character_of_a_password_is_one_byte) {
    wizard.waitForScreen(Stop::password);
    EXPECT_EQ(bytesForCharacter(), 1U);
}

TEST_F(Output, of_a_character_of_a_text_is_one_byte) {
    wizard.walk(Stop::password, Stop::domain);
    EXPECT_EQ(bytesForCharacter(), 1U);
}

TEST_F(Output, of_characters_typed_at_once_is_a_byte_each) {
    wizard.waitForScreen(Stop::password);
    bytesForCharacter();
    wizard.type("cdefg");
    EXPECT_EQ(news(), 5U);
}

TEST_F(Output, is_nothing_for_a_key_that_changes_nothing) {
    wizard.waitForScreen(Stop::password);
    news();
    wizard.press(Key::up);
    EXPECT_EQ(news(), 0U);
}

TEST_F(Output, of_a_resize_is_little_more_than_the_screen) {
    wizard.waitForScreen(Stop::password);
    const size_t first_screen = news();
    wizard.resize(34, 100);
    EXPECT_LE(news(), first_screen + 100);
}

}  // namespace
