// What the wizard is started with: signals that are ignored or blocked, as by nohup or by a shell
// without job control; standard output or error that is no terminal. Passwords are not echoed then
// either, and the terminal that the keys come from gets its modes back.

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <tuple>

#include "tests/e2e/endings.h"
#include "tests/e2e/wizard_run.h"
#include "tests/support/files.h"
#include "tests/support/installed_server.h"
#include "tests/support/wait_until.h"

namespace {

// By env(1), with an option of it.
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
    const int before = wizard.waitForText(title_of(Stop::password)).col;
    wizard.waitForKey();
    wizard.resize(50, 132);
    wizard.waitForKey();
    EXPECT_GT(wizard.waitForText(title_of(Stop::password)).col, before);
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

// How a shell starts the wizard, and the keys that end it.
struct Named {
    std::string name;
    std::string text;
};

class OtherStreams : public testing::TestWithParam<std::tuple<Named, Named>> {};

INSTANTIATE_TEST_SUITE_P(
    To, OtherStreams,
    testing::Combine(testing::Values(Named{"pipe", " | cat"},
                                     Named{"silent_pipe", " 2>/dev/null | cat"},
                                     Named{"pipe_of_both", " 2>&1 | cat"},
                                     Named{"file", " >/run/scratch/screen"},
                                     Named{"silent_file", " >/run/scratch/screen 2>/dev/null"},
                                     Named{"no_error", " 2>/dev/null"}),
                     testing::Values(Named{"exit", "\t\t\t\n"}, Named{"interrupt", "\x03"},
                                     Named{"crash", "\x1c"})),
    [](const auto& way) {
        return std::get<0>(way.param).name + "_until_" + std::get<1>(way.param).name;
    });

// The shell would end before the wizard, and take the terminal with it, without its traps.
TEST_P(OtherStreams, leave_no_password_on_the_terminal_and_its_modes_as_they_were) {
    const auto& [redirection, end] = GetParam();
    WizardRun terminal({{"sh", "-c", "trap : INT QUIT; " WIZARD_PROGRAM + redirection.text}});
    wait_until([&] { return !terminal.modes().echo() && !terminal.modes().canonical(); },
               "the terminal did not echo");
    terminal.type("secret" + end.text);
    const ExitStatus status = terminal.waitExit();
    EXPECT_TRUE(end.name != "exit" || status == exited(0)) << status;
    EXPECT_EQ(terminal.modes(), terminal.modesBefore());
    EXPECT_EQ(terminal.output().find("secret"), std::string::npos);
}

TEST(PipedKeys, are_read_and_leave_the_terminal_as_it_was) {
    WizardRun wizard({{"sh", "-c", "printf '\\t\\t\\t\\n' | " WIZARD_PROGRAM}});
    EXPECT_EQ(wizard.waitExit(), exited(0));
    EXPECT_EQ(wizard.modes(), wizard.modesBefore());
}

TEST(PipedScreen, that_nobody_reads_any_more_ends_the_wizard) {
    WizardRun terminal({{"sh", "-c", "{ " WIZARD_PROGRAM "; echo $? >status; } | head -c 1"}});
    const auto has_ended = [&] {
        terminal.type("a");
        return exists("status") && !read_file("status").empty();
    };
    wait_until(has_ended, "the wizard had ended");
    EXPECT_EQ(read_file("status"), "1\n");
    EXPECT_EQ(terminal.modes(), terminal.modesBefore());
}

}  // namespace
