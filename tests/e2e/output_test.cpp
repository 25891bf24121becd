// How much the wizard says to the terminal: on a slow line each byte is to be seen.

#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/wizard_run.h"

namespace {

/// A run and a count of what it has written.
class Output : public testing::Test {
  protected:
    Output() { wizard.waitForScreen(Stop::password); }

    /// How many bytes the wizard has written since the last call, when it waits for a key.
    size_t news() {
        wizard.waitForKey();
        wizard.image();
        const size_t before = counted;
        counted = wizard.output().size();
        return counted - before;
    }

    /// The bytes for a text that is typed at once.
    size_t bytesFor(const std::string& text) {
        wizard.type(text);
        return news();
    }

    WizardRun wizard;
    size_t counted = 0;
};

TEST_F(Output, of_a_password_is_a_byte_for_each_character) {
    bytesFor("a");
    EXPECT_EQ(bytesFor("b"), 1U);
    EXPECT_EQ(bytesFor("cdefg"), 5U);
}

TEST_F(Output, of_a_text_is_a_byte_for_each_character) {
    wizard.walk(Stop::password, Stop::domain);
    bytesFor("a");
    EXPECT_EQ(bytesFor("b"), 1U);
}

TEST_F(Output, of_the_first_screen_is_no_more_than_that_of_a_plain_password_box) {
    const size_t first_screen = news();
    EXPECT_LE(first_screen, 1388U);
    wizard.press(Key::up);
    EXPECT_EQ(news(), 0U);
    wizard.resize(34, 100);
    EXPECT_LE(news(), first_screen + 100);
}

}  // namespace
