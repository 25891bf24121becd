// Kinds of terminals and character sets: what the terminal shows.

#include <gtest/gtest.h>

#include "tests/e2e/wizard_run.h"
#include "tests/support/golden.h"
#include "tests/terminals/surroundings.h"

namespace {

class Frames : public testing::TestWithParam<Surroundings> {
  protected:
    WizardRun wizard{24, 80, GetParam().term, GetParam().locale};
};

INSTANTIATE_TEST_SUITE_P(Terminals, Frames, testing::ValuesIn(every_surroundings()),
                         surroundings_name);

TEST_P(Frames, are_drawn_with_lines_not_with_letters) {
    EXPECT_SCREEN(wizard, GetParam().hasColours() ? "../screens/golden/password_on_password"
                                                  : "golden/without_colours/password");
}

TEST_P(Frames, go_and_leave_a_usable_terminal_behind) {
    wizard.waitForScreen(Stop::password);
    wizard.press(Key::ctrl_c);
    EXPECT_EQ(wizard.waitExit(), exited(1));
    EXPECT_EQ(wizard.modes(), wizard.modesBefore());
    EXPECT_TRUE(wizard.image().cursor().visible);
    wizard.waitForText("TELUMA Configuration Wizard Aborted!");
}

// Many terminals, when they take UTF-8, show the letters that stand for lines as letters, whatever
// character set is chosen.
class FramesInUtf8 : public Frames {};

INSTANTIATE_TEST_SUITE_P(Terminals, FramesInUtf8, testing::ValuesIn(surroundings_with_utf8()),
                         surroundings_name);

TEST_P(FramesInUtf8, are_written_in_utf8) {
    wizard.waitForScreen(Stop::password);
    EXPECT_NE(wizard.output().find("┌─"), std::string::npos);
    EXPECT_EQ(wizard.output().find("lqq"), std::string::npos);
    EXPECT_EQ(wizard.output().find('\x0e'), std::string::npos);
}

// Nothing but bold and the cursor tells where the focus is.
TEST(FocusWithoutColours, is_seen_by_the_cursor_or_in_bold) {
    WizardRun wizard(24, 80, "vt220");
    wizard.moveFocus(Stop::password, 0);
    wizard.pressTimes(Key::tab, 2);
    EXPECT_SCREEN(wizard, "golden/without_colours/password_on_next");
    wizard.press(Key::tab);
    EXPECT_SCREEN(wizard, "golden/without_colours/password_on_exit");
}

}  // namespace
