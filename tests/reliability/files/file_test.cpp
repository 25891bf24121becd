#include "tests/reliability/files/file_test.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace {

using Entries = std::filesystem::directory_iterator;

const std::string sendmail = "/usr/sbin/sendmail";
const std::string backup = sendmail + ".beforeteluma";
constexpr const char* rewritten[] = {InstalledServer::config, InstalledServer::filters};

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

}  // namespace

FileTest::FileTest() {
    write_file(backup, "older");
    uid_t owner = 12;
    for (const std::string path : rewritten) {
        FileState state = state_of(path);
        const std::string address = "127.0.0.1:9091";
        if (path == InstalledServer::config)
            state.content.replace(state.content.find(address), address.size(), "localhost:9091");
        state.facts.owner = owner++;
        state.facts.group = 34;
        state.facts.mode = 0640;
        put(path, state);
        old[path] = state_of(path);
    }
    for (const std::string& path : {sendmail, backup, std::string("/opt/teluma/bin/sendmail")})
        old[path] = state_of(path);
    reset();
    WatchedRun run;
    run.answerAll();
    EXPECT_EQ(run.finish(), exited(0));
    for (const char* path : rewritten) newContents[path] = read_file(path);
    calls = WatchedRun::calls();
}

void FileTest::reset() {
    if (server.isRunning()) kill(server.lastStarted(), SIGKILL);
    server.waitForEnd();
    for (const auto& entry : Entries("/var/opt/teluma/run")) std::filesystem::remove_all(entry);
    for (const auto& entry : Entries("/usr/sbin")) {
        if (entry.path().string().compare(0, sendmail.size(), sendmail) == 0)
            std::filesystem::remove(entry);
    }
    for (const auto& [path, state] : old) put(path, state);
    server.start();
}

void FileTest::expectNothingLost() const {
    for (const char* path : rewritten)
        EXPECT_TRUE(exists(kept(path)) ? stands_at(kept(path), old.at(path)) : isOldOrNew(path))
            << path;
    const FileState& program = old.at(sendmail);
    EXPECT_TRUE(stands_at(backup, old.at(backup)));
    EXPECT_TRUE(stands_at(sendmail, program) || stands_at(backup + "1", program) ||
                stands_at(backup + "2", program));
}

void FileTest::expectOriginalsKept() const {
    for (const char* path : rewritten) {
        EXPECT_TRUE(stands_at(kept(path), old.at(path))) << path;
        EXPECT_FALSE(exists(kept(path) + ".new"));
    }
}

bool FileTest::areUntouched() const {
    return std::all_of(std::begin(rewritten), std::end(rewritten), [this](const char* path) {
        return stands_at(path, old.at(path)) && !exists(kept(path));
    });
}

int FileTest::restoreBroken() const {
    int count = 0;
    for (const char* path : rewritten) {
        if (!isOldOrNew(path)) {
            put(path, state_of(kept(path)));
            ++count;
        }
    }
    return count;
}

bool FileTest::isOldOrNew(const std::string& path) const {
    const std::string content = read_file(path);
    return content == old.at(path).content || content == newContents.at(path);
}
