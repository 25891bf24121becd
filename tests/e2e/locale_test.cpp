// Kinds of terminals and character sets: frames are drawn with lines everywhere.

#include <gtest/gtest.h>

#include "tests/e2e/wizard_run.h"
#include "tests/support/case_name.h"
#include "tests/support/golden.h"

namespace {

struct Surroundings {
    const char* name;
    const char* term;
    const char* locale;
};

class Frames : public testing::TestWithParam<Surroundings> {};

INSTANTIATE_TEST_SUITE_P(
    Surroundings, Frames,
    testing::Values(Surroundings{"xterm_with_utf8", "xterm-256color", "C.UTF-8"},
                    Surroundings{"xterm_without", "xterm-256color", "C"},
                    Surroundings{"plain_xterm_with_utf8", "xterm", "C.UTF-8"},
                    Surroundings{"plain_xterm_without", "xterm", "C"},
                    Surroundings{"linux_console_with_utf8", "linux", "C.UTF-8"},
                    Surroundings{"linux_console_without", "linux", "C"},
                    Surroundings{"screen_with_utf8", "screen-256color", "C.UTF-8"},
                    Surroundings{"screen_without", "screen-256color", "C"},
                    Surroundings{"tmux_with_utf8", "tmux-256color", "C.UTF-8"},
                    Surroundings{"tmux_without", "tmux-256color", "C"}),
    CaseName());

TEST_P(Frames, are_drawn_with_lines_not_with_letters) {
    WizardRun wizard(24, 80, GetParam().term, GetParam().locale);
    EXPECT_SCREEN(wizard, "golden/default_walk/password");
}

// A Linux console and PuTTY, when they take UTF-8, show the letters that stand for lines as
// letters.
TEST(FramesOnALinuxConsole, are_written_in_utf8_where_the_locale_has_it) {
    WizardRun wizard(24, 80, "linux", "C.UTF-8");
    wizard.waitForScreen(Stop::password);
    EXPECT_NE(wizard.output().find("┌─"), std::string::npos);
    EXPECT_EQ(wizard.output().find("lqq"), std::string::npos);
}

}  // namespace
