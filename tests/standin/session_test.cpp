#include "standin/session.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <ostream>

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

/// A store in a directory of its own, with the listeners and services of a fresh server and the
/// domains "example.com" and "example.org", and a session in which the administrator has logged in.
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

/// How to get from the outermost context into each one.
const std::map<std::string, Lines> ways = {
    {"root", {}},
    {"server", {"config server"}},
    {"service", {"config server", "config pop3"}},
    {"sslcontrol", {"config server", "config pop3", "config sslcontrol"}},
    {"create", {"create domain name a.b domainlocation /d/ postmasterpasswd p"}},
    {"domain", {"update domain name example.com"}},
    {"account", {"update domain name example.com", "update account name postmaster"}},
};

const Lines everywhere = {"root", "server", "service", "sslcontrol", "create", "domain", "account"};

TEST(CommandTable, TakesACommandInItsContextsAndRefusesItInTheOthers) {
    const std::pair<const char*, Lines> cases[] = {
        {"back", everywhere},
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
        {"config webadmin", {"server"}},
        {"config smtp-incoming", {"server"}},
        {"config imap", {"server"}},
        {"config webmail", {"server"}},
        {"config cli", {"server"}},
        {"list listeners", {"service"}},
        {"add listener address 192.0.2.1:25", {"service"}},
        {"set enable no", {"service"}},
        {"set certfile /c", {"sslcontrol"}},
        {"done", {"sslcontrol"}},
    };
    for (const auto& [command, contexts] : cases) {
        for (const auto& [context, way] : ways) {
            LoggedInSession server;
            server.say(way);
            const bool valid =
                std::find(contexts.begin(), contexts.end(), context) != contexts.end();
            EXPECT_NE(server.say({command}).find(valid ? "+OK:" : "-ERR: wrong context\r\n"),
                      std::string::npos)
                << command << " in " << context;
        }
    }
}

struct Dialogue {
    Lines lines;
    std::string reply;  // to the last line
};

void PrintTo(const Dialogue& dialogue, std::ostream* out) {
    for (const std::string& line : dialogue.lines) *out << line << "; ";
}

class SessionDialogue : public testing::TestWithParam<Dialogue>, protected LoggedInSession {};

TEST_P(SessionDialogue, EndsWithTheReply) { EXPECT_EQ(say(GetParam().lines), GetParam().reply); }

const std::string unknown = "-ERR: unknown command\r\n";
const std::string malformed = "-ERR: malformed arguments\r\n";
const std::string alias_exists = "-ERR: this domain or domain alias exists already\r\n";
const std::string in_use = "-ERR: this address is in use\r\nteluma/server/service> ";
const std::string table =
    "Address               | Enabled\r\n"
    "----------------------+--------\r\n";

INSTANTIATE_TEST_SUITE_P(
    Root, SessionDialogue,
    testing::Values(Dialogue{{"nonsense"}, unknown + "teluma> "},
                    Dialogue{{""}, unknown + "teluma> "},
                    Dialogue{{"config\nserver"}, "-ERR: malformed command\r\nteluma> "},
                    Dialogue{{"back", "back"}, "+OK: done\r\nteluma> "},
                    Dialogue{{"create domain name"}, malformed + "teluma> "},
                    Dialogue{{"create domain name a domainlocation /my dir postmasterpasswd p"},
                             malformed + "teluma> "},
                    Dialogue{{"create domain name a domainlocation /dir postmasterpasswd"},
                             malformed + "teluma> "},
                    Dialogue{{"save config now"}, malformed + "teluma> "},
                    Dialogue{
                        {"create domain name example.com domainlocation /d/ postmasterpasswd p"},
                        "-ERR: this domain exists already\r\nteluma> "},
                    Dialogue{{"create domain name localhost domainlocation /d/ postmasterpasswd p"},
                             "-ERR: this domain exists already\r\nteluma> "},
                    Dialogue{{"update domain name none"}, "-ERR: no such domain\r\nteluma> "}));

INSTANTIATE_TEST_SUITE_P(
    DomainAndServer, SessionDialogue,
    testing::Values(
        Dialogue{{"update domain name example.com", "add alias localhost"},
                 alias_exists + "teluma/domain> "},
        Dialogue{{"update domain name example.com", "add alias example.org"},
                 alias_exists + "teluma/domain> "},
        Dialogue{{"update domain name example.com", "update account name root"},
                 "-ERR: no such account\r\nteluma/domain> "},
        Dialogue{{"update domain name example.com", "update account name postmaster",
                  "add alias postmaster"},
                 "-ERR: this account or account alias exists already\r\nteluma/domain/account> "},
        Dialogue{{"config server", "config smtp"}, "-ERR: no such service\r\nteluma/server> "},
        Dialogue{{"config server", "configure pop3"}, unknown + "teluma/server> "},
        Dialogue{{"config server", "set primarydomain none"},
                 "-ERR: no such domain\r\nteluma/server> "},
        Dialogue{{"config server", "set services smtpIncoming"}, malformed + "teluma/server> "},
        Dialogue{{"config server", "set services ( )"}, malformed + "teluma/server> "},
        Dialogue{{"config server", "set services ( cli"}, malformed + "teluma/server> "},
        Dialogue{{"config server", "set services ( nonsense )"}, malformed + "teluma/server> "},
        Dialogue{{"config server", "set services ( log  pop3 cli )", "show attr services"},
                 "services = ( log pop3 cli )\r\n+OK: done\r\nteluma/server> "}));

INSTANTIATE_TEST_SUITE_P(
    OfAService, SessionDialogue,
    testing::Values(
        Dialogue{{"config server", "config webadmin", "list listeners"},
                 table + "127.0.0.1:9000        | no\r\n127.0.0.2:9000        | no\r\n"
                         "+OK: done\r\nteluma/server/service> "},
        Dialogue{{"config server", "config pop3", "list listeners"},
                 table + "+OK: done\r\nteluma/server/service> "},
        Dialogue{{"config server", "config pop3", "list"}, unknown + "teluma/server/service> "},
        Dialogue{{"config server", "config pop3", "add listener address 1.2.3.4:0"},
                 malformed + "teluma/server/service> "},
        Dialogue{{"config server", "config pop3", "set enable perhaps"},
                 malformed + "teluma/server/service> "},
        Dialogue{{"config server", "config webadmin", "add listener address 0.0.0.0:9000"}, in_use},
        Dialogue{{"config server", "config webadmin", "add listener address 127.0.0.1:25"}, in_use},
        Dialogue{{"config server", "config webadmin", "remove listener address 127.0.0.1:9000",
                  "remove listener address 127.0.0.1:9000"},
                 "-ERR: no such listener\r\nteluma/server/service> "},
        Dialogue{{"config server", "config webadmin", "remove listener address 127.0.0.1:9000",
                  "add listener address 127.0.0.1:9000"},
                 "+OK: done\r\nteluma/server/service> "}));

TEST_F(SessionTest, KeepsWhatWasCommittedAndDropsTheRest) {
    EXPECT_EQ(say({"create domain name a.b domainlocation /d/ postmasterpasswd my \"$x  y\"",
                   "commit",
                   "config server",
                   "set primarydomain a.b",
                   "config pop3",
                   "add listener address nonsense",
                   "add listener address 192.0.2.1:110",
                   "set enable yes",
                   "config sslcontrol",
                   "set certfile /etc/cert.pem",
                   "done",
                   "commit",
                   "commit",
                   "update domain name a.b",
                   "add alias c.d",
                   "update account name postmaster",
                   "add alias root",
                   "commit",
                   "commit",
                   "config server",
                   "set services ( cli )",
                   "config imap",
                   "set enable yes",
                   "commit",
                   "back",
                   "create domain name e.f domainlocation /d/ postmasterpasswd p",
                   "back",
                   "save config"}),
              "+OK: done\r\nteluma> ");
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
    EXPECT_EQ(say({"config server", "config webadmin", "add listener address " + address}), in_use);
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
