#include "tests/reliability/files/watched_run.h"

#include <unistd.h>

#include <filesystem>

#include "tests/reliability/files/shim_orders.h"
#include "tests/support/files.h"
#include "tests/support/screen_text.h"

namespace {

ProgramSetup with_shim(const std::string& order) {
    unlink(call_log);
    return {{"env", "LD_PRELOAD=" FILE_CALL_SHIM " " SLEEP_LENGTH,
             std::string(order_variable) + "=" + order, WIZARD_PROGRAM}};
}

}  // namespace

WatchedRun::WatchedRun(const std::string& order) : WizardRun(with_shim(order)) {}

WatchedRun::~WatchedRun() {
    std::error_code ignored;
    if (!privateDirectory().empty()) std::filesystem::remove_all(privateDirectory(), ignored);
}

void WatchedRun::answerAll(const std::string& domain, Stop from) {
    Answers answers;
    answers.domain = domain;
    answers.aliases = answers.services = {false, false, false};
    walkToTheEnd(answers, from);
}

std::vector<std::string> WatchedRun::calls() {
    return exists(call_log) ? split_lines(read_file(call_log)) : std::vector<std::string>();
}

std::string WatchedRun::privateDirectory() {
    const std::string note = "- teluma-wizard has made the directory ";
    for (const std::string& line : calls()) {
        if (line.compare(0, note.size(), note) == 0) return line.substr(note.size());
    }
    return "";
}
