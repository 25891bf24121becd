// What the sanitizers don't see: memory that is read before anybody has written it. And that
// nothing is lost for good.

#include <gtest/gtest.h>

#include "tests/e2e/endings.h"
#include "tests/e2e/wizard_run.h"
#include "tests/support/files.h"

namespace {

constexpr const char* log_file = "/run/scratch/valgrind";

// Has no error and loses nothing, whatever a test does with it.
class UnderValgrind : public testing::Test {
  protected:
    void TearDown() override { EXPECT_EQ(read_file(log_file), ""); }

    // Nothing is preloaded: its sleeps take their time.
    WizardRun wizard{
        {{"env", "-u", "LD_PRELOAD", VALGRIND, "--quiet", "--vgdb=no", "--leak-check=full",
          "--show-leak-kinds=definite", "--child-silent-after-fork=yes",
          std::string("--log-file=") + log_file, RELEASED_WIZARD}}};
};

TEST_F(UnderValgrind, a_whole_run) {
    wizard.walkToTheEnd();
    EXPECT_EQ(wizard.finish(), exited(0));
}

TEST_F(UnderValgrind, an_interrupted_run) {
    wizard.walkToTheEnd();
    wizard.waitForText("connecting to CLI");
    wizard.resize(30, 100);
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

TEST_F(UnderValgrind, a_terminal_that_is_narrowed_while_lines_of_progress_are_shown) {
    wizard.resize(24, 300);
    wizard.walkToTheEnd();
    wizard.waitForText("connecting to CLI");
    wizard.resize(20, 72);
    wizard.waitForText("connecting to CLI");
    EXPECT_EQ(wizard.finish(), exited(0));
}

}  // namespace
