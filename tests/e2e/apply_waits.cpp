#include "tests/e2e/apply_waits.h"

#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

constexpr int cli_port = 9091;
constexpr int endless = 1000000;
constexpr const char* stuck_file = "/run/scratch/stuck";

// What the server's executable does instead.
const std::string answer_password = "case $1 in -A) exit; esac\n";
const std::string stick =
    "echo $$ >/run/scratch/stuck.new; mv /run/scratch/stuck.new /run/scratch/stuck\n"
    "exec sleep 1000\n";
const std::string name_decoy = "head -n 1 /run/scratch/decoy >/var/opt/teluma/run/teluma.pid\n";

// Lines of steps that are not done yet.
constexpr const char* setting_password = "--> setting admin password ...     ";
constexpr const char* connecting = "--> connecting to CLI ...     ";

struct WaitFacts {
    const char* name;
    const char* text;         // that the screen shows in the wait
    const char* fault = "";   // that the server has
    std::string script = {};  // in the place of its executable
};

const WaitFacts wait_facts[] = {
    {"old_pid_file", setting_password},
    {"password_command", setting_password, "", stick},
    {"start_command", setting_password, "", answer_password + stick},
    {"new_pid_file", connecting, "start * missing\n"},
    {"before_connecting", connecting},
    {"connection", connecting, "", answer_password + name_decoy},
    {"silent_server", "creating domain", "\"create domain\" 1 silent\n"},
    {"account", "configuring TELUMA sendmail"},
    {"system_log", "configuring TELUMA sendmail"},
    {"step_error", "Error!", "\"create domain\" 1 refuse\n"},
    {"login_error", "Error!", "password * refuse\n"},
    {"final_ok", " OK "},
};

const WaitFacts& facts_of(ApplyWait wait) { return wait_facts[static_cast<int>(wait)]; }

// Whether a connection attempt of this host is waiting for its answer, by the kernel's table.
bool somebody_connects() {
    const std::string syn_sent = " 02 ";
    return read_file("/proc/net/tcp").find(syn_sent) != std::string::npos;
}

}  // namespace

ApplyStage::ApplyStage(ApplyWait wait) : kind(wait) {
    server.faults(facts_of(kind).fault);
    if (kind == ApplyWait::new_pid_file || kind == ApplyWait::before_connecting)
        WizardRun::setSleep(endless);
    if (kind == ApplyWait::old_pid_file || kind == ApplyWait::connection) decoy.emplace();
    if (kind == ApplyWait::connection) silentPort.emplace(cli_port);
    if (kind == ApplyWait::old_pid_file)
        write_file(InstalledServer::pid_file, std::to_string(decoy->pid()) + "\n");
    if (!facts_of(kind).script.empty()) server.replaceBy(facts_of(kind).script);
    if (kind == ApplyWait::account) {
        unlink("/etc/passwd");
        checked(mkfifo("/etc/passwd", 0644), "mkfifo");
    }
    if (kind == ApplyWait::system_log) {
        systemLog.emplace();
        systemLog->fill();
        unlink("/opt/teluma/bin/sendmail");
    }
}

void ApplyStage::open(WizardRun& wizard, const Caller& caller) {
    Answers answers;
    // Otherwise the account is looked up for the filters script already, between two commands.
    if (kind == ApplyWait::account) answers.relay = {false, false, false};
    wizard.walkToTheEnd(answers);
    wizard.waitForText(facts_of(kind).text, caller);
    if (kind == ApplyWait::old_pid_file) decoy->waitForSignals(1);
    if (kind == ApplyWait::password_command || kind == ApplyWait::start_command)
        wait_until([] { return exists(stuck_file); }, "the command ran", caller);
    if (kind == ApplyWait::connection)
        wait_until(somebody_connects, "the wizard was connecting", caller);
    if (kind == ApplyWait::silent_server) server.waitForLog("# fault: \"create domain\" 1 silent");
    wizard.waitForKey(caller);
}

pid_t ApplyStage::command() const { return std::stoi(read_file(stuck_file)); }

void ApplyStage::expectServerTold() const {
    switch (kind) {
        case ApplyWait::old_pid_file:
            EXPECT_TRUE(server.commands().empty());
            return decoy->waitForSignals(2);
        case ApplyWait::connection:
            return decoy->waitForSignals(1);
        case ApplyWait::password_command:
        case ApplyWait::start_command:
            EXPECT_EQ(server.lastStarted(), 0);
            return;
        case ApplyWait::new_pid_file:
            EXPECT_TRUE(server.isRunning());
            return;
        default:
            return server.waitForEnd();
    }
}

std::string apply_wait_name(const testing::TestParamInfo<ApplyWait>& info) {
    return facts_of(info.param).name;
}
