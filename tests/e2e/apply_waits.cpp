#include "tests/e2e/apply_waits.h"

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

constexpr int cli_port = 9091;
constexpr int endless = 1000000;
constexpr const char* stuck_file = "/run/scratch/stuck";
constexpr const char* answer_password = "case $1 in -A) exit; esac\n";
constexpr const char* stick =
    "echo $$ >/run/scratch/stuck.new; mv /run/scratch/stuck.new /run/scratch/stuck\n"
    "exec sleep 1000\n";

// Lines of steps that are not done yet.
constexpr const char* setting_password = "--> setting admin password ...     ";
constexpr const char* connecting = "--> connecting to CLI ...     ";

struct WaitFacts {
    const char* name;
    const char* fault;  // that the server has
    const char* text;   // that the screen shows in the wait
};

const WaitFacts& facts_of(ApplyWait wait) {
    static const WaitFacts facts[] = {
        {"old_pid_file", "", setting_password},
        {"password_command", "", setting_password},
        {"start_command", "", setting_password},
        {"new_pid_file", "start * missing\n", connecting},
        {"before_connecting", "", connecting},
        {"connection", "", connecting},
        {"silent_server", "\"create domain\" 1 silent\n", "creating domain"},
        {"account", "", "configuring TELUMA sendmail"},
        {"system_log", "", "configuring TELUMA sendmail"},
        {"step_error", "\"create domain\" 1 refuse\n", "Error!"},
        {"login_error", "password * refuse\n", "Error!"},
        {"final_ok", "", " OK "},
    };
    return facts[static_cast<int>(wait)];
}

// Whether a connection attempt of this host is waiting for its answer, by the kernel's table.
bool somebody_connects() {
    std::ifstream table("/proc/net/tcp");
    std::string line;
    while (std::getline(table, line)) {
        const std::string syn_sent = " 02 ";
        if (line.find(syn_sent) != std::string::npos)
            return true;
    }
    return false;
}

}  // namespace

ApplyStage::ApplyStage(ApplyWait wait) : kind(wait) {
    server.faults(facts_of(kind).fault);
    if (kind == ApplyWait::new_pid_file || kind == ApplyWait::before_connecting)
        WizardRun::setSleep(endless);
    if (kind == ApplyWait::old_pid_file || kind == ApplyWait::connection)
        decoy.emplace();
    if (kind == ApplyWait::connection)
        silent_port.emplace(cli_port);
    if (kind == ApplyWait::old_pid_file)
        write_file(InstalledServer::pid_file, std::to_string(decoy->pid()) + "\n");
    replaceServer();
    replaceHost();
}

void ApplyStage::replaceHost() {
    if (kind == ApplyWait::account) {
        unlink("/etc/passwd");
        checked(mkfifo("/etc/passwd", 0644), "mkfifo");
    }
    if (kind == ApplyWait::system_log) {
        system_log.emplace();
        system_log->fill();
        unlink("/opt/teluma/bin/sendmail");
    }
}

void ApplyStage::replaceServer() const {
    InstalledServer replaced;
    if (kind == ApplyWait::password_command)
        replaced.replaceBy(stick);
    if (kind == ApplyWait::start_command)
        replaced.replaceBy(std::string(answer_password) + stick);
    if (kind == ApplyWait::connection)
        replaced.replaceBy(answer_password + ("echo " + std::to_string(decoy->pid())) + " >" +
                           InstalledServer::pid_file);
}

void ApplyStage::open(WizardRun& wizard, const Caller& caller) {
    Answers answers;
    // Otherwise the account is looked up for the filters script already, between two commands.
    if (kind == ApplyWait::account)
        answers.relay = {false, false, false};
    wizard.walkToTheEnd(answers);
    wizard.waitForText(facts_of(kind).text, caller);
    waitForStage(wizard, caller);
    wizard.waitForKey(caller);
}

void ApplyStage::waitForStage(WizardRun& wizard, const Caller& caller) {
    switch (kind) {
        case ApplyWait::old_pid_file:
            return decoy->waitForSignals(1);
        case ApplyWait::password_command:
        case ApplyWait::start_command:
            return wait_until([] { return exists(stuck_file); }, "the command ran", caller);
        case ApplyWait::connection:
            return wait_until(somebody_connects, "the wizard was connecting", caller);
        case ApplyWait::silent_server:
            return server.waitForLog("# fault: \"create domain\" 1 silent");
        default:
            return wizard.waitForKey(caller);
    }
}

pid_t ApplyStage::command() const {
    return std::stoi(read_file(stuck_file));
}

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
