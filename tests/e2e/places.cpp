#include "tests/e2e/places.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/wait_until.h"

namespace {

constexpr int webadmin_port = 9000;
constexpr int cli_port = 9091;
constexpr int loopback_row = 1;
constexpr const char* stuck_file = "/run/scratch/stuck";

// What the server's executable does instead.
const std::string answer_password = "case $1 in -A) exit; esac\n";
const std::string stick = std::string("echo $$ >") + stuck_file + "; exec sleep 1000\n";

// Lines of steps that are not done yet.
constexpr const char* setting_password = "--> setting admin password ...     ";
constexpr const char* connecting = "--> connecting to CLI ...     ";

struct PlaceFacts {
    const char* name;
    const char* text;         // that the screen shows there
    const char* fault = "";   // that the server has
    std::string script = {};  // in the place of its executable
};

const PlaceFacts place_facts[] = {
    {"screen", "Domain configuration"},
    {"message", "Error!"},
    {"question", "WARNING!"},
    {"retry_back", "Warning!"},
    {"pending", "Operation pending!"},
    {"old_pid_file", setting_password},
    {"password_command", setting_password, "", stick},
    {"start_command", setting_password, "", answer_password + stick},
    {"connection", connecting},
    {"silent_server", "creating domain", "\"create domain\" 1 silent\n"},
    {"account", "configuring TELUMA sendmail"},
    {"system_log", "configuring TELUMA sendmail"},
    {"step_error", "Error!", "\"create domain\" 1 refuse\n"},
    {"login_error", "Error!", "password * refuse\n"},
    {"final_ok", " OK "},
    {"log_connection", "configuring TELUMA sendmail"},
    {"new_pid_file", connecting, "start * missing\n"},
    {"before_connecting", connecting},
};

const PlaceFacts& facts_of(Place place) { return place_facts[static_cast<int>(place)]; }

// Whether a connection attempt of this host is waiting for its answer, by the kernel's table.
bool somebody_connects() {
    const std::string syn_sent = " 02 ";
    return read_file("/proc/net/tcp").find(syn_sent) != std::string::npos;
}

bool command_runs() { return exists(stuck_file) && !read_file(stuck_file).empty(); }

}  // namespace

std::string place_name(const testing::TestParamInfo<Place>& info) {
    return facts_of(info.param).name;
}

std::vector<Place> places_up_to(Place last) {
    std::vector<Place> places;
    for (int i = 0; i <= static_cast<int>(last); ++i) places.push_back(static_cast<Place>(i));
    return places;
}

Decoy::Decoy()
    : TerminalProgram({{"sh", "-c",
                        "trap 'got=$((got + 1)); echo SIGTERM $got' TERM; echo ready\n"
                        "while :; do sleep 1000 & wait; done"}}) {
    waitForText("ready");
}

void Decoy::replace(const InstalledServer& server) const {
    server.replaceBy(answer_password + "echo " + std::to_string(pid()) + " >" +
                     InstalledServer::pid_file);
}

void Decoy::waitForSignals(int count) { waitForText("SIGTERM " + std::to_string(count)); }

Stage::Stage(Place where) : place(where) {
    server.faults(facts_of(place).fault);
    if (!facts_of(place).script.empty()) server.replaceBy(facts_of(place).script);
    if (place == Place::retry_back) takenPort.emplace(webadmin_port).open();
    if (place == Place::pending) silentPort.emplace(webadmin_port);
    if (place == Place::new_pid_file || place == Place::before_connecting)
        setenv(WizardRun::sleep_variable, "1000000", 1);
    if (place == Place::old_pid_file)
        write_file(InstalledServer::pid_file, std::to_string(decoy.emplace().pid()) + "\n");
    if (place == Place::connection) {
        decoy.emplace().replace(server);
        silentPort.emplace(cli_port);
    }
    if (place == Place::account) {
        unlink("/etc/passwd");
        checked(mkfifo("/etc/passwd", 0644), "mkfifo");
    }
    if (place == Place::log_connection) stuckLog = stuck_system_log();
    if (place == Place::system_log) {
        systemLog.emplace().fill();
        unlink("/opt/teluma/bin/sendmail");
    }
}

void Stage::walk(WizardRun& wizard) const {
    Answers answers;
    switch (place) {
        case Place::screen:
            return wizard.walk(Stop::password, Stop::domain);
        case Place::message:
            wizard.waitForScreen(Stop::password);
            wizard.type("not repeated");
            return wizard.pressNext(Stop::password);
        case Place::question:
        case Place::retry_back:
        case Place::pending:
            wizard.walk(Stop::password, Stop::webadmin);
            return wizard.answerListener(Stop::webadmin,
                                         {place == Place::question ? loopback_row : 0});
        case Place::account:
            // Otherwise it is looked up for the filters script already, between two commands.
            answers.relay = {false, false, false};
            [[fallthrough]];
        default:
            wizard.walkToTheEnd(answers);
    }
}

void Stage::open(WizardRun& wizard, const Caller& caller) {
    walk(wizard);
    wizard.waitForText(facts_of(place).text, caller);
    if (place == Place::old_pid_file) decoy->waitForSignals(1);
    if (!facts_of(place).script.empty()) wait_until(command_runs, "the command ran", caller);
    if (place == Place::connection)
        wait_until(somebody_connects, "the wizard was connecting", caller);
    if (place == Place::silent_server) server.waitForLog("# fault: \"create domain\" 1 silent");
    wizard.waitForKey(caller);
}

pid_t Stage::command() const { return std::stoi(read_file(stuck_file)); }

void Stage::expectServerTold() {
    switch (place) {
        case Place::old_pid_file:
            EXPECT_TRUE(server.commands().empty());
            return decoy->waitForSignals(2);
        case Place::connection:
            return decoy->waitForSignals(1);
        case Place::password_command:
        case Place::start_command:
            EXPECT_EQ(server.lastStarted(), 0);
            return;
        case Place::new_pid_file:
            EXPECT_TRUE(server.isRunning());
            return;
        default:
            return server.waitForEnd();
    }
}
