#include "tests/reliability/files/watched_run.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/reliability/files/shim_orders.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

EnvironmentChanges with_shim(EnvironmentChanges orders) {
    unlink(call_log);
    orders["LD_PRELOAD"] = FILE_CALL_SHIM;
    return orders;
}

// By comm in proc(5), which an ended process has too until somebody has taken note of its end.
bool command_runs() {
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::string name;
        std::ifstream(entry.path() / "comm") >> name;
        if ((name == "cp" || name == "rm") &&
            process_running(std::atoi(entry.path().filename().c_str())))
            return true;
    }
    return false;
}

}  // namespace

WatchedRun::WatchedRun(EnvironmentChanges orders) : WizardRun(with_shim(std::move(orders))) {}

WatchedRun::~WatchedRun() {
    std::error_code ignored;
    if (!privateDirectory().empty()) std::filesystem::remove_all(privateDirectory(), ignored);
}

void WatchedRun::answerAll(const std::string& domain, Stop from) {
    Answers answers;
    answers.domain = domain;
    answers.aliases = {false, false, false};
    answers.services = {false, false, false};
    walkToTheEnd(answers, from);
}

std::vector<std::string> WatchedRun::calls() {
    std::ifstream log(call_log);
    std::vector<std::string> lines;
    for (std::string line; std::getline(log, line);) lines.push_back(line);
    return lines;
}

std::string WatchedRun::privateDirectory() {
    const std::string note = "- teluma-wizard has made the directory ";
    for (const std::string& line : calls()) {
        if (line.compare(0, note.size(), note) == 0) return line.substr(note.size());
    }
    return "";
}

EnvironmentChanges failing(const std::string& call, int count) {
    return {{fault_variable, std::to_string(count) + " " + call}};
}

EnvironmentChanges killing(int count, const std::string& whom) {
    return {{kill_variable, std::to_string(count) + " " + whom}};
}

FileTest::FileTest() {
    files.reset();
    WatchedRun run;
    run.answerAll();
    EXPECT_EQ(run.finish(), exited(0));
    files.rememberAsNew();
    calls = WatchedRun::calls();
}

void wait_for_commands() {
    wait_until([] { return !command_runs(); }, "no command ran any more");
}
