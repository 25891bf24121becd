// The server misbehaving on purpose, as a client sees it.
#include <csignal>

#include "standin/delivery.h"
#include "tests/standin/daemon_fixture.h"
#include "tests/support/case_name.h"
#include "tests/support/cli_client.h"

namespace {

const char* const entered_server = "+OK: done\r\nteluma/server> ";
const char* const welcome = "+OK: welcome\r\nteluma> ";
const char* const refused = "-ERR: not now\r\nteluma> ";

class DaemonFaults : public DaemonTest {
  protected:
    /// Starts the server with these fault rules and logs a client in.
    CliClient loggedInAfter(const std::string& rules) {
        faults(rules);
        start();
        CliClient client(port());
        client.logIn("secret");
        return client;
    }

    /// Whether the server answers another client.
    void expectOthersServed() { EXPECT_EQ(CliClient(port()).logIn("secret"), welcome); }
};

struct SpoiltReply {
    const char* name;
    const char* action;
    std::string reply;  // to the first "config server"
    bool ends;          // the connection, after it
    bool done;          // the command, all the same
};

class DaemonFaultsAt : public DaemonFaults, public testing::WithParamInterface<SpoiltReply> {};

TEST_P(DaemonFaultsAt, ACommandGiveThatAnswerAndKeepNobodyElseWaiting) {
    const SpoiltReply& spoilt = GetParam();
    CliClient client = loggedInAfter(std::string("=\"config server\" 1 ") + spoilt.action);
    client.sendLine("config server");
    expectOthersServed();
    if (spoilt.ends) {
        EXPECT_EQ(client.readToEnd(), spoilt.reply);
        return;
    }
    EXPECT_EQ(client.readBytes(spoilt.reply.size()), spoilt.reply);
    EXPECT_TRUE(client.nothingCame());
    EXPECT_EQ(client.say("config server"),
              spoilt.done ? "-ERR: no such service\r\nteluma/server> " : entered_server);
}

INSTANTIATE_TEST_SUITE_P(
    Each, DaemonFaultsAt,
    testing::Values(SpoiltReply{"refused", "refuse", refused, false, false},
                    SpoiltReply{"closed", "close", "", true, false},
                    SpoiltReply{"silent", "silent", "", false, false},
                    SpoiltReply{"late", "late 0.05", entered_server, false, true},
                    SpoiltReply{"dribbling", "dribble", entered_server, false, true},
                    SpoiltReply{"overlong", "overlong",
                                std::string(300, 'x') + "\r\n" + entered_server, false, true},
                    SpoiltReply{"garbage_with_a_prompt", "garbage-prompt",
                                garbage_bytes(100) + "\r\nteluma> ", false, false},
                    SpoiltReply{"flood", "garbage 20000000", garbage_bytes(20000000), false,
                                false}),
    CaseName());

TEST_F(DaemonFaults, ADribblingReplyComesByteByByteAndTheServerCanEndInIt) {
    CliClient client = loggedInAfter("\"config\" 1 dribble 3600\n");
    client.sendLine("config server");
    EXPECT_EQ(client.readBytes(1), "+");
    expectOthersServed();
    EXPECT_TRUE(client.nothingCame());
    EXPECT_EQ(stop(), exited(0));
    EXPECT_FALSE(exists(paths.pid));
}

TEST_F(DaemonFaults, ACrashLeavesThePidFileAndCountsAsHavingHappened) {
    CliClient client = loggedInAfter("\"config\" 1 crash\n");
    client.sendLine("config server");
    EXPECT_EQ(client.readToEnd(), "");
    EXPECT_EQ(waitForEnd(), killed_by(SIGKILL));
    EXPECT_TRUE(exists(paths.pid));
    start();
    CliClient again(port());
    again.logIn("secret");
    EXPECT_EQ(again.say("config server"), entered_server);
}

TEST_F(DaemonFaults, AConnectionOrAPasswordCanBeSpoiltToo) {
    faults("connect 1 refuse\nconnect 2 close\nconnect 3 silent\npassword 1 refuse\n\"\" 3 close");
    start();
    EXPECT_EQ(CliClient(port()).readToEnd(), "-ERR: not now\r\nlogin> ");
    EXPECT_EQ(CliClient(port()).readToEnd(), "");
    CliClient third(port());
    CliClient fourth(port());
    EXPECT_EQ(fourth.logIn("secret"), "-ERR: not now\r\nlogin> ");
    EXPECT_TRUE(third.nothingCame());
    EXPECT_EQ(fourth.say("user admin"), "password> ");
    EXPECT_EQ(fourth.say("secret"), welcome);
    fourth.sendLine("config server");
    EXPECT_EQ(fourth.readToEnd(), "") << "a password counted as a command";
}

TEST_F(DaemonFaults, RulesMayChangeWhileTheServerRunsAndBadOnesKeepItFromStarting) {
    CliClient client = loggedInAfter("");
    faults("\"config\" 1 refuse\n");
    EXPECT_EQ(client.say("config server"), refused);
    faults("nonsense\n");
    EXPECT_EQ(client.say("config server"), refused);
    faults("");
    EXPECT_EQ(client.say("config server"), entered_server);
    stop();
    faults("\"commit\" 1 explode\n");
    const CommandResult result = run({});
    EXPECT_EQ(result.status, exited(1));
    EXPECT_EQ(result.err,
              "teluma: " + paths.faults + ": line 1 is no fault rule: \"commit\" 1 explode\n");
    EXPECT_FALSE(exists(paths.pid));
}

TEST_F(DaemonFaults, APidFileMayComeLateOrNever) {
    faults("start 1 refuse\nstart 2 late 0.05\nstart 3 late 3600\nstart 4 missing\n");
    EXPECT_EQ(run({}).status, exited(1));
    EXPECT_FALSE(exists(paths.pid));
    start();
    wait_until([&] { return exists(paths.pid); }, "the pid file is there");
    EXPECT_EQ(read_file(paths.pid), std::to_string(daemon()) + "\n");
    stop();
    for (const char* fault : {"late", "missing"}) {
        start();
        expectOthersServed();
        EXPECT_FALSE(exists(paths.pid)) << fault;
        EXPECT_EQ(stop(), exited(0));
        EXPECT_FALSE(exists(paths.pid)) << fault;
    }
}

TEST_F(DaemonFaults, APidFileMayStayForAWhileOrForEverWhenTheServerIsGone) {
    CliClient client = loggedInAfter("stop 1 stays 0.05\nstop 2 stays\nstop 3 stays 3600");
    EXPECT_EQ(stop(), exited(0));
    EXPECT_FALSE(exists(paths.pid));
    start();
    EXPECT_EQ(stop(), exited(0));
    EXPECT_EQ(read_file(paths.pid), std::to_string(daemon()) + "\n");
    start();
    CliClient last(port());
    last.logIn("secret");
    kill(daemon(), SIGTERM);
    EXPECT_EQ(last.readToEnd(), "");
    EXPECT_THROW(CliClient{port()}, std::system_error);
    EXPECT_TRUE(exists(paths.pid));
}

}  // namespace
