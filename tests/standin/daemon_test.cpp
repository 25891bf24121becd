// The server as a process: how it starts, serves and ends.
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "tests/standin/daemon_fixture.h"
#include "tests/support/cli_client.h"

namespace {

using Lines = std::vector<std::string>;

const char* const greeting = "TELUMA stand-in server, command line interface\r\nlogin> ";
const char* const welcome = "+OK: welcome\r\nteluma> ";

TEST_F(DaemonTest, StartingReturnsOnceItListensApartFromWhoStartedIt) {
    start();
    EXPECT_EQ(read_file(paths.pid), std::to_string(daemon()) + "\n");
    EXPECT_EQ(CliClient(port()).readReply(), greeting);
    const std::string process = "/proc/" + std::to_string(daemon());
    EXPECT_EQ(getsid(daemon()), daemon()) << "a session of its own";
    for (const char* stream : {"0", "1", "2"})
        EXPECT_EQ(link_target(process + "/fd/" + stream), "/dev/null");
    EXPECT_EQ(link_target(process + "/cwd"), "/");
}

TEST_F(DaemonTest, SigtermEndsItWhileClientsAreConnectedAndRemovesThePidFile) {
    start();
    CliClient silent(port());
    CliClient busy(port());
    busy.logIn("secret");
    EXPECT_EQ(stop(), exited(0));
    EXPECT_FALSE(exists(paths.pid));
    silent.readToEnd();
    EXPECT_EQ(busy.readToEnd(), "");
    EXPECT_THROW(CliClient{port()}, std::system_error);
}

TEST_F(DaemonTest, SigtermLeavesThePidFileOfAnotherServerAlone) {
    start();
    write_file(paths.pid, "1\n");
    EXPECT_EQ(stop(), exited(0));
    EXPECT_EQ(read_file(paths.pid), "1\n");
}

TEST_F(DaemonTest, RunsWithoutListeningWhenTheCliIsNotAmongTheServices) {
    configure(" cli )", " )");
    start();
    EXPECT_EQ(port(), 0);
    EXPECT_EQ(stop(), exited(0));
}

TEST_F(DaemonTest, RunsInTheForegroundWhenAsked) {
    const pid_t server = fork();
    if (server == 0) {
        execl(STANDIN_SERVER, STANDIN_SERVER, "-f", "-r", directory.path().c_str(), nullptr);
        _exit(127);
    }
    wait_until([&] { return exists(paths.pid); }, "the server runs");
    EXPECT_EQ(daemon(), server);
    EXPECT_EQ(CliClient(port()).logIn("secret"), welcome);
    kill(server, SIGINT);
    EXPECT_EQ(waitForEnd(), exited(0));
    EXPECT_FALSE(exists(paths.pid));
}

TEST_F(DaemonTest, KeepsANewPasswordByteForByteAndWhatWasSavedOverARestartAndNothingElse) {
    const std::string password = R"(a "$HOME" `b` \ c'd  )";
    start();
    EXPECT_EQ(run({"-A", "-f"}).status, exited(0)) << "a password that looks like an option";
    EXPECT_EQ(run({"-A", password}).status, exited(0));
    CliClient client(port());
    EXPECT_EQ(client.logIn(password), welcome);
    client.say("create domain name saved.org domainlocation /d/ postmasterpasswd p");
    client.say("commit");
    EXPECT_EQ(client.say("save config"), "+OK: done\r\nteluma> ");
    client.say("create domain name lost.org domainlocation /d/ postmasterpasswd p");
    client.say("commit");
    EXPECT_NE(log().find("-A -f\n-A " + password + "\n"), std::string::npos);
    EXPECT_EQ(stop(), exited(0));
    start();
    CliClient again(port());
    EXPECT_EQ(again.logIn(password), welcome);
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
    const std::string logged = log();
    EXPECT_EQ(logged.find("# started, process "), 0U);
    EXPECT_EQ(logged.substr(logged.find('\n') + 1),
              "# connection 1 opened\nuser admin\nsecret\nconfig  server \n\x01\xff \"$x\"\n\n");
}

TEST_F(DaemonTest, OnlyCrLfEndsALineWhichMayComeInPiecesOrWithOthers) {
    start();
    CliClient client(port());
    client.logIn("secret");
    for (const char* piece : {"conf", "ig serv", "er\r", "\n"}) client.send(piece);
    EXPECT_EQ(client.readReply(), "+OK: done\r\nteluma/server> ");
    client.send("config pop3\r\nback\r\nback\r\n");
    const std::string replies =
        "+OK: done\r\nteluma/server/service> +OK: done\r\nteluma/server> +OK: done\r\nteluma> ";
    EXPECT_EQ(client.readBytes(replies.size()), replies);
    client.send("config\nserver\r");
    client.send("x\r\n");
    EXPECT_EQ(client.readReply(), "-ERR: malformed command\r\nteluma> ");
}

TEST_F(DaemonTest, ClientsThatAreSilentVanishOrDoNotEndTheirLinesHarmNobodyElse) {
    start();
    CliClient silent(port());
    CliClient first(port());
    first.logIn("secret");
    CliClient(port()).sendLine("user admin");
    CliClient endless(port());
    endless.readReply();
    endless.send(std::string(5000, 'x'));
    EXPECT_EQ(endless.readToEnd(), "");
    CliClient second(port());
    EXPECT_EQ(second.logIn("secret"), welcome);
    EXPECT_EQ(first.say("config server"), "+OK: done\r\nteluma/server> ");
    EXPECT_EQ(silent.readReply(), greeting);
}

TEST_F(DaemonTest, StartsAgainAtOneAddressButNotTwice) {
    start();
    const std::string number = std::to_string(port());
    configure("127.0.0.1:0", "localhost:" + number);
    CliClient client(port());
    client.logIn("secret");
    const CommandResult second = run({});
    EXPECT_EQ(second.status, exited(1));
    EXPECT_EQ(second.err,
              "teluma: can't listen at localhost:" + number + ": Address already in use\n");
    EXPECT_EQ(read_file(paths.pid), std::to_string(daemon()) + "\n");
    stop();
    start();
    EXPECT_EQ(CliClient(std::stoi(number)).logIn("secret"), welcome);
}

TEST_F(DaemonTest, SaysWhyItCanNotStart) {
    write_file(paths.state, "nonsense\n");
    EXPECT_EQ(run({}).err, "teluma: " + paths.state + ": line 1 is no record: nonsense\n");
    unlink(paths.state.c_str());
    write_file(paths.config, "services = ( cli )\n");
    EXPECT_EQ(run({}).err, "teluma: no address to listen at: \n");
    unlink(paths.config.c_str());
    EXPECT_EQ(run({}).err, "teluma: " + paths.config + ": No such file or directory\n");
    EXPECT_EQ(run({}).status, exited(1));
    EXPECT_FALSE(exists(paths.pid));
}

TEST_F(DaemonTest, SaysThatItsPidFileCanNotBeWritten) {
    mkdir(paths.pid.c_str(), 0700);
    EXPECT_EQ(run({}).err, "teluma: " + paths.pid + ": Is a directory\n");
    EXPECT_EQ(waitForEnd(), exited(1));
}

TEST_F(DaemonTest, RefusesACommandLineThatIsWrong) {
    const std::string usage =
        "teluma: usage: teluma [-f] [-r DIRECTORY] | [-r DIRECTORY] -A PASSWORD\n";
    for (const Lines& arguments : {Lines{"-A"}, {"-x", "-f"}, {"more"}, {"-A", "one", "two"}}) {
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.status, exited(2));
        EXPECT_EQ(result.err.substr(result.err.find("teluma: usage")), usage);
    }
    const CommandResult result = run({"-r", directory / "none"});
    EXPECT_EQ(result.status, exited(2));
    EXPECT_EQ(result.err, "teluma: " + (directory / "none") + ": No such file or directory\n");
}

CommandResult install(const std::string& root) {
    return run_command({STANDIN_PACKAGE "/install", root});
}

TEST_F(DaemonTest, IsInstalledAgainWithoutHarmToItsState) {
    const std::string root = directory / "host";
    const std::string run_directory = root + "/var/opt/teluma/run";
    install(root);
    write_file(run_directory + "/teluma.state", "primarydomain example.com\n");
    write_file(run_directory + "/teluma.cfg", "broken\n");
    EXPECT_EQ(install(root).status, exited(0));
    EXPECT_EQ(read_file(run_directory + "/teluma.state"), "primarydomain example.com\n");
    EXPECT_EQ(read_file(run_directory + "/teluma.cfg"), read_file(STANDIN_PACKAGE "/teluma.cfg"));

    write_file(directory / "install", read_file(STANDIN_PACKAGE "/install"), 0755);
    const CommandResult alone = run_command({directory / "install", directory / "none"});
    EXPECT_EQ(alone.status, exited(1));
    EXPECT_NE(alone.err.find("there is no server in"), std::string::npos) << alone.err;
    EXPECT_FALSE(exists(directory / "none"));
}

}  // namespace
