#include "standin/command_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>

#include "tests/standin/logged_in_session.h"

namespace standin {
namespace {

using Lines = std::vector<std::string>;

/// How to get from the outermost context into each one.
const std::map<std::string, Lines>& ways() {
    static const std::map<std::string, Lines> ways = {
        {"root", {}},
        {"server", {"config server"}},
        {"service", {"config server", "config pop3"}},
        {"sslcontrol", {"config server", "config pop3", "config sslcontrol"}},
        {"create", {"create domain name a.b domainlocation /d/ postmasterpasswd p"}},
        {"domain", {"update domain name example.com"}},
        {"account", {"update domain name example.com", "update account name postmaster"}},
    };
    return ways;
}

struct Case {
    const char* command;
    Lines contexts;
};

void PrintTo(const Case& tested, std::ostream* out) {
    *out << tested.command;
}

const Lines everywhere = {"root", "server", "service", "sslcontrol", "create", "domain", "account"};

class CommandTable : public testing::TestWithParam<Case> {};

TEST_P(CommandTable, TakesACommandInItsContextsAndRefusesItInTheOthers) {
    const auto& [command, contexts] = GetParam();
    for (const auto& [context, way] : ways()) {
        LoggedInSession server;
        ASSERT_EQ(server.refused(way), "");
        const std::string reply = server.session.answer(command);
        if (std::find(contexts.begin(), contexts.end(), context) != contexts.end()) {
            EXPECT_NE(reply.find("+OK:"), std::string::npos) << context << ": " << reply;
        } else {
            EXPECT_EQ(reply.find("-ERR: wrong context\r\n"), 0U) << context << ": " << reply;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, CommandTable,
    testing::Values(
        Case{"back", everywhere}, Case{"save config", {"root", "server"}},
        Case{"create domain name c.d domainlocation /d/ postmasterpasswd p", {"root"}},
        Case{"update domain name example.com", {"root"}},
        Case{"update account name postmaster", {"domain"}},
        Case{"add alias root", {"domain", "account"}},
        Case{"commit", {"server", "service", "create", "domain", "account"}},
        Case{"set primarydomain example.com", {"server"}}, Case{"show attr services", {"server"}},
        Case{"show attr smtpfiltersfile", {"server"}}, Case{"set services ( cli )", {"server"}},
        Case{"config webadmin", {"server"}}, Case{"config smtp-incoming", {"server"}},
        Case{"config imap", {"server"}}, Case{"config webmail", {"server"}},
        Case{"config cli", {"server"}}, Case{"list listeners", {"service"}},
        Case{"add listener address 192.0.2.1:25", {"service"}}, Case{"set enable no", {"service"}},
        Case{"set certfile /c", {"sslcontrol"}}, Case{"done", {"sslcontrol"}}));

TEST(CommandTableOfServer, CanBeEnteredFromTheOutermostContextOnly) {
    LoggedInSession server;
    EXPECT_EQ(server.refused({"config server"}), "");
    EXPECT_EQ(server.say({"config server"}), "-ERR: no such service\r\nteluma/server> ");
    EXPECT_EQ(server.say({"config pop3", "config server"}),
              "-ERR: wrong context\r\nteluma/server/service> ");
}

TEST(CommandTableOfService, HasSslControlAndCanRemoveAListener) {
    LoggedInSession server;
    EXPECT_EQ(server.refused({"config server", "config webadmin",
                              "remove listener address 127.0.0.1:9000", "config sslcontrol"}),
              "");
}

}  // namespace
}  // namespace standin
