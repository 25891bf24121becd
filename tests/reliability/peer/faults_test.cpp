// One of each way in which a server can answer wrongly, or not at all, in a step and at the login.
// What each command does with a wrong answer, tests/apply shows.

#include <gtest/gtest.h>

#include <csignal>

#include "tests/e2e/apply_test.h"
#include "tests/e2e/endings.h"
#include "tests/support/case_name.h"

namespace {

class PeerTest : public ApplyTest {
  protected:
    // Nothing of what faulty replies are made of.
    void expectNoReplyOnTerminal() {
        for (const char* piece : {"garbage", "\x1b[7;31m", "xxxxx", "-ERR"})
            EXPECT_EQ(wizard.output().find(piece), std::string::npos) << piece;
    }
};

struct StepFault {
    std::string name;
    std::string rule;  // as the stand-in has it
    const char* message;
    Stop screen;
    bool is_made_good;  // by a second one
};

class StepFaults : public PeerTest, public testing::WithParamInterface<StepFault> {};

TEST_P(StepFaults, fail_the_step_and_later_runs_make_good_what_they_can) {
    server.faults(GetParam().rule + "\n");
    // The second write to a closed connection is the one that raises a signal.
    const int failures = GetParam().is_made_good ? 1 : 3;
    for (int run = 0; run < failures; ++run) {
        wizard.walkToTheEnd(answers, run == 0 ? Stop::password : GetParam().screen);
        wizard.dismissError(GetParam().message);
    }
    wizard.waitForScreen(GetParam().screen);
    if (GetParam().is_made_good) {
        wizard.walkToTheEnd(answers, GetParam().screen);
        EXPECT_EQ(wizard.finish(), exited(0));
    }
    expectNoReplyOnTerminal();
}

const StepFault step_faults[] = {
    {"refused_within_a_context", "\"add alias root\" 1 refuse",
     "Could not create the aliases! Please make sure that a similar alias does not already exist!",
     Stop::aliases, false},
    {"refused_table", "\"list listeners\" 1 refuse", "Could not configure webadmin!",
     Stop::webadmin, true},
    {"closed", "\"list listeners\" 2 close", "Could not configure SMTP!", Stop::smtp, false},
    {"overlong", "\"set services\" 1 overlong 300", "Could not set services!", Stop::services,
     false},
    {"garbage", "\"show attr smtpfiltersfile\" 1 garbage-prompt 200", "Could not configure relay!",
     Stop::relay, true},
};

INSTANTIATE_TEST_SUITE_P(Of, StepFaults, testing::ValuesIn(step_faults), CaseName());

struct PeerRule {
    std::string name;
    std::string rule;
};

class PeerRules : public PeerTest, public testing::WithParamInterface<PeerRule> {
  protected:
    PeerRules() { server.faults(GetParam().rule + "\n"); }
};

using LoginFaults = PeerRules;

INSTANTIATE_TEST_SUITE_P(
    With, LoginFaults,
    testing::Values(PeerRule{"closed_greeting", "connect 1 close"},
                    PeerRule{"overlong_answer_to_the_user", "=\"user admin\" 1 overlong 300"},
                    PeerRule{"refused_password", "password 1 refuse"},
                    PeerRule{"garbage_for_the_password", "password 1 garbage-prompt 200"}),
    CaseName());

TEST_P(LoginFaults, end_the_wizard_and_the_server) {
    wizard.walkToTheEnd(answers);
    wizard.dismissError(login_message);
    EXPECT_TRUE(ends_with(wizard, exited(1), ""));
    expectNoReplyOnTerminal();
    server.waitForEnd();
}

using Oddities = PeerRules;

INSTANTIATE_TEST_SUITE_P(
    Of, Oddities,
    testing::Values(PeerRule{"bytes_one_at_a_time",
                             "connect * dribble 0.0001\npassword * dribble 0.0001\n"
                             "\"\" * dribble 0.0001"},
                    PeerRule{"a_greeting_of_garbage", "connect 1 garbage 300"},
                    PeerRule{"a_greeting_of_garbage_before_a_prompt",
                             "connect 1 garbage-prompt 200"}),
    CaseName());

TEST_P(Oddities, are_as_good_as_any_other_reply) {
    runThrough();
    expectNoReplyOnTerminal();
    EXPECT_EQ(
        server.saved("services"),
        Lines{"services smtpIncoming smtpOutgoing processing webadmin cli pop3 imap webmail"});
}

using Silence = PeerRules;

INSTANTIATE_TEST_SUITE_P(Of, Silence,
                         testing::Values(PeerRule{"the_greeting", "connect 1 silent"},
                                         PeerRule{"the_login", "password 1 silent"},
                                         PeerRule{"a_question", "\"show attr services\" 1 silent"}),
                         CaseName());

TEST_P(Silence, is_ended_by_an_interrupt_and_so_is_the_server) {
    wizard.walkToTheEnd(answers);
    server.waitForLog("# fault: " + GetParam().rule);
    EXPECT_TRUE(wizard.image().shows("Operations pending"));
    wizard.signal(SIGINT);
    EXPECT_TRUE(is_aborted(wizard));
    server.waitForEnd();
}

}  // namespace
