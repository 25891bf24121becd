#include "standin/session.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "standin/listener.h"
#include "tests/standin/logged_in_session.h"

namespace standin {
namespace {

using Lines = std::vector<std::string>;

const char* const done = "+OK: done\r\n";

class SessionTest : public testing::Test {
  protected:
    LoggedInSession server;

    std::string say(const Lines& lines) { return server.say(lines); }
};

TEST_F(SessionTest, AGreetingIsALineAndAPromptForALogin) {
    EXPECT_EQ(Session(server.store).greeting(),
              "TELUMA stand-in server, command line interface\r\nlogin> ");
}

TEST_F(SessionTest, ALoginAsksForThePasswordWithoutSayingOkAndTakesTheRightOne) {
    Session session(server.store);
    EXPECT_EQ(session.answer("user admin"), "password> ");
    EXPECT_TRUE(session.expectsPassword());
    EXPECT_EQ(session.answer("pass word"), "+OK: welcome\r\nteluma> ");
    EXPECT_FALSE(session.expectsPassword());
}

TEST_F(SessionTest, AWrongPasswordOrUserIsRefusedAndMayBeTriedAgain) {
    Session session(server.store);
    const std::string refusal = "-ERR: wrong user name or password\r\nlogin> ";
    for (const char* password : {"", "pass", "pass word ", "PASS WORD"}) {
        session.answer("user admin");
        EXPECT_EQ(session.answer(password), refusal) << password;
    }
    session.answer("user root");
    EXPECT_EQ(session.answer("pass word"), refusal);
    session.answer("user admin");
    EXPECT_EQ(session.answer("pass word"), "+OK: welcome\r\nteluma> ");
}

TEST_F(SessionTest, NoPasswordIsRightWhileNoneHasBeenSet) {
    const TempDir empty;
    Store fresh(run_paths(empty.path()));
    Session session(fresh);
    session.answer("user admin");
    EXPECT_EQ(session.answer(""), "-ERR: wrong user name or password\r\nlogin> ");
}

TEST_F(SessionTest, APasswordChangedWhileTheServerRunsCountsAtTheNextLogin) {
    server.store.setPassword("other");
    say({"user admin"});
    EXPECT_EQ(say({"other"}), "+OK: welcome\r\nteluma> ");
}

TEST_F(SessionTest, NothingButALoginIsTakenBeforeOne) {
    Session session(server.store);
    for (const char* line : {"config server", "back", "save config", "nonsense", ""}) {
        EXPECT_EQ(session.answer(line), "-ERR: not logged in\r\nlogin> ") << line;
    }
    EXPECT_EQ(session.answer("user"), "-ERR: malformed arguments\r\nlogin> ");
}

TEST_F(SessionTest, AnUnknownCommandIsRefusedEverywhere) {
    const std::string refusal = "-ERR: unknown command\r\n";
    EXPECT_EQ(say({"nonsense"}), refusal + "teluma> ");
    EXPECT_EQ(say({""}), refusal + "teluma> ");
    EXPECT_EQ(say({"config server", "configure pop3"}), refusal + "teluma/server> ");
    EXPECT_EQ(say({"config pop3", "list"}), refusal + "teluma/server/service> ");
}

TEST_F(SessionTest, ALineWithControlCharactersIsRefused) {
    EXPECT_EQ(say({"config\nserver"}), "-ERR: malformed command\r\nteluma> ");
}

TEST_F(SessionTest, MalformedArgumentsAreRefused) {
    const std::string refusal = "-ERR: malformed arguments\r\n";
    for (const char* line :
         {"create domain name", "create domain name a b c", "update domain name",
          "create domain name a domainlocation /my dir postmasterpasswd p",
          "create domain name a domainlocation /dir postmasterpasswd", "save config now"}) {
        EXPECT_EQ(say({line}), refusal + "teluma> ") << line;
    }
    say({"config server"});
    for (const char* line : {"set services smtpIncoming", "set services ( )", "set services",
                             "set services ( nonsense )", "set services ( cli"}) {
        EXPECT_EQ(say({line}), refusal + "teluma/server> ") << line;
    }
    say({"config pop3"});
    for (const char* line :
         {"add listener address", "add listener address pop3", "add listener address 1.2.3.4:0",
          "add listener address 1.2.3.4:65536", "set enable perhaps", "set enable"}) {
        EXPECT_EQ(say({line}), refusal + "teluma/server/service> ") << line;
    }
}

TEST_F(SessionTest, ADomainThatExistsAsADomainOrAsAnAliasIsNotCreated) {
    const std::string refusal = "-ERR: this domain exists already\r\nteluma> ";
    server.store.live.domains["example.com"].aliases = {"example.net"};
    for (const char* name : {"example.com", "example.net"}) {
        const std::string create = std::string("create domain name ") + name;
        EXPECT_EQ(say({create + " domainlocation /d/ postmasterpasswd p"}), refusal);
    }
}

TEST_F(SessionTest, AnAliasThatAnyDomainHasIsRefused) {
    server.store.live.domains["example.org"].aliases = {"localhost"};
    say({"update domain name example.com"});
    for (const char* alias : {"localhost", "example.com", "example.org"}) {
        EXPECT_EQ(say({std::string("add alias ") + alias}),
                  "-ERR: this domain or domain alias exists already\r\nteluma/domain> ");
    }
}

TEST_F(SessionTest, AnAccountAliasIsRefusedOnceInADomainAndTakenInAnother) {
    server.store.live.domains["example.org"] = new_domain("/d/", "p");
    const Lines add_root = {"update account name postmaster", "add alias root", "commit", "commit"};
    say({"update domain name example.com"});
    EXPECT_EQ(server.refused(add_root), "");
    say({"update domain name example.org"});
    EXPECT_EQ(server.refused(add_root), "");
    say({"update domain name example.com", "update account name postmaster"});
    for (const char* alias : {"root", "postmaster"}) {
        EXPECT_EQ(say({std::string("add alias ") + alias}),
                  "-ERR: this account or account alias exists already\r\nteluma/domain/account> ");
    }
}

TEST_F(SessionTest, WhatDoesNotExistCanNotBeOpened) {
    EXPECT_EQ(say({"update domain name example.org"}), "-ERR: no such domain\r\nteluma> ");
    EXPECT_EQ(say({"update domain name example.com", "update account name root"}),
              "-ERR: no such account\r\nteluma/domain> ");
    EXPECT_EQ(say({"back", "config server", "config smtp"}),
              "-ERR: no such service\r\nteluma/server> ");
    EXPECT_EQ(say({"set primarydomain example.org"}), "-ERR: no such domain\r\nteluma/server> ");
}

TEST_F(SessionTest, ThePostmasterPasswordGoesToTheEndOfTheLine) {
    say({"create domain name a.b domainlocation /d/ postmasterpasswd my \"$x  y\"", "commit"});
    EXPECT_EQ(server.store.live.domains["a.b"].postmaster_password, "my \"$x  y\"");
    EXPECT_EQ(server.store.live.domains["a.b"].location, "/d/");
}

TEST_F(SessionTest, ServicesAreShownBetweenBrackets) {
    say({"config server"});
    EXPECT_EQ(say({"show attr services"}),
              "services = ( smtpIncoming smtpOutgoing processing webadmin )\r\n" +
                  std::string(done) + "teluma/server> ");
    EXPECT_EQ(server.refused({"set services ( log  pop3 cli )"}), "");
    EXPECT_EQ(say({"show attr services"}),
              "services = ( log pop3 cli )\r\n" + std::string(done) + "teluma/server> ");
}

TEST_F(SessionTest, TheFiltersScriptIsShownBetweenQuotes) {
    say({"config server"});
    EXPECT_EQ(say({"show attr smtpfiltersfile"}), "smtpFiltersFile = \"" + server.directory.path() +
                                                      "/smtp.filters\"\r\n" + done +
                                                      "teluma/server> ");
}

TEST_F(SessionTest, ListenersAreATableWithTheAddressFirst) {
    say({"config server", "config webadmin"});
    EXPECT_EQ(say({"list listeners"}),
              "Address               | Enabled\r\n"
              "----------------------+--------\r\n"
              "127.0.0.1:9000        | no\r\n"
              "127.0.0.2:9000        | no\r\n"
              "+OK: done\r\nteluma/server/service> ");
    EXPECT_EQ(say({"back", "config pop3", "list listeners"}),
              "Address               | Enabled\r\n"
              "----------------------+--------\r\n"
              "+OK: done\r\nteluma/server/service> ");
}

TEST_F(SessionTest, AListenerIsRemovedOnceAndCanThenBeAddedAgain) {
    say({"config server", "config webadmin"});
    EXPECT_EQ(server.refused({"remove listener address 127.0.0.1:9000"}), "");
    EXPECT_EQ(say({"remove listener address 127.0.0.1:9000"}),
              "-ERR: no such listener\r\nteluma/server/service> ");
    EXPECT_EQ(server.refused({"add listener address 127.0.0.1:9000"}), "");
}

TEST_F(SessionTest, AListenerAddressOfThisOrAnotherServiceIsInUse) {
    const std::string refusal = "-ERR: this address is in use\r\nteluma/server/service> ";
    say({"config server", "config webadmin"});
    for (const char* address : {"127.0.0.1:9000", "0.0.0.0:9000", "127.0.0.1:25", "0.0.0.0:25"}) {
        EXPECT_EQ(say({std::string("add listener address ") + address}), refusal) << address;
    }
}

TEST_F(SessionTest, AListenerAddressThatAnotherProgramHasIsInUseUntilThatProgramIsGone) {
    std::string address = "127.0.0.1:0";
    std::string problem;
    Descriptor other_program = open_listener(address, problem);
    ASSERT_TRUE(other_program.isOpen()) << problem;
    say({"config server", "config webadmin"});
    EXPECT_EQ(say({"add listener address " + address}),
              "-ERR: this address is in use\r\nteluma/server/service> ");
    other_program.close();
    EXPECT_EQ(server.refused({"add listener address " + address}), "");
}

TEST_F(SessionTest, EnableAndCertificateAreKept) {
    EXPECT_EQ(server.refused({"config server", "config pop3", "set enable yes", "config sslcontrol",
                              "set certfile /etc/cert.pem", "done", "commit", "commit"}),
              "");
    EXPECT_TRUE(server.store.live.listener_services["pop3"].enabled);
    EXPECT_EQ(server.store.live.listener_services["pop3"].certfile, "/etc/cert.pem");
    EXPECT_EQ(server.refused({"config server", "config pop3", "set enable no", "commit", "commit"}),
              "");
    EXPECT_FALSE(server.store.live.listener_services["pop3"].enabled);
}

TEST_F(SessionTest, BackDropsWhatACommitWouldHaveKept) {
    EXPECT_EQ(server.refused({"config server", "set services ( cli )", "config pop3",
                              "set enable yes", "commit", "back"}),
              "");
    EXPECT_FALSE(server.store.live.listener_services["pop3"].enabled);
    EXPECT_EQ(server.store.live.services.size(), 4U);
    EXPECT_EQ(
        server.refused({"create domain name a.b domainlocation /d/ postmasterpasswd p", "back"}),
        "");
    EXPECT_EQ(server.store.live.domains.count("a.b"), 0U);
}

TEST_F(SessionTest, BackAtTheOutermostContextSucceedsAndStays) {
    EXPECT_EQ(say({"back"}), std::string(done) + "teluma> ");
    EXPECT_EQ(say({"back"}), std::string(done) + "teluma> ");
}

TEST_F(SessionTest, ARefusedCommandLeavesTheContextAndItsDraftAsTheyWere) {
    say({"config server", "config pop3", "set enable yes", "add listener address nonsense",
         "config server"});
    EXPECT_EQ(server.refused({"commit", "commit"}), "");
    EXPECT_TRUE(server.store.live.listener_services["pop3"].enabled);
}

TEST_F(SessionTest, SavingThatFailsIsRefused) {
    mkdir((server.directory / "teluma.state.new").c_str(), 0700);
    EXPECT_EQ(say({"save config"}), "-ERR: the state can't be saved\r\nteluma> ");
}

TEST_F(SessionTest, ARefusedPasswordEndsTheLogin) {
    say({"user admin"});
    EXPECT_EQ(server.session.refuse("not now"), "-ERR: not now\r\nlogin> ");
    EXPECT_EQ(say({"config server"}), "-ERR: not logged in\r\nlogin> ");
}

TEST_F(SessionTest, WhatOneSessionCommitsTheOtherSees) {
    Session other(server.store);
    other.answer("user admin");
    other.answer("pass word");
    EXPECT_EQ(
        server.refused({"create domain name a.b domainlocation /d/ postmasterpasswd p", "commit"}),
        "");
    EXPECT_EQ(other.answer("update domain name a.b"), std::string(done) + "teluma/domain> ");
}

TEST_F(SessionTest, NoReplyHasALineOf256BytesOrAPromptBeforeItsEnd) {
    const std::string longest(900, 'd');
    const Lines lines = {
        "create domain name " + longest + " domainlocation " + longest + " postmasterpasswd >",
        "commit", "update domain name " + longest, "update domain name > > ", "> "};
    for (const std::string& line : lines) {
        const std::string reply = server.session.answer(line);
        EXPECT_LT(reply.size(), 256U);
        EXPECT_EQ(reply.find('>'), reply.size() - 2) << reply;
    }
}

}  // namespace
}  // namespace standin
