#include "standin/session.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <map>

#include "standin/address.h"
#include "standin/config_file.h"
#include "tests/support/files.h"

namespace {

using Lines = std::vector<std::string>;

const char* const configuration = R"(
services = ( smtpIncoming smtpOutgoing processing webadmin )
smtpIncoming = {
    enable = yes
    listeners = (
        address = 127.0.0.1:25
    )
}
webadmin = {
    listeners = (
        address = 127.0.0.1:9000
        address = 127.0.0.2:9000
    )
}
)";

/// A session in which the administrator has logged in, over a store with the listeners and services
/// of a fresh server and two domains.
class LoggedInSession {
  public:
    LoggedInSession() {
        store.load(parse_config(configuration).state);
        store.live.domains["example.com"] = new_domain("/var/domains/", "secret");
        store.live.domains["example.org"] = new_domain("/d/", "p");
        store.live.domains["example.org"].aliases = {"localhost"};
        store.setPassword("pass word");
        say({"user admin", "pass word"});
    }

    /// Gives the session the lines and returns the reply to the last one.
    std::string say(const Lines& lines) {
        std::string reply;
        for (const std::string& line : lines) reply = session.answer(line);
        return reply;
    }

    TempDir directory;
    Store store{RunPaths{directory.path()}};
    Session session{store};
};

class SessionTest : public testing::Test, protected LoggedInSession {};

TEST_F(SessionTest, GreetsAndAsksForThePassword) {
    Session fresh(store);
    EXPECT_EQ(fresh.greeting(), "TELUMA stand-in server, command line interface\r\nlogin> ");
    for (const char* line : {"config server", "back", "save config", "nonsense", ""})
        EXPECT_EQ(fresh.answer(line), "-ERR: not logged in\r\nlogin> ") << line;
    EXPECT_EQ(fresh.answer("user"), "-ERR: malformed arguments\r\nlogin> ");
    for (const char* password : {"", "pass", "pass word ", "PASS WORD"}) {
        EXPECT_EQ(fresh.answer("user admin"), "password> ");
        EXPECT_TRUE(fresh.expectsPassword());
        EXPECT_EQ(fresh.answer(password), "-ERR: wrong user name or password\r\nlogin> ");
        EXPECT_FALSE(fresh.expectsPassword());
    }
    fresh.answer("user root");
    EXPECT_EQ(fresh.answer("pass word"), "-ERR: wrong user name or password\r\nlogin> ");
    fresh.answer("user admin");
    EXPECT_EQ(fresh.refuse("not now"), "-ERR: not now\r\nlogin> ");
    store.setPassword("other");
    fresh.answer("user admin");
    EXPECT_EQ(fresh.answer("other"), "+OK: welcome\r\nteluma> ");
}

struct Way {
    Lines commands;  // that lead there from the outermost context
    std::string prompt;
};

const std::map<std::string, Way> contexts = {
    {"root", {{}, "teluma> "}},
    {"server", {{"config server"}, "teluma/server> "}},
    {"service", {{"config server", "config pop3"}, "teluma/server/service> "}},
    {"sslcontrol",
     {{"config server", "config pop3", "config sslcontrol"}, "teluma/server/service/sslcontrol> "}},
    {"create",
     {{"create domain name a.b domainlocation /d/ postmasterpasswd p"}, "teluma/domain> "}},
    {"domain", {{"update domain name example.com"}, "teluma/domain> "}},
    {"account",
     {{"update domain name example.com", "update account name postmaster"},
      "teluma/domain/account> "}},
};

TEST(CommandTable, TakesACommandInItsContextsAndRefusesItInTheOthers) {
    const std::pair<const char*, Lines> cases[] = {
        {"back", {"root", "server", "service", "sslcontrol", "create", "domain", "account"}},
        {"save config", {"root", "server"}},
        {"create domain name c.d domainlocation /d/ postmasterpasswd p", {"root"}},
        {"update domain name example.com", {"root"}},
        {"update account name postmaster", {"domain"}},
        {"add alias root", {"domain", "account"}},
        {"commit", {"server", "service", "create", "domain", "account"}},
        {"set primarydomain example.com", {"server"}},
        {"show attr services", {"server"}},
        {"show attr smtpfiltersfile", {"server"}},
        {"set services ( cli )", {"server"}},
        {"config cli", {"server"}},
        {"list listeners", {"service"}},
        {"add listener address 192.0.2.1:25", {"service"}},
        {"set enable no", {"service"}},
        {"set certfile /c", {"sslcontrol"}},
        {"done", {"sslcontrol"}},
    };
    for (const auto& [command, valid_in] : cases) {
        for (const auto& [context, way] : contexts) {
            LoggedInSession server;
            server.say(way.commands);
            const bool valid =
                std::find(valid_in.begin(), valid_in.end(), context) != valid_in.end();
            EXPECT_NE(server.say({command}).find(valid ? "+OK:" : "-ERR: wrong context\r\n"),
                      std::string::npos)
                << command << " in " << context;
        }
    }
}

TEST(CommandTable, SaysWhatIsWrongWithACommandAndStaysInItsContext) {
    const struct {
        const char* context;
        const char* command;
        const char* problem;
    } cases[] = {
        {"root", "nonsense", "unknown command"},
        {"root", "", "unknown command"},
        {"root", "config\nserver", "malformed command"},
        {"root", "create domain name", "malformed arguments"},
        {"root", "create domain name a domainlocation /my dir postmasterpasswd p",
         "malformed arguments"},
        {"root", "create domain name example.com domainlocation /d/ postmasterpasswd p",
         "this domain exists already"},
        {"root", "create domain name localhost domainlocation /d/ postmasterpasswd p",
         "this domain exists already"},
        {"root", "update domain name none", "no such domain"},
        {"domain", "add alias localhost", "this domain or domain alias exists already"},
        {"domain", "add alias example.org", "this domain or domain alias exists already"},
        {"domain", "update account name root", "no such account"},
        {"account", "add alias postmaster", "this account or account alias exists already"},
        {"server", "config smtp", "no such service"},
        {"server", "set primarydomain none", "no such domain"},
        {"server", "set services smtpIncoming", "malformed arguments"},
        {"server", "set services ( cli", "malformed arguments"},
        {"server", "set services ( nonsense )", "malformed arguments"},
        {"service", "add listener address 1.2.3.4:0", "malformed arguments"},
        {"service", "add listener address 0.0.0.0:9000", "this address is in use"},
        {"service", "add listener address 127.0.0.1:25", "this address is in use"},
        {"service", "remove listener address 127.0.0.1:9000", "no such listener"},
        {"service", "set enable perhaps", "malformed arguments"},
    };
    for (const auto& [context, command, problem] : cases) {
        LoggedInSession server;
        const Way& way = contexts.at(context);
        server.say(way.commands);
        EXPECT_EQ(server.say({command}), "-ERR: " + std::string(problem) + "\r\n" + way.prompt)
            << command;
    }
}

TEST_F(SessionTest, ListsServicesAndListenersAsTheyStandInThisContext) {
    EXPECT_EQ(
        say({"back", "config server", "set services ( log  pop3 cli )", "show attr services"}),
        "services = ( log pop3 cli )\r\n+OK: done\r\nteluma/server> ");
    const std::string table =
        "Address               | Enabled\r\n"
        "----------------------+--------\r\n";
    const std::string done = "+OK: done\r\nteluma/server/service> ";
    EXPECT_EQ(say({"config webadmin", "list listeners"}),
              table + "127.0.0.1:9000        | no\r\n127.0.0.2:9000        | no\r\n" + done);
    EXPECT_EQ(say({"remove listener address 127.0.0.2:9000",
                   "remove listener address 127.0.0.1:9000", "list listeners"}),
              table + done);
    EXPECT_EQ(say({"add listener address 127.0.0.1:9000"}), done);
}

TEST_F(SessionTest, KeepsWhatWasCommittedAndDropsTheRest) {
    say({"create domain name a.b domainlocation /d/ postmasterpasswd my \"$x  y\"", "commit"});
    say({"config server", "set primarydomain a.b", "config pop3"});
    say({"add listener address nonsense", "add listener address 192.0.2.1:110"});
    say({"set enable yes", "config sslcontrol", "set certfile /etc/cert.pem", "done"});
    say({"commit", "commit", "update domain name a.b", "add alias c.d"});
    say({"update account name postmaster", "add alias root", "commit", "commit"});
    say({"config server", "set services ( cli )", "config imap", "set enable yes", "commit"});
    say({"back", "create domain name e.f domainlocation /d/ postmasterpasswd p", "back"});
    EXPECT_EQ(say({"save config"}), "+OK: done\r\nteluma> ");
    EXPECT_EQ(read_file(directory / "teluma.state"),
              "services smtpIncoming smtpOutgoing processing webadmin\n"
              "primarydomain a.b\n"
              "listener pop3 192.0.2.1:110\n"
              "enable pop3 yes\n"
              "certfile pop3 /etc/cert.pem\n"
              "listener smtp-incoming 127.0.0.1:25\n"
              "enable smtp-incoming yes\n"
              "listener webadmin 127.0.0.1:9000\n"
              "listener webadmin 127.0.0.2:9000\n"
              "domain a.b /d/ my \"$x  y\"\n"
              "domainalias a.b c.d\n"
              "account a.b postmaster\n"
              "accountalias a.b postmaster root\n"
              "domain example.com /var/domains/ secret\n"
              "account example.com postmaster\n"
              "domain example.org /d/ p\n"
              "domainalias example.org localhost\n"
              "account example.org postmaster\n");
    Session other(store);
    other.answer("user admin");
    other.answer("pass word");
    EXPECT_EQ(other.answer("update domain name a.b"), "+OK: done\r\nteluma/domain> ");
}

TEST_F(SessionTest, RefusesAnAddressThatAnotherProgramHasUntilThatProgramIsGone) {
    std::string address = "127.0.0.1:0";
    std::string problem;
    Descriptor other_program = open_listener(address, problem);
    ASSERT_TRUE(other_program.isOpen()) << problem;
    EXPECT_EQ(say({"config server", "config webadmin", "add listener address " + address}),
              "-ERR: this address is in use\r\nteluma/server/service> ");
    other_program.close();
    EXPECT_EQ(say({"add listener address " + address}), "+OK: done\r\nteluma/server/service> ");
}

TEST_F(SessionTest, ShowsTheFiltersScriptBetweenQuotesAndSaysThatItCanNotSave) {
    EXPECT_EQ(say({"config server", "show attr smtpfiltersfile"}),
              "smtpFiltersFile = \"" + directory.path() +
                  "/smtp.filters\"\r\n+OK: done\r\nteluma/server> ");
    mkdir((directory / "teluma.state.new").c_str(), 0700);
    EXPECT_EQ(say({"save config"}), "-ERR: the state can't be saved\r\nteluma/server> ");
}

TEST_F(SessionTest, NoReplyHasALineOf256BytesOrAPromptBeforeItsEnd) {
    const std::string longest(900, 'd');
    for (const std::string& line :
         {"create domain name " + longest + " domainlocation " + longest + " postmasterpasswd >",
          std::string("commit"), "update domain name " + longest,
          std::string("update domain name > > "), std::string("> ")}) {
        const std::string reply = session.answer(line);
        EXPECT_LT(reply.size(), 256U);
        EXPECT_EQ(reply.find('>'), reply.size() - 2) << reply;
    }
}

}  // namespace
