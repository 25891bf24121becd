// Signals that the wizard is started to ignore or with blocked, as by nohup or by a shell without
// job control: by env(1), with an option of it.

#include <gtest/gtest.h>

#include <csignal>

#include "tests/e2e/endings.h"
#include "tests/e2e/wizard_run.h"
#include "tests/support/files.h"
#include "tests/support/installed_server.h"
#include "tests/support/wait_until.h"

namespace {

ProgramSetup wizard_with(const std::string& option) { return {{"env", option, WIZARD_PROGRAM}}; }

TEST(InheritedSignals, of_an_end_end_the_wizard_all_the_same) {
    for (const char* option :
         {"--ignore-signal=INT,TERM,HUP", "--block-signal=INT,TERM,HUP,WINCH"}) {
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            SCOPED_TRACE(std::string(option) + " " + std::to_string(signal));
            WizardRun wizard(wizard_with(option));
            wizard.waitForScreen(Stop::password);
            wizard.signal(signal);
            EXPECT_TRUE(is_aborted(wizard));
        }
    }
}

TEST(InheritedSignals, of_a_resize_are_answered) {
    WizardRun wizard(wizard_with("--block-signal=WINCH"));
    wizard.waitForScreen(Stop::password);
    const int before = wizard.waitForText(title_of(Stop::password)).col;
    wizard.resize(50, 132);
    wizard.waitUntil(
        [&](const ScreenImage& screen) {
            const std::optional<Position> at = screen.find(title_of(Stop::password));
            return at && at->col > before;
        },
        "the screen had moved to the middle");
}

TEST(InheritedSignals, of_a_stop_stay_ignored) {
    WizardRun wizard(wizard_with("--ignore-signal=TSTP"));
    wizard.waitForScreen(Stop::password);
    wizard.type("\x1a");
    wizard.type("a");
    wizard.waitForText("*");
}

TEST(InheritedSignals, of_children_do_not_keep_the_answers_from_being_applied) {
    WizardRun wizard(wizard_with("--ignore-signal=CHLD"));
    wizard.walkToTheEnd();
    EXPECT_EQ(wizard.finish(), exited(0));
}

// As the kernel tells it of the command that sets the password. Its mask says nothing here: the
// shell that runs it unblocks everything.
TEST(CommandSignals, are_ignored_only_when_the_wizard_was_started_to_ignore_them) {
    const InstalledServer server;
    server.replaceBy(
        "grep ^SigIgn: /proc/$$/status >/run/scratch/new; mv /run/scratch/new "
        "/run/scratch/ignored\nexec sleep 1000\n");
    for (const std::string kind : {"default", "ignore"}) {
        WizardRun wizard(wizard_with("--" + kind + "-signal=HUP"));
        wizard.walkToTheEnd();
        wait_until([] { return exists("ignored"); }, "the command ran");
        EXPECT_EQ(read_file("ignored"),
                  kind == "ignore" ? "SigIgn:\t0000000000000001\n" : "SigIgn:\t0000000000000000\n");
        unlink("ignored");
    }
}

}  // namespace
