// The CLI session against the server program: what arrives there, in order, and what it does.

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "apply/cli_sequences.h"
#include "apply/cli_session.h"
#include "apply/server_process.h"
#include "tests/apply/installed_server_case.h"
#include "tests/support/case_name.h"
#include "wizard/base/heap_text.h"

namespace {

class CliServer : public InstalledServerCase {
  protected:
    void SetUp() override { logIn(); }

    Lines received() const { return server.commandsAfter(password); }
};

TEST_F(CliServer, the_login_sends_user_and_password) {
    EXPECT_EQ(server.commands(), (Lines{"-A Adm1n secret", "user admin", "Adm1n secret"}));
}

TEST_F(CliServer, creating_a_domain) {
    EXPECT_EQ(cli_create_domain("example.com", "/var/domains/", "P0st master"), 0);
    const std::string creation =
        "create domain name example.com domainlocation /var/domains/ postmasterpasswd P0st master";
    EXPECT_EQ(received(), (Lines{creation, "commit", "config server",
                                 "set primarydomain example.com", "commit", "save config"}));
    EXPECT_EQ(server.saved("domain "), Lines{"domain example.com /var/domains/ P0st master"});
    EXPECT_EQ(server.saved("primarydomain"), Lines{"primarydomain example.com"});
}

TEST_F(CliServer, a_domain_that_exists_is_refused) {
    ASSERT_EQ(cli_create_domain("example.com", "/var/domains/", "secret"), 0);
    EXPECT_EQ(cli_create_domain("example.com", "/var/domains/", "secret"), 1);
    EXPECT_EQ(
        received().back(),
        "create domain name example.com domainlocation /var/domains/ postmasterpasswd secret");
}

TEST_F(CliServer, configuring_webadmin_replaces_its_listener) {
    EXPECT_EQ(cli_config_webadmin("192.168.7.2", 9001), 0);
    EXPECT_EQ(received(), (Lines{"config server", "config webadmin", "list listeners",
                                 "remove listener address 127.0.0.1:9000", "commit",
                                 "config webadmin", "add listener address 192.168.7.2:9001",
                                 "set enable yes", "commit", "commit", "save config", "back"}));
    EXPECT_EQ(server.saved("listener webadmin"), Lines{"listener webadmin 192.168.7.2:9001"});
    EXPECT_EQ(server.saved("enable webadmin"), Lines{"enable webadmin yes"});
}

TEST_F(CliServer, a_listener_address_in_use_is_refused_and_webadmin_repaired_at_the_next_attempt) {
    EXPECT_EQ(cli_config_webadmin("127.0.0.1", 25), 1);
    EXPECT_EQ(cli_config_webadmin("127.0.0.1", 9001), 0);
    const Lines all = received();
    const Lines second(all.begin() + 7, all.end());
    EXPECT_EQ(all[6], "add listener address 127.0.0.1:25");
    EXPECT_EQ(Lines(second.begin(), second.begin() + 4),
              (Lines{"back", "back", "config server", "config webadmin"}));
    EXPECT_EQ(server.saved("listener webadmin"), Lines{"listener webadmin 127.0.0.1:9001"});
}

TEST_F(CliServer, all_listeners_of_a_service_are_replaced) {
    ASSERT_EQ(cli_command("config server"), 0);
    ASSERT_EQ(cli_command("config webadmin"), 0);
    ASSERT_EQ(cli_command("add listener address 127.0.0.2:9000"), 0);
    ASSERT_EQ(cli_command("add listener address 127.0.0.3:9000"), 0);
    ASSERT_EQ(cli_command("commit"), 0);
    ASSERT_EQ(cli_command("commit"), 0);
    EXPECT_EQ(cli_config_webadmin("0.0.0.0", 9000), 0);
    EXPECT_EQ(server.saved("listener webadmin"), Lines{"listener webadmin 0.0.0.0:9000"});
}

struct ListenerCase {
    const char* name;
    const char* service;
    Lines certificate;
};

class CliServerListener : public CliServer, public testing::WithParamInterface<ListenerCase> {};

TEST_P(CliServerListener, is_replaced_and_enabled) {
    const std::string service = GetParam().service;
    EXPECT_EQ(cli_config_listener("10.20.0.5", 2525, service.c_str()), 0);
    Lines commands = received();
    ASSERT_GT(commands.size(), 4u);
    EXPECT_EQ(commands[3].substr(0, 34), "remove listener address 127.0.0.1:");
    commands.erase(commands.begin() + 3);
    Lines expected = {"config server", "config " + service, "list listeners",
                      "commit",        "config " + service, "add listener address 10.20.0.5:2525",
                      "set enable yes"};
    expected.insert(expected.end(), GetParam().certificate.begin(), GetParam().certificate.end());
    for (const char* last : {"commit", "commit", "save config", "back"})
        expected.emplace_back(last);
    EXPECT_EQ(commands, expected);
    EXPECT_EQ(server.saved("listener " + service),
              Lines{"listener " + service + " 10.20.0.5:2525"});
    EXPECT_EQ(server.saved("enable " + service), Lines{"enable " + service + " yes"});
    EXPECT_EQ(server.saved("certfile " + service).size(), GetParam().certificate.empty() ? 0u : 1u);
}

const Lines certificate = {"config sslcontrol", "set certfile /var/opt/teluma/teluma_cert.pem",
                           "done"};

const ListenerCase listener_cases[] = {{"smtp", "smtp-incoming", certificate},
                                       {"pop3", "pop3", certificate},
                                       {"imap", "imap", certificate},
                                       {"webmail", "webmail", {}}};

INSTANTIATE_TEST_SUITE_P(Services, CliServerListener, testing::ValuesIn(listener_cases),
                         CaseName());

TEST_F(CliServer, setting_the_services) {
    EXPECT_EQ(cli_set_services("pop3", nullptr, "webmail"), 0);
    EXPECT_EQ(
        received(),
        (Lines{"config server", "show attr services",
               "set services ( smtpIncoming smtpOutgoing processing webadmin cli pop3 webmail )",
               "commit", "config server", "save config", "commit"}));
    EXPECT_EQ(server.saved("services"),
              Lines{"services smtpIncoming smtpOutgoing processing webadmin cli pop3 webmail"});
}

TEST_F(CliServer, all_three_aliases) {
    ASSERT_EQ(cli_create_domain("example.com", "/var/domains/", "secret"), 0);
    ASSERT_EQ(cli_command("back"), 0);
    EXPECT_EQ(cli_update_domain_aliases(1, 1, 1, "example.com"), 0);
    EXPECT_EQ(server.commandsAfter("back"),
              (Lines{"update domain name example.com", "update account name postmaster",
                     "add alias root", "commit", "add alias localhost.localdomain", "commit",
                     "update domain name example.com", "add alias localhost", "commit"}));
    ASSERT_EQ(cli_command("save config"), 0);
    EXPECT_EQ(server.saved("domainalias"), (Lines{"domainalias example.com localhost.localdomain",
                                                  "domainalias example.com localhost"}));
    EXPECT_EQ(server.saved("accountalias"), Lines{"accountalias example.com postmaster root"});
}

TEST_F(CliServer, the_path_of_the_filters_script) {
    const HeapText path(cli_get_filters_file());
    EXPECT_STREQ(path.get(), InstalledServer::filters);
    EXPECT_EQ(received(), (Lines{"config server", "show attr smtpfiltersfile", "back"}));
}

struct Fault {
    const char* name;
    const char* action;
    int result;
};

class CliServerFault : public CliServer, public testing::WithParamInterface<Fault> {};

TEST_P(CliServerFault, at_a_command_gives_this_result) {
    server.faults("=\"config server\" * " + std::string(GetParam().action) + "\n");
    EXPECT_EQ(cli_command("config server"), GetParam().result);
}

const Fault faults[] = {
    {"refused", "refuse", 1},
    {"connection_closed", "close", 1},
    {"server_crashed", "crash", 1},
    {"answered_late", "late 0.2", 0},
    {"answered_byte_by_byte", "dribble", 0},
    {"a_line_of_255_bytes_before_the_answer", "overlong 255", 0},
    {"a_line_of_256_bytes_before_the_answer", "overlong 256", 1},
    {"garbage_without_a_line_end", "garbage", 1},
    {"garbage_and_a_prompt", "garbage-prompt", 1},
};

INSTANTIATE_TEST_SUITE_P(Faults, CliServerFault, testing::ValuesIn(faults), CaseName());

TEST_F(CliServer, a_list_of_listeners_that_is_cut_off_fails_and_nothing_more_is_sent) {
    server.faults("\"list listeners\" 1 close\n");
    EXPECT_EQ(cli_config_webadmin("127.0.0.1", 9001), 1);
    EXPECT_EQ(received().back(), "list listeners");
}

class CliServerLogin : public InstalledServerCase {
  protected:
    // Logs in at a server that has this fault.
    int logInWith(const std::string& fault) {
        server.faults(fault + "\n");
        EXPECT_EQ(server_restart_with_password(password), 0);
        return cli_login();
    }
};

TEST_F(CliServerLogin, copes_with_a_greeting_that_comes_late_or_byte_by_byte) {
    EXPECT_EQ(logInWith("connect 1 late 0.2"), 0);
    EXPECT_EQ(logInWith("connect 1 dribble"), 0);
}

TEST_F(CliServerLogin, knows_a_server_of_roots_from_one_of_the_servers_own_user) {
    EXPECT_EQ(logInWith(""), 0);
    EXPECT_TRUE(cli_server_is_root());
    EXPECT_EQ(server_stop(), 0);
    server.waitForEnd();
    if (chown("/run/scratch", 12, 12) != 0)
        GTEST_SKIP() << "a user namespace without other ids";
    server.runAsItsUser();
    EXPECT_EQ(logInWith(""), 0);
    EXPECT_FALSE(cli_server_is_root());
}

TEST_F(CliServerLogin, fails_when_the_connection_is_closed_at_once) {
    EXPECT_EQ(logInWith("connect 1 close"), 1);
}

TEST_F(CliServerLogin, fails_when_the_connection_is_refused_with_a_message) {
    EXPECT_EQ(logInWith("connect 1 refuse"), 1);
}

TEST_F(CliServerLogin, fails_when_the_password_is_refused) {
    EXPECT_EQ(logInWith("password 1 refuse"), 1);
    EXPECT_EQ(server.commandsAfter("user admin"), Lines{password});
}

TEST_F(CliServerLogin, fails_when_the_server_crashes_at_the_password) {
    EXPECT_EQ(logInWith("password 1 crash"), 1);
}

TEST_F(CliServerLogin, fails_when_the_server_could_not_be_started) {
    EXPECT_EQ(logInWith("start 1 refuse"), 1);
    EXPECT_EQ(server.commands(), Lines{"-A Adm1n secret"});
}

}  // namespace
