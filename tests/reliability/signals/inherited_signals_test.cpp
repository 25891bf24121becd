// Signals that the wizard is started to ignore or with blocked, as by nohup or by a shell without
// job control.

#include "tests/e2e/endings.h"
#include "tests/support/files.h"
#include "tests/support/installed_server.h"
#include "tests/support/wait_until.h"

namespace {

// A wizard that env(1) starts with an option of it.
std::vector<std::string> wizard_with(const std::string& option) {
    return {"env", option, WIZARD_PROGRAM};
}

TEST(IgnoredSignals, of_an_end_end_the_wizard_all_the_same) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        WizardRun wizard(wizard_with("--ignore-signal=INT,TERM,HUP"));
        wizard.waitForScreen(Stop::password);
        wizard.signal(signal);
        EXPECT_TRUE(is_aborted(wizard)) << signal;
    }
}

TEST(BlockedSignals, of_an_end_end_the_wizard_all_the_same) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        WizardRun wizard(wizard_with("--block-signal=INT,TERM,HUP,WINCH"));
        wizard.waitForScreen(Stop::password);
        wizard.signal(signal);
        EXPECT_TRUE(is_aborted(wizard)) << signal;
    }
}

TEST(BlockedSignals, of_a_resize_are_answered) {
    WizardRun wizard(wizard_with("--block-signal=WINCH"));
    wizard.waitForScreen(Stop::password);
    const Position before = wizard.waitForText(title_of(Stop::password));
    wizard.resize(50, 132);
    wizard.waitUntil(
        [&](const ScreenImage& screen) {
            const std::optional<Position> at = screen.find(title_of(Stop::password));
            return at && at->col > before.col;
        },
        "the screen had moved to the middle");
}

TEST(IgnoredStop, leaves_the_wizard_running) {
    WizardRun wizard(wizard_with("--ignore-signal=TSTP"));
    wizard.waitForScreen(Stop::password);
    wizard.type("\x1a");
    wizard.type("a");
    wizard.waitForText("*");
}

TEST(IgnoredChildren, do_not_keep_the_answers_from_being_applied) {
    WizardRun wizard(wizard_with("--ignore-signal=CHLD"));
    wizard.walkToTheEnd();
    EXPECT_EQ(wizard.finish(), exited(0));
}

// The signals that a command of the wizard's ignores. Its mask says nothing here: the shell that
// runs it unblocks everything.
class CommandSignals : public testing::Test {
  protected:
    /// As the kernel writes them, of the command that sets the password.
    std::string ignoredWith(const std::string& option) {
        server.replaceBy(
            "grep ^SigIgn: /proc/$$/status >/run/scratch/new\n"
            "mv /run/scratch/new /run/scratch/ignored\nexec sleep 1000\n");
        WizardRun wizard(wizard_with(option));
        wizard.walkToTheEnd();
        wait_until([] { return exists("/run/scratch/ignored"); }, "the command ran");
        return read_file("/run/scratch/ignored");
    }

    InstalledServer server;
};

TEST_F(CommandSignals, are_not_ignored_when_the_wizard_alone_ignores_them) {
    EXPECT_EQ(ignoredWith("--default-signal=HUP"), "SigIgn:\t0000000000000000\n");
}

TEST_F(CommandSignals, are_ignored_when_the_wizard_was_started_to_ignore_them) {
    EXPECT_EQ(ignoredWith("--ignore-signal=HUP"), "SigIgn:\t0000000000000001\n");
}

}  // namespace
