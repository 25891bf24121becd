// The server as a process: how it starts, serves and ends.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/standin/daemon_fixture.h"
#include "tests/support/cli_client.h"
#include "tests/support/files.h"
#include "tests/support/wait_until.h"

namespace {

using Lines = std::vector<std::string>;

TEST_F(DaemonTest, StartingReturnsOnceItListensAndItsPidFileIsWritten) {
    start();
    EXPECT_EQ(::read_file(paths.pid), std::to_string(daemon()) + "\n");
    CliClient client(port());
    EXPECT_EQ(client.readReply(), "TELUMA stand-in server, command line interface\r\nlogin> ");
}

TEST_F(DaemonTest, IsCutOffFromTheTerminalAndTheDirectoryOfWhoStartedIt) {
    start();
    const std::string process = "/proc/" + std::to_string(daemon());
    EXPECT_EQ(getsid(daemon()), daemon()) << "a session of its own";
    for (const char* stream : {"0", "1", "2"}) {
        EXPECT_EQ(link_target(process + "/fd/" + stream), "/dev/null");
    }
    EXPECT_EQ(link_target(process + "/cwd"), "/");
}

TEST_F(DaemonTest, SigtermRemovesThePidFileAndEndsIt) {
    start();
    EXPECT_EQ(stop(), exited(0));
    EXPECT_FALSE(exists(paths.pid));
    EXPECT_THROW(CliClient{port()}, std::system_error);
}

TEST_F(DaemonTest, SigtermEndsItAlsoWhenItsStarterHadAllSignalsBlocked) {
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t all;
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &all);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    std::string program = STANDIN_SERVER;
    std::string option = "-r";
    std::string argument = directory.path();
    char* const arguments[] = {program.data(), option.data(), argument.data(), nullptr};
    pid_t starter = 0;
    ASSERT_EQ(posix_spawn(&starter, STANDIN_SERVER, nullptr, &attributes, arguments, environ), 0);
    posix_spawnattr_destroy(&attributes);
    int status = -1;
    ASSERT_EQ(waitpid(starter, &status, 0), starter);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(stop(), exited(0));
}

TEST_F(DaemonTest, SigtermLeavesThePidFileOfAnotherServerAlone) {
    start();
    ::write_file(paths.pid, "1\n");
    EXPECT_EQ(stop(), exited(0));
    EXPECT_EQ(::read_file(paths.pid), "1\n");
}

TEST_F(DaemonTest, SigtermEndsItWhileClientsAreConnected) {
    start();
    CliClient silent(port());
    CliClient busy(port());
    busy.logIn("secret");
    EXPECT_EQ(stop(), exited(0));
    silent.readToEnd();
    EXPECT_EQ(busy.readToEnd(), "");
}

TEST_F(DaemonTest, RunsWithoutListeningWhenTheCliIsNotAmongTheServices) {
    std::string text = ::read_file(paths.config);
    text.replace(text.find(" cli )"), 4, "");
    ::write_file(paths.config, text);
    start();
    EXPECT_EQ(port(), 0);
    EXPECT_EQ(::read_file(paths.pid), std::to_string(daemon()) + "\n");
    EXPECT_EQ(stop(), exited(0));
    EXPECT_FALSE(exists(paths.pid));
}

TEST_F(DaemonTest, RunsInTheForegroundWhenAsked) {
    const pid_t server = fork();
    if (server == 0) {
        execl(STANDIN_SERVER, STANDIN_SERVER, "-f", "-r", directory.path().c_str(), nullptr);
        _exit(127);
    }
    wait_until([&] { return exists(paths.pid); }, "the server runs");
    EXPECT_EQ(daemon(), server);
    CliClient client(port());
    EXPECT_EQ(client.logIn("secret"), "+OK: welcome\r\nteluma> ");
    kill(server, SIGINT);
    EXPECT_EQ(waitForEnd(), exited(0));
    EXPECT_FALSE(exists(paths.pid));
}

TEST_F(DaemonTest, StoresThePasswordByteForByteAndLogsIt) {
    const std::string password = R"(a "$HOME" `b` \ c'd  )";
    EXPECT_EQ(run({"-A", password}).status, exited(0));
    EXPECT_EQ(run({"-A", "-f"}).status, exited(0)) << "a password that looks like an option";
    EXPECT_EQ(run({"-A", password}).status, exited(0));
    EXPECT_EQ(commands(), (Lines{"-A " + password, "-A -f", "-A " + password}));
    start();
    CliClient client(port());
    EXPECT_EQ(client.logIn(password), "+OK: welcome\r\nteluma> ");
}

TEST_F(DaemonTest, ARunningServerKnowsANewPasswordAndDoesNotLoseItBySaving) {
    start();
    EXPECT_EQ(run({"-A", "other"}).status, exited(0));
    CliClient client(port());
    EXPECT_EQ(client.logIn("other"), "+OK: welcome\r\nteluma> ");
    EXPECT_EQ(client.say("save config"), "+OK: done\r\nteluma> ");
    stop();
    start();
    CliClient again(port());
    EXPECT_EQ(again.logIn("other"), "+OK: welcome\r\nteluma> ");
}

TEST_F(DaemonTest, KeepsWhatWasSavedOverARestartAndNothingElse) {
    start();
    CliClient client(port());
    client.logIn("secret");
    client.say("create domain name saved.org domainlocation /d/ postmasterpasswd p");
    client.say("commit");
    client.say("save config");
    client.say("create domain name lost.org domainlocation /d/ postmasterpasswd p");
    client.say("commit");
    EXPECT_EQ(stop(), exited(0));
    EXPECT_EQ(run({"-A", "secret"}).status, exited(0)) << "which must not lose the rest";
    start();
    CliClient again(port());
    again.logIn("secret");
    EXPECT_EQ(again.say("update domain name lost.org"), "-ERR: no such domain\r\nteluma> ");
    EXPECT_EQ(again.say("update domain name saved.org"), "+OK: done\r\nteluma/domain> ");
}

TEST_F(DaemonTest, LogsCommandsAsTheyCameAndNotesApartFromThem) {
    start();
    CliClient client(port());
    client.logIn("secret");
    client.say("config  server ");
    client.say("\x01\xff \"$x\"");
    client.say("");
    EXPECT_EQ(commands(),
              (Lines{"user admin", "secret", "config  server ", "\x01\xff \"$x\"", ""}));
    EXPECT_EQ(log().find("# started, process "), 0U);
    EXPECT_NE(log().find("\n# connection 1 opened\nuser admin\n"), std::string::npos);
}

TEST_F(DaemonTest, ALineMayComeInPiecesAndSeveralAtOnce) {
    start();
    CliClient client(port());
    client.logIn("secret");
    for (const char* piece : {"conf", "ig serv", "er\r", "\n"}) {
        client.send(piece);
    }
    EXPECT_EQ(client.readReply(), "+OK: done\r\nteluma/server> ");
    client.send("config pop3\r\nback\r\nback\r\n");
    const std::string replies =
        "+OK: done\r\nteluma/server/service> +OK: done\r\nteluma/server> +OK: done\r\nteluma> ";
    EXPECT_EQ(client.readBytes(replies.size()), replies);
}

TEST_F(DaemonTest, OnlyCrLfEndsALine) {
    start();
    CliClient client(port());
    client.logIn("secret");
    client.send("config\nserver\r");
    client.send("x\r\n");
    EXPECT_EQ(client.readReply(), "-ERR: malformed command\r\nteluma> ");
}

TEST_F(DaemonTest, ALineWithoutAnEndClosesTheConnectionAndHarmsNobodyElse) {
    start();
    CliClient other(port());
    CliClient client(port());
    client.readReply();
    client.send(std::string(5000, 'x'));
    EXPECT_EQ(client.readToEnd(), "");
    EXPECT_EQ(other.logIn("secret"), "+OK: welcome\r\nteluma> ");
}

TEST_F(DaemonTest, SilentAndVanishingClientsDoNotKeepOthersWaiting) {
    start();
    CliClient silent(port());
    CliClient first(port());
    first.logIn("secret");
    {
        CliClient vanishing(port());
        vanishing.sendLine("user admin");
    }
    CliClient second(port());
    EXPECT_EQ(second.logIn("secret"), "+OK: welcome\r\nteluma> ");
    EXPECT_EQ(first.say("config server"), "+OK: done\r\nteluma/server> ");
    EXPECT_EQ(second.say("config server"), "+OK: done\r\nteluma/server> ");
    EXPECT_EQ(silent.readReply(), "TELUMA stand-in server, command line interface\r\nlogin> ");
}

TEST_F(DaemonTest, DoesNotStartTwiceAtOneAddress) {
    start();
    std::string text = ::read_file(paths.config);
    text.replace(text.find("127.0.0.1:0"), 11, "127.0.0.1:" + std::to_string(port()));
    ::write_file(paths.config, text);
    const CommandResult second = run({});
    EXPECT_EQ(second.status, exited(1));
    EXPECT_EQ(second.err, "teluma: can't listen at 127.0.0.1:" + std::to_string(port()) +
                              ": Address already in use\n");
    EXPECT_EQ(::read_file(paths.pid), std::to_string(daemon()) + "\n");
}

TEST_F(DaemonTest, StartsAgainAtTheSameAddressRightAfterItsEnd) {
    start();
    std::string text = ::read_file(paths.config);
    text.replace(text.find("127.0.0.1:0"), 11, "localhost:" + std::to_string(port()));
    ::write_file(paths.config, text);
    const int first_port = port();
    CliClient client(port());
    client.logIn("secret");
    stop();
    start();
    EXPECT_EQ(port(), first_port);
    EXPECT_EQ(CliClient(first_port).logIn("secret"), "+OK: welcome\r\nteluma> ");
}

TEST_F(DaemonTest, SaysWhyItCanNotStart) {
    ::write_file(paths.state, "nonsense\n");
    EXPECT_EQ(run({}).err, "teluma: " + paths.state + ": line 1 is no record: nonsense\n");
    unlink(paths.state.c_str());
    ::write_file(paths.config, "services = ( cli )\n");
    EXPECT_EQ(run({}).err, "teluma: no address to listen at: \n");
    unlink(paths.config.c_str());
    const CommandResult result = run({});
    EXPECT_EQ(result.err, "teluma: " + paths.config + ": No such file or directory\n");
    EXPECT_EQ(result.status, exited(1));
    EXPECT_FALSE(exists(paths.pid));
}

TEST_F(DaemonTest, FailsInTheStarterWhenItsPidFileCanNotBeWritten) {
    mkdir(paths.pid.c_str(), 0700);
    const CommandResult result = run({});
    EXPECT_EQ(result.status, exited(1));
    EXPECT_EQ(result.err, "teluma: " + paths.pid + ": Is a directory\n");
    EXPECT_EQ(waitForEnd(), exited(1));
}

TEST_F(DaemonTest, RefusesACommandLineThatIsWrong) {
    const std::string usage =
        "teluma: usage: teluma [-f] [-r DIRECTORY] | [-r DIRECTORY] -A PASSWORD\n";
    const Lines wrong_ones[] = {{"-A"}, {"-x"}, {"more"}, {"-A", "one", "two"}};
    for (const Lines& arguments : wrong_ones) {
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.status, exited(2));
        EXPECT_EQ(result.err.substr(result.err.find("teluma: usage")), usage);
    }
    const CommandResult result = run({"-r", directory / "none"});
    EXPECT_EQ(result.status, exited(2));
    EXPECT_EQ(result.err, "teluma: " + (directory / "none") + ": No such file or directory\n");
}

}  // namespace
