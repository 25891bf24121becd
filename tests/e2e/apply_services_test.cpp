// What the server is told for each combination of services, and what it makes of that.

#include <gtest/gtest.h>

#include "tests/e2e/apply_test.h"
#include "tests/e2e/apply_wire.h"
#include "tests/support/case_name.h"

namespace {

struct ServicesCase {
    const char* name;
    std::vector<bool> ticks;  // POP3, IMAP, WebMail
    std::string listed;       // behind the services that always run
};

class ApplyServices : public ApplyTest, public testing::WithParamInterface<ServicesCase> {};

TEST_P(ApplyServices, are_set_by_these_commands_and_run_with_their_listeners_after_a_restart) {
    const std::vector<bool>& ticks = GetParam().ticks;
    answers.services = ticks;
    runThrough();
    EXPECT_EQ(server.commands(), run_commands(answers));
    const std::string state = server.stateAfterRestart(answers.password);
    EXPECT_EQ(records(state, "services"),
              std::vector<std::string>{"smtpIncoming smtpOutgoing processing webadmin cli" +
                                       GetParam().listed});
    const char* const names[] = {"pop3", "imap", "webmail"};
    const char* const ports[] = {":110", ":143", ":80"};
    for (size_t i = 0; i < ticks.size(); ++i) {
        const std::string address = (ticks[i] ? "0.0.0.0" : "127.0.0.1") + std::string(ports[i]);
        EXPECT_EQ(records(state, std::string("listener ") + names[i]),
                  std::vector<std::string>{address});
        EXPECT_EQ(records(state, std::string("enable ") + names[i]).size(), ticks[i] ? 1u : 0u);
    }
}

const ServicesCase services_cases[] = {
    {"none", {false, false, false}, ""},
    {"pop3", {true, false, false}, " pop3"},
    {"imap", {false, true, false}, " imap"},
    {"pop3_and_imap", {true, true, false}, " pop3 imap"},
    {"webmail", {false, false, true}, " webmail"},
    {"pop3_and_webmail", {true, false, true}, " pop3 webmail"},
    {"imap_and_webmail", {false, true, true}, " imap webmail"},
    {"all", {true, true, true}, " pop3 imap webmail"},
};

INSTANTIATE_TEST_SUITE_P(EveryCombination, ApplyServices, testing::ValuesIn(services_cases),
                         CaseName());

class ApplyServiceList : public ApplyTest {};

TEST_F(ApplyServiceList, begins_with_log_when_the_server_lists_that) {
    server.save("services webmail log cli\nlistener cli 127.0.0.1:9091\nenable cli yes\n");
    runThrough();
    EXPECT_EQ(records(server.stateAfterRestart(answers.password), "services"),
              std::vector<std::string>{
                  "log smtpIncoming smtpOutgoing processing webadmin cli pop3 imap webmail"});
}

}  // namespace
