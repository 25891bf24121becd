#include "tests/reliability/files/file_test.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

#include "tests/reliability/files/shim_orders.h"
#include "tests/support/process.h"
#include "tests/support/screen_text.h"

namespace {

const std::string sendmail = "/usr/sbin/sendmail";
const std::string backup = sendmail + ".beforeteluma";
const std::string config = InstalledServer::config;
const std::string filters = InstalledServer::filters;
const std::string rewritten[] = {config, filters};

FileState state_of(const std::string& path) { return {read_file(path), file_facts(path)}; }

// As far as this user may give files away.
void put(const std::string& path, const FileState& state) {
    unlink(path.c_str());
    write_file(path, state.content, state.facts.mode);
    if (chown(path.c_str(), state.facts.owner, state.facts.group) == 0)
        chmod(path.c_str(), state.facts.mode);
}

// Whether this file, and no link, stands at `path`.
bool stands_at(const std::string& path, const FileState& state) {
    if (!exists(path)) return false;
    const FileFacts facts = file_facts(path);
    return !facts.is_link && facts.mode == state.facts.mode && facts.owner == state.facts.owner &&
           facts.group == state.facts.group && read_file(path) == state.content;
}

std::string kept(const std::string& path) { return path + ".beforewizard"; }

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

FileTest::FileTest() {
    run_command({"sh", "-c",
                 "cd /var/opt/teluma/run; printf older >" + backup +
                     "\nsed -i s/127.0.0.1:9091/localhost:9091/ teluma.cfg\n"
                     "chmod 640 teluma.cfg smtp.filters\n"
                     "chown 12:34 teluma.cfg; chown 13:34 smtp.filters"});
    for (const std::string& path :
         {config, filters, sendmail, backup, std::string("/opt/teluma/bin/sendmail")})
        old[path] = state_of(path);
    reset();
    WatchedRun run;
    run.answerAll();
    EXPECT_EQ(run.finish(), exited(0));
    for (const std::string& path : rewritten) newContents[path] = read_file(path);
    calls = WatchedRun::calls();
}

void FileTest::reset() {
    if (server.isRunning()) kill(server.lastStarted(), SIGKILL);
    server.waitForEnd();
    run_command({"sh", "-c", "rm -rf /var/opt/teluma/run/* " + sendmail + "*"});
    for (const auto& [path, state] : old) put(path, state);
    server.start();
}

void FileTest::expectNothingLost() const {
    for (const std::string& path : rewritten)
        EXPECT_TRUE(exists(kept(path)) ? stands_at(kept(path), old.at(path)) : isOldOrNew(path))
            << path;
    const FileState& program = old.at(sendmail);
    EXPECT_TRUE(stands_at(backup, old.at(backup)));
    EXPECT_TRUE(stands_at(sendmail, program) || stands_at(backup + "1", program) ||
                stands_at(backup + "2", program));
}

void FileTest::expectOriginalsKept() const {
    for (const std::string& path : rewritten) {
        EXPECT_TRUE(stands_at(kept(path), old.at(path))) << path;
        EXPECT_FALSE(exists(kept(path) + ".new"));
    }
}

bool FileTest::areUntouched() const {
    return std::all_of(std::begin(rewritten), std::end(rewritten), [this](const std::string& path) {
        return stands_at(path, old.at(path)) && !exists(kept(path));
    });
}

void FileTest::restoreBroken() const {
    for (const std::string& path : rewritten) {
        if (!isOldOrNew(path)) put(path, state_of(kept(path)));
    }
}

bool FileTest::isOldOrNew(const std::string& path) const {
    const std::string content = read_file(path);
    return content == old.at(path).content || content == newContents.at(path);
}
