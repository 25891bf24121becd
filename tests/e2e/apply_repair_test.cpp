// What becomes of a context of the server's that a failure has left open: the WebAdmin step leaves
// it by itself on its next run, the other steps fail for good.

#include <gtest/gtest.h>

#include "tests/e2e/apply_test.h"
#include "tests/e2e/apply_wire.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/frame.h"
#include "tests/support/case_name.h"

namespace {

/// A rule that refuses one command inside of a step.
struct RefusedCommand {
    const char* name;
    const char* rule;
    std::vector<std::string> done_ports = {};  // of listeners that are changed by then
};

class ApplyWebadminRepair : public ApplyTest, public testing::WithParamInterface<RefusedCommand> {};

TEST_P(ApplyWebadminRepair, leaves_the_open_context_with_two_backs) {
    askForLittle();
    server.faults(GetParam().rule);
    wizard.walkToTheEnd(answers);
    wizard.dismissError("Could not configure webadmin!");
    wizard.walkToTheEnd(answers, Stop::webadmin);
    ASSERT_EQ(wizard.finish(), exited(0));
    const Commands all = run_commands(answers);
    const Commands second_run =
        Commands{"back", "back"} +
        with_new_listeners(part_of(all, index_of(all, "config server", 2), all.size()),
                           GetParam().done_ports);
    const Commands commands = server.commands();
    EXPECT_EQ(part_of(commands, commands.size() - second_run.size(), commands.size()), second_run);
    EXPECT_EQ(records(server.stateAfterRestart(answers.password), "listener webadmin"),
              std::vector<std::string>{"0.0.0.0:9000"});
}

const RefusedCommand webadmin_commands[] = {
    {"config_server", "=\"config server\" 2 refuse\n"},
    {"config_webadmin", "=\"config webadmin\" 1 refuse\n"},
    {"list_listeners", "=\"list listeners\" 1 refuse\n"},
    {"remove_listener", "\"remove listener\" 1 refuse\n"},
    {"commit_of_the_removal", "=\"commit\" 3 refuse\n"},
    {"config_webadmin_again", "=\"config webadmin\" 2 refuse\n"},
    {"add_listener", "\"add listener\" 1 refuse\n"},
    {"set_enable", "=\"set enable yes\" 1 refuse\n"},
    {"first_commit", "=\"commit\" 4 refuse\n"},
    {"second_commit", "=\"commit\" 5 refuse\n"},
    {"save_config", "=\"save config\" 2 refuse\n", {"9000"}},
    {"back", "=\"back\" 1 refuse\n", {"9000"}},
};

INSTANTIATE_TEST_SUITE_P(AfterRefused, ApplyWebadminRepair, testing::ValuesIn(webadmin_commands),
                         CaseName());

class ApplyWebadminTwice : public ApplyTest {};

TEST_F(ApplyWebadminTwice, tries_the_two_backs_again_when_one_of_them_was_refused) {
    askForLittle();
    server.faults("=\"set enable yes\" 1 refuse\n=\"back\" 2 refuse\n");
    wizard.walkToTheEnd(answers);
    wizard.dismissError("Could not configure webadmin!");
    wizard.walkToTheEnd(answers, Stop::webadmin);
    wizard.dismissError("Could not configure webadmin!");
    wizard.walkToTheEnd(answers, Stop::webadmin);
    EXPECT_EQ(wizard.finish(), exited(0));
}

struct OpenContext {
    const char* name;
    const char* rule;     // refuses a command inside of the step's contexts
    const char* message;  // a piece of one line of it
    Stop screen;
    const char* first_command;  // of the step, refused in that context
};

class ApplyOpenContext : public ApplyTest, public testing::WithParamInterface<OpenContext> {
  protected:
    void expectFailure() {
        wizard.waitForText("Error!");
        wizard.waitForText(GetParam().message);
        wizard.waitForKey();
    }
};

TEST_P(ApplyOpenContext, makes_the_step_fail_again_until_ctrl_c_ends_the_wizard) {
    server.faults(GetParam().rule);
    wizard.walkToTheEnd(answers);
    expectFailure();
    const size_t commands_before = server.commands().size();
    wizard.press(Key::enter);
    wizard.walkToTheEnd(answers, GetParam().screen);
    expectFailure();
    const Commands commands = server.commands();
    EXPECT_EQ(part_of(commands, commands_before, commands.size()),
              Commands{GetParam().first_command});
    wizard.press(Key::enter);
    wizard.waitForScreen(GetParam().screen);
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
    server.waitForEnd();
}

const OpenContext open_contexts[] = {
    {"domain", "\"set primarydomain\" 1 refuse\n", "exist!", Stop::domain, create_localdomain},
    {"aliases", "=\"add alias root\" 1 refuse\n", "exist!", Stop::aliases,
     "update domain name localdomain"},
    {"smtp", "=\"config sslcontrol\" 1 refuse\n", "Could not configure SMTP!", Stop::smtp,
     "config server"},
    {"services", "\"set services\" 1 refuse\n", "Could not set services!", Stop::services,
     "config server"},
    {"a_service", "=\"config imap\" 2 refuse\n", "Could not set services!", Stop::services,
     "config server"},
    {"relay", "=\"back\" 6 refuse\n", "Could not configure relay!", Stop::relay, "config server"},
};

INSTANTIATE_TEST_SUITE_P(OfTheStep, ApplyOpenContext, testing::ValuesIn(open_contexts), CaseName());

class ApplyLostConnection : public ApplyTest {};

TEST_F(ApplyLostConnection, makes_the_step_fail_again_until_ctrl_c_ends_the_wizard) {
    server.faults("\"create domain\" 1 close\n");
    wizard.walkToTheEnd(answers);
    wizard.dismissError("exist!");
    wizard.walkToTheEnd(answers, Stop::domain);
    wizard.dismissError("exist!");
    wizard.waitForScreen(Stop::domain);
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
    server.waitForEnd();
}

TEST_F(ApplyLostConnection, to_a_server_that_has_died_is_a_failure_too) {
    server.faults("=\"config webadmin\" 1 crash\n");
    wizard.walkToTheEnd(answers);
    wizard.dismissError("Could not configure webadmin!");
    wizard.waitForScreen(Stop::webadmin);
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

}  // namespace
