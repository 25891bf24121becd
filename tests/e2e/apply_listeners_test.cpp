// The listeners: the chosen interfaces and ports, and what becomes of those that were there.

#include <gtest/gtest.h>

#include <optional>

#include "tests/e2e/apply_test.h"
#include "tests/e2e/apply_wire.h"
#include "tests/support/local_port.h"

namespace {

class ApplyListeners : public ApplyTest {
  protected:
    /// Has the server listen at these addresses for WebMail before the run.
    void listenForWebmail(const std::vector<std::string>& addresses) {
        std::string state =
            "services smtpIncoming webadmin cli\nlistener cli 127.0.0.1:9091\nenable cli yes\n";
        for (const std::string& address : addresses)
            state += "listener webmail " + address + "\n";
        server.save(state);
    }

    /// What was said from the first "config webmail" to the second.
    Commands resetCommands() const {
        const Commands commands = server.commands();
        return part_of(commands, index_of(commands, "config webmail", 1),
                       index_of(commands, "config webmail", 2));
    }
};

TEST_F(ApplyListeners, listen_at_the_chosen_interfaces_and_ports) {
    answers.webadmin = {1, "9001", true};
    answers.smtp = {2, "2525"};
    answers.pop3 = {3, "1110"};
    answers.imap = {0, "1143"};
    answers.webmail = {2, "8080"};
    runThrough();
    EXPECT_EQ(server.commands(), run_commands(answers));
    EXPECT_EQ(records(server.stateAfterRestart(answers.password), "listener"),
              (std::vector<std::string>{"cli 127.0.0.1:9091", "imap 0.0.0.0:1143",
                                        "pop3 10.20.0.5:1110", "smtp-incoming 192.168.7.2:2525",
                                        "webadmin 127.0.0.1:9001", "webmail 192.168.7.2:8080"}));
}

TEST_F(ApplyListeners, replace_all_that_are_listed_in_their_order) {
    listenForWebmail({"127.0.0.1:8003", "192.168.7.2:8001", "127.0.0.1:8002"});
    runThrough();
    EXPECT_EQ(resetCommands(), (Commands{"config webmail", "list listeners",
                                         "remove listener address 127.0.0.1:8003",
                                         "remove listener address 192.168.7.2:8001",
                                         "remove listener address 127.0.0.1:8002", "commit"}));
    EXPECT_EQ(records(server.stateAfterRestart(answers.password), "listener webmail"),
              std::vector<std::string>{"0.0.0.0:80"});
}

TEST_F(ApplyListeners, need_only_a_commit_when_none_is_listed) {
    listenForWebmail({});
    runThrough();
    EXPECT_EQ(resetCommands(), (Commands{"config webmail", "list listeners", "commit"}));
}

TEST_F(ApplyListeners, replace_the_first_ten_when_more_are_listed) {
    std::vector<std::string> addresses;
    for (int port = 8001; port <= 8012; ++port)
        addresses.push_back("127.0.0.1:" + std::to_string(port));
    listenForWebmail(addresses);
    runThrough();
    EXPECT_EQ(records(server.stateAfterRestart(answers.password), "listener webmail"),
              (std::vector<std::string>{"127.0.0.1:8011", "127.0.0.1:8012", "0.0.0.0:80"}));
}

class ApplyRetriedPort : public ApplyTest {
  protected:
    ApplyRetriedPort() { askForLittle(); }

    /// Answers a listener's screen with a port that a program has, ends that program while the
    /// warning stands and presses "Retry". Everything else is answered as in `answers`.
    void runWithRetry(Stop stop, int row, int port) {
        std::optional<LocalPort> program(port);
        program->open();
        wizard.walk(Stop::password, stop, answers);
        wizard.answerListener(stop, {row, std::to_string(port)});
        wizard.waitForText("Warning!");
        program.reset();
        wizard.press(Key::enter);
        wizard.walkToTheEnd(answers, stop_at(place_of(stop) + 1));
        ASSERT_EQ(wizard.finish(), exited(0));
    }
};

TEST_F(ApplyRetriedPort, of_webadmin_is_the_one_that_was_typed) {
    runWithRetry(Stop::webadmin, 2, 9002);
    answers.webadmin = {2, "9002"};
    EXPECT_EQ(server.commands(), run_commands(answers));
}

TEST_F(ApplyRetriedPort, of_a_service_is_the_one_of_before_at_the_interface_that_was_chosen) {
    runWithRetry(Stop::smtp, 2, 2525);
    answers.smtp = {2, "25"};
    EXPECT_EQ(server.commands(), run_commands(answers));
}

}  // namespace
