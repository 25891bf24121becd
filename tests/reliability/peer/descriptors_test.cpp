// What the server and the commands that the wizard runs find open: their standard streams, and
// nothing of the wizard's.

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/e2e/wizard_run.h"
#include "tests/support/files.h"
#include "tests/support/installed_server.h"

namespace {

const std::string listings = "/run/scratch/listings";

// A program that notes under its name what it finds open and then is the real one. The notes are
// the targets of links, numbered from 0: cp can open no file but the one that it is to write.
void put_in_front_of(const std::string& real, const std::string& program) {
    const std::string name = std::filesystem::path(program).filename();
    write_file(program,
               "#!/bin/sh\nln -s \"" + name + "\n$(ls -l /proc/self/fd)\" " + listings + "/$(ls " +
                   listings + " | wc -l)\nexec " + real + " \"$@\"\n",
               0755);
}

// The server's executable and the shell's commands, all with a note.
class NotedPrograms {
  protected:
    NotedPrograms() {
        const std::string server = InstalledServer::binary;
        std::filesystem::rename(server, server + ".real");
        put_in_front_of(server + ".real", server);
        std::filesystem::create_directory("noted");
        std::filesystem::create_directory(listings);
        for (const std::string name : {"cp", "rm"})
            put_in_front_of("/bin/" + name, "noted/" + name);
        const std::string path = "/run/scratch/noted:" + std::string(getenv("PATH"));
        setenv("PATH", path.c_str(), 1);
    }
};

class OpenDescriptors : private NotedPrograms, public testing::Test {
  protected:
    InstalledServer server;
    WizardRun wizard;
};

// The programs in the order of their notes, and what they found open beside the standard streams.
// The directory that ls itself reads is not counted.
struct Notes {
    std::vector<std::string> programs = {};
    std::vector<std::string> found = {};
};

bool is_standard_stream(const std::string& descriptor) {
    return descriptor == "0" || descriptor == "1" || descriptor == "2";
}

Notes read_notes() {
    Notes notes;
    std::stringstream text;
    for (int number = 0; exists(listings + "/" + std::to_string(number)); ++number)
        text << link_target(listings + "/" + std::to_string(number)) << "\n";
    for (std::string line; std::getline(text, line);) {
        const size_t arrow = line.find(" -> ");
        if (line.find(' ') == std::string::npos)
            notes.programs.push_back(line);
        if (arrow == std::string::npos)
            continue;
        const size_t name = line.rfind(' ', arrow - 1) + 1;
        const std::string target = line.substr(arrow + 4);
        if (!is_standard_stream(line.substr(name, arrow - name)) && target.find("/proc/") != 0)
            notes.found.push_back(notes.programs.back() + ": " + line.substr(name));
    }
    return notes;
}

TEST_F(OpenDescriptors, of_the_wizard_are_handed_on_to_nobody) {
    wizard.walkToTheEnd();
    ASSERT_EQ(wizard.finish(), exited(0));
    const Notes notes = read_notes();
    EXPECT_EQ(notes.programs,
              (std::vector<std::string>{"teluma", "cp", "rm", "teluma", "cp", "rm"}));
    EXPECT_EQ(notes.found, std::vector<std::string>());
}

}  // namespace
