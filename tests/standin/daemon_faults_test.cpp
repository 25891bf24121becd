// The server misbehaving on purpose, as a client sees it.
#include <csignal>

#include "standin/delivery.h"
#include "tests/standin/daemon_fixture.h"
#include "tests/support/cli_client.h"
#include "tests/support/files.h"
#include "tests/support/wait_until.h"

namespace {

const char* const entered_server = "+OK: done\r\nteluma/server> ";
const char* const welcome = "+OK: welcome\r\nteluma> ";

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
};

TEST_F(DaemonFaults, ARefusedCommandIsNotCarriedOut) {
    CliClient client = loggedInAfter("\"config\" 1 refuse\n");
    EXPECT_EQ(client.say("config server"), "-ERR: not now\r\nteluma> ");
    EXPECT_EQ(client.say("config server"), entered_server);
}

TEST_F(DaemonFaults, AClosedConnectionHasNoReplyAndANewOneMayBeMade) {
    CliClient client = loggedInAfter("=\"config server\" 1 close\n");
    client.sendLine("config server");
    EXPECT_EQ(client.readToEnd(), "");
    EXPECT_EQ(CliClient(port()).logIn("secret"), welcome);
}

TEST_F(DaemonFaults, ASilentOneLeavesThisClientWaitingAndAnswersOthersAndTheNextCommand) {
    CliClient client = loggedInAfter("\"config\" 1 silent\n");
    client.sendLine("config server");
    EXPECT_EQ(CliClient(port()).logIn("secret"), welcome);
    EXPECT_TRUE(client.nothingCame());
    EXPECT_EQ(client.say("config server"), entered_server);
}

TEST_F(DaemonFaults, ALateReplyComesInTheEnd) {
    CliClient client = loggedInAfter("\"config\" 1 late 0.05\n");
    EXPECT_EQ(client.say("config server"), entered_server);
}

TEST_F(DaemonFaults, ALateReplyDoesNotKeepOthersWaitingNorTheEnd) {
    CliClient client = loggedInAfter("\"config\" 1 late 3600\n");
    client.sendLine("config server");
    EXPECT_EQ(CliClient(port()).logIn("secret"), welcome);
    EXPECT_TRUE(client.nothingCame());
    EXPECT_EQ(stop(), exited(0));
    EXPECT_FALSE(exists(paths.pid));
    EXPECT_EQ(client.readToEnd(), "");
}

TEST_F(DaemonFaults, ADribblingReplyIsWhole) {
    faults("\"\" * dribble 0.0001\npassword * dribble 0.0001\nconnect * dribble 0.0001\n");
    start();
    CliClient client(port());
    EXPECT_EQ(client.logIn("secret"), welcome);
    EXPECT_EQ(client.say("config server"), entered_server);
}

TEST_F(DaemonFaults, ADribblingReplyComesByteByByteAndTheServerCanEndInIt) {
    CliClient client = loggedInAfter("\"config\" 1 dribble 3600\n");
    client.sendLine("config server");
    EXPECT_EQ(client.readBytes(1), "+");
    EXPECT_EQ(CliClient(port()).logIn("secret"), welcome);
    EXPECT_TRUE(client.nothingCame());
    EXPECT_EQ(stop(), exited(0));
    EXPECT_FALSE(exists(paths.pid));
}

TEST_F(DaemonFaults, AnOverlongLineStandsBeforeTheReply) {
    CliClient client = loggedInAfter("\"config\" 1 overlong\n");
    EXPECT_EQ(client.say("config server"), std::string(300, 'x') + "\r\n" + entered_server);
}

TEST_F(DaemonFaults, GarbageComesWithAPromptOrWithoutAndNothingIsDone) {
    CliClient client = loggedInAfter("\"config\" 1 garbage-prompt\n\"config\" 2 garbage\n");
    EXPECT_EQ(client.say("config server"), standin::garbage_bytes(100) + "\r\nteluma> ");
    client.sendLine("config server");
    EXPECT_EQ(client.readBytes(300), standin::garbage_bytes(300));
    EXPECT_EQ(client.say("config server"), entered_server);
}

TEST_F(DaemonFaults, AFloodThatNobodyReadsDoesNotKeepOthersWaiting) {
    CliClient client = loggedInAfter("\"config\" 1 garbage 20000000\n");
    client.sendLine("config server");
    EXPECT_EQ(CliClient(port()).logIn("secret"), welcome);
    EXPECT_EQ(client.readBytes(20000000).size(), 20000000U);
    EXPECT_EQ(client.say("config server"), entered_server);
}

TEST_F(DaemonFaults, AClientThatLeavesInTheMiddleOfAReplyHarmsNobody) {
    {
        CliClient client = loggedInAfter("\"config\" 1 garbage 20000000\n");
        client.sendLine("config server");
        client.readBytes(1);
    }
    EXPECT_EQ(CliClient(port()).logIn("secret"), welcome);
    EXPECT_EQ(stop(), exited(0));
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

TEST_F(DaemonFaults, AConnectionCanBeRefusedClosedOrNeverGreeted) {
    faults("connect 1 refuse\nconnect 2 close\nconnect 3 silent\n");
    start();
    EXPECT_EQ(CliClient(port()).readToEnd(), "-ERR: not now\r\nlogin> ");
    EXPECT_EQ(CliClient(port()).readToEnd(), "");
    CliClient third(port());
    EXPECT_EQ(CliClient(port()).logIn("secret"), welcome);
    EXPECT_TRUE(third.nothingCame());
}

TEST_F(DaemonFaults, ARefusedPasswordIsNotThatOfARuleAboutCommands) {
    faults("\"\" 2 close\npassword 1 refuse\n");
    start();
    CliClient client(port());
    EXPECT_EQ(client.logIn("secret"), "-ERR: not now\r\nlogin> ");
    client.sendLine("user admin");
    EXPECT_EQ(client.readToEnd(), "");
}

TEST_F(DaemonFaults, RulesMayChangeWhileTheServerRuns) {
    start();
    CliClient client(port());
    client.logIn("secret");
    faults("\"config\" 1 refuse\n");
    EXPECT_EQ(client.say("config server"), "-ERR: not now\r\nteluma> ");
    faults("nonsense\n");
    EXPECT_EQ(client.say("config server"), "-ERR: not now\r\nteluma> ");
    EXPECT_NE(log().find(": line 1 is no fault rule: nonsense\n"), std::string::npos);
    faults("");
    EXPECT_EQ(client.say("config server"), entered_server);
}

TEST_F(DaemonFaults, RulesThatAreBadKeepItFromStarting) {
    faults("\"commit\" 1 explode\n");
    const CommandResult result = run({});
    EXPECT_EQ(result.status, exited(1));
    EXPECT_EQ(result.err,
              "teluma: " + paths.faults + ": line 1 is no fault rule: \"commit\" 1 explode\n");
    EXPECT_FALSE(exists(paths.pid));
}

TEST_F(DaemonFaults, ARefusedStartLeavesNothingBehind) {
    faults("start 1 refuse\n");
    EXPECT_EQ(run({}).status, exited(1));
    EXPECT_FALSE(exists(paths.pid));
    start();
    EXPECT_TRUE(exists(paths.pid));
}

TEST_F(DaemonFaults, ALatePidFileComesWhileTheServerAlreadyAnswers) {
    faults("start 1 late 0.05\nstart 2 late 3600\n");
    start();
    wait_until([&] { return exists(paths.pid); }, "the pid file is there");
    EXPECT_EQ(::read_file(paths.pid), std::to_string(daemon()) + "\n");
    stop();
    start();
    EXPECT_EQ(CliClient(port()).logIn("secret"), welcome);
    EXPECT_FALSE(exists(paths.pid));
    EXPECT_EQ(stop(), exited(0));
}

TEST_F(DaemonFaults, AMissingPidFileNeverComes) {
    faults("start * missing\n");
    start();
    EXPECT_EQ(CliClient(port()).logIn("secret"), welcome);
    EXPECT_EQ(stop(), exited(0));
    EXPECT_FALSE(exists(paths.pid));
}

TEST_F(DaemonFaults, APidFileThatStaysOutlivesTheServer) {
    faults("stop 1 stays\n");
    start();
    EXPECT_EQ(stop(), exited(0));
    EXPECT_EQ(::read_file(paths.pid), std::to_string(daemon()) + "\n");
}

TEST_F(DaemonFaults, APidFileThatStaysForAWhileIsRemovedInTheEnd) {
    faults("stop 1 stays 0.05\n");
    start();
    EXPECT_EQ(stop(), exited(0));
    EXPECT_FALSE(exists(paths.pid));
}

TEST_F(DaemonFaults, WhileThePidFileStaysNobodyIsServedAnyMore) {
    CliClient client = loggedInAfter("stop 1 stays 3600\n");
    kill(daemon(), SIGTERM);
    EXPECT_EQ(client.readToEnd(), "");
    EXPECT_THROW(CliClient{port()}, std::system_error);
    EXPECT_TRUE(exists(paths.pid));
}

}  // namespace
