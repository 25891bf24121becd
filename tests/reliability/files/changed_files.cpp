#include "tests/reliability/files/changed_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

namespace {

using namespace std::string_literals;

constexpr const char* directory = "/var/opt/teluma/run";
constexpr const char* older_backup = "/usr/sbin/sendmail.beforeteluma";

// As far as this user may give files away.
void put(const std::string& path, const FileState& state) {
    unlink(path.c_str());
    write_file(path, state.content, state.facts.mode);
    if (chown(path.c_str(), state.facts.owner, state.facts.group) == 0)
        chmod(path.c_str(), state.facts.mode);
}

// Whether this file, and no link, stands at `path`.
bool stands_at(const std::string& path, const FileState& state) {
    return exists(path) && !file_facts(path).is_link && state_of(path) == state;
}

std::string kept(const std::string& path) {
    return path + ".beforewizard";
}

void make_empty(const std::string& path) {
    for (const auto& entry : std::filesystem::directory_iterator(path))
        std::filesystem::remove_all(entry);
}

}  // namespace

bool operator==(const FileState& one, const FileState& other) {
    return one.content == other.content && one.facts.is_link == other.facts.is_link &&
           one.facts.mode == other.facts.mode && one.facts.owner == other.facts.owner &&
           one.facts.group == other.facts.group;
}

FileState state_of(const std::string& path) {
    return {read_file(path), file_facts(path)};
}

ChangedFiles::ChangedFiles() {
    write_file(older_backup, "older");
    for (const char* path : {sendmail, wrapper, older_backup})
        old_programs[path] = state_of(path);
    FileState config = state_of(InstalledServer::config);
    const std::string address = "127.0.0.1:9091";
    config.content.replace(config.content.find(address), address.size(), "localhost:9091");
    FileState filters = state_of(InstalledServer::filters);
    uid_t owner = 12;
    for (const auto& file : {std::pair{InstalledServer::config, &config},
                             std::pair{InstalledServer::filters, &filters}}) {
        file.second->facts.owner = owner++;
        file.second->facts.group = 34;
        file.second->facts.mode = 0640;
        put(file.first, *file.second);
        old_files[file.first] = state_of(file.first);
    }
}

void ChangedFiles::reset() {
    if (server.isRunning())
        kill(server.lastStarted(), SIGKILL);
    server.waitForEnd();
    make_empty(directory);
    for (const auto& file : old_files)
        put(file.first, file.second);
    for (const auto& entry : std::filesystem::directory_iterator("/usr/sbin")) {
        if (entry.path().string().compare(0, std::string(sendmail).size(), sendmail) == 0)
            std::filesystem::remove(entry);
    }
    for (const auto& program : old_programs)
        put(program.first, program.second);
    server.start();
}

void ChangedFiles::rememberAsNew() {
    for (const auto& file : old_files)
        new_contents[file.first] = read_file(file.first);
}

void ChangedFiles::expectNothingLost() const {
    for (const auto& file : old_files) {
        const bool is_kept = exists(kept(file.first));
        EXPECT_TRUE(is_kept ? state_of(kept(file.first)) == file.second : isOldOrNew(file.first))
            << file.first;
    }
    EXPECT_TRUE(state_of(older_backup) == old_programs.at(older_backup));
    EXPECT_TRUE(stands_at(sendmail, old_programs.at(sendmail)) ||
                stands_at(older_backup + "1"s, old_programs.at(sendmail)) ||
                stands_at(older_backup + "2"s, old_programs.at(sendmail)));
}

void ChangedFiles::expectOriginalsKept() const {
    for (const auto& file : old_files) {
        EXPECT_TRUE(state_of(kept(file.first)) == file.second) << file.first;
        EXPECT_FALSE(exists(kept(file.first) + ".new"));
    }
}

int ChangedFiles::restoreBroken() const {
    int count = 0;
    for (const auto& file : old_files) {
        if (!isOldOrNew(file.first)) {
            put(file.first, state_of(kept(file.first)));
            ++count;
        }
    }
    return count;
}

bool ChangedFiles::isOldOrNew(const std::string& path) const {
    const std::string content = read_file(path);
    return content == old_files.at(path).content || content == new_contents.at(path);
}
