// Every command of a whole run, answered in every wrong way: what the user is told, the screen that
// comes back, and what a second run can make good.

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <string>
#include <tuple>
#include <vector>

#include "tests/apply/step_commands.h"
#include "tests/reliability/peer/child_run.h"
#include "tests/reliability/peer/whole_run.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"
#include "wizard/base/screen_state.h"

namespace {

const std::string login_message =
    "Error! Could not login to Teluma server! Please make sure that the CLI port is not in use! OK";

struct PeerFault {
    std::string name;
    std::string action;  // as the stand-in's fault rules have it
    bool whole_reply;    // the connection goes on behind it, as after any other reply
};

const PeerFault every_fault[] = {
    {"refused", "refuse", true},
    {"closed", "close", false},
    {"overlong", "overlong 300", false},
    {"garbage", "garbage-prompt 200", true},
};

std::string rule_for(const PlacedCommand& command, const std::string& action) {
    return "=\"" + command.text + "\" " + std::to_string(command.count) + " " + action;
}

// What the wizard sends behind a reply of failure, before it gives up.
Lines sent_behind(const std::string& command) {
    if (command == "list listeners")
        return {"commit"};
    if (command == "show attr smtpfiltersfile")
        return {"back"};
    return {};
}

// Expects nothing of what faulty replies are made of among the bytes that a terminal was sent.
void expect_no_reply_in(const std::string& written) {
    for (const char* piece : {"garbage", "\x1b[7;31m", "xxxxx", "-ERR"})
        EXPECT_EQ(written.find(piece), std::string::npos) << piece;
}

void expect_end_of_server(const InstalledServer& server) {
    const pid_t process = server.lastStarted();
    ASSERT_GT(process, 0);
    wait_until([=] { return !process_running(process); }, "the server has ended");
}

class EveryCommand : public testing::TestWithParam<std::tuple<size_t, PeerFault>> {
  protected:
    bool isMadeGood(size_t index) const {
        return fault.whole_reply &&
               std::count(step.repeatable.begin(), step.repeatable.end(), index) != 0;
    }

    // Expects that the server was told nothing else before the step failed.
    void expectSent(const PlacedCommand& command) const {
        Lines expected = joined_commands({command.before, {command.text}});
        if (fault.whole_reply)
            expected = joined_commands({expected, sent_behind(command.text)});
        Lines sent = runs.server.commands();
        sent.resize(std::min(sent.size(), expected.size()));
        EXPECT_EQ(sent, expected);
    }

    void expectSecondRun(const ChildRun& run, bool made_good) const {
        ASSERT_EQ(run.boxes.size(), 2u);
        if (made_good)
            EXPECT_EQ(run.boxes[1].find("Operations pending"), 0u) << run.boxes[1];
        else
            EXPECT_EQ(run.boxes[1], run.boxes[0]);
        EXPECT_EQ(run.states, (std::vector<int>{step.state, made_good ? state_end : step.state}));
    }

    void expectFailureAt(size_t index) {
        const PlacedCommand command = placed_command(std::get<0>(GetParam()), index);
        const std::string rule = rule_for(command, fault.action);
        SCOPED_TRACE(rule);
        const ChildRun run = runs.apply(rule + "\n", 2);
        EXPECT_EQ(run.status, exited(0));
        ASSERT_FALSE(run.boxes.empty());
        EXPECT_EQ(run.boxes[0], "Error! " + step.message + " OK");
        expect_no_reply_in(run.written);
        expectSent(command);
        expectSecondRun(run, isMadeGood(index));
    }

    const TalkingStep& step = talking_steps()[std::get<0>(GetParam())];
    const PeerFault fault = std::get<1>(GetParam());
    ChildRuns runs;
};

TEST_P(EveryCommand, that_is_answered_so_fails_its_step_and_a_second_run_makes_good_what_it_can) {
    for (size_t index = 0; index < step.commands.size(); ++index)
        expectFailureAt(index);
}

std::string step_and_fault(const testing::TestParamInfo<std::tuple<size_t, PeerFault>>& info) {
    return std::string(talking_steps()[std::get<0>(info.param)].name) + "_" +
           std::get<1>(info.param).name;
}

INSTANTIATE_TEST_SUITE_P(Of, EveryCommand,
                         testing::Combine(testing::Range<size_t>(0, 9),
                                          testing::ValuesIn(every_fault)),
                         step_and_fault);

class EveryReply : public testing::Test {
  protected:
    ChildRuns runs;
};

TEST_F(EveryReply, that_comes_one_byte_at_a_time_is_as_good_as_any_other) {
    const ChildRun run = runs.apply(
        "connect * dribble 0.0001\npassword * dribble 0.0001\n\"\" * dribble 0.0001\n", 1);
    EXPECT_EQ(run.states, std::vector<int>{state_end});
    EXPECT_EQ(runs.server.commands(), whole_run());
}

TEST_F(EveryReply, may_follow_a_greeting_of_garbage) {
    for (const char* rule : {"connect 1 garbage 300\n", "connect 1 garbage-prompt 200\n"}) {
        SCOPED_TRACE(rule);
        const ChildRun run = runs.apply(rule, 1);
        EXPECT_EQ(run.states, std::vector<int>{state_end});
        EXPECT_EQ(runs.server.commands(), whole_run());
        expect_no_reply_in(run.written);
    }
}

// The greeting and what belongs to the login; a failure ends the wizard.
struct LoginFault {
    std::string name;
    std::string rule;
};

class EveryLogin : public EveryReply, public testing::WithParamInterface<LoginFault> {};

TEST_P(EveryLogin, ends_the_wizard_and_the_server) {
    const ChildRun run = runs.apply(GetParam().rule, 1);
    EXPECT_EQ(run.status, exited(1));
    EXPECT_EQ(run.boxes, Lines{login_message});
    expect_no_reply_in(run.written);
    expect_end_of_server(runs.server);
}

std::string login_name(const std::string& event) {
    return event == "connect" ? "greeting" : event == "password" ? event : "user";
}

std::vector<LoginFault> login_faults() {
    std::vector<LoginFault> faults;
    for (const char* event : {"connect", "=\"user admin\"", "password"}) {
        for (const PeerFault& fault : every_fault)
            faults.push_back({login_name(event) + "_" + fault.name,
                              std::string(event) + " 1 " + fault.action + "\n"});
    }
    const auto read_over = [](const LoginFault& fault) { return fault.name == "greeting_garbage"; };
    faults.erase(std::remove_if(faults.begin(), faults.end(), read_over), faults.end());
    return faults;
}

INSTANTIATE_TEST_SUITE_P(With, EveryLogin, testing::ValuesIn(login_faults()), CaseName());

bool was_met(const std::string& rule) {
    const std::string log = "/var/opt/teluma/run/teluma.log";
    return exists(log) && read_file(log).find("# fault: " + rule + "\n") != std::string::npos;
}

class Silence : public EveryReply {
  protected:
    void expectInterruptible(const std::string& rule) {
        SCOPED_TRACE(rule);
        std::string printed;
        const ExitStatus status = runs.interrupted(
            rule + "\n",
            [&](pid_t wizard) {
                wait_until([&] { return was_met(rule); }, "the server was silent");
                kill(wizard, SIGINT);
            },
            printed);
        EXPECT_EQ(status, exited(1));
        EXPECT_EQ(printed, "\nTELUMA Configuration Wizard Aborted!\n");
        expect_end_of_server(runs.server);
    }
};

class EverySilence : public Silence, public testing::WithParamInterface<size_t> {};

TEST_P(EverySilence, behind_a_command_is_ended_by_an_interrupt) {
    for (size_t index = 0; index < talking_steps()[GetParam()].commands.size(); ++index)
        expectInterruptible(rule_for(placed_command(GetParam(), index), "silent"));
}

std::string step_name(const testing::TestParamInfo<size_t>& info) {
    return talking_steps()[info.param].name;
}

INSTANTIATE_TEST_SUITE_P(In, EverySilence, testing::Range<size_t>(0, 9), step_name);

TEST_F(Silence, within_the_login_is_ended_by_an_interrupt) {
    for (const char* rule : {"connect 1 silent", "=\"user admin\" 1 silent", "password 1 silent"})
        expectInterruptible(rule);
}

}  // namespace
