// What the server and the commands that the wizard runs find open: their standard streams, and
// nothing of the wizard's.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <sstream>
#include <string>

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
    // The programs in the order of their notes, each with what it found open beside the standard
    // streams. The directory that ls itself reads is not counted.
    static std::string notes() {
        static const std::regex open_file("([0-9]+) -> (.*)");
        std::string notes;
        for (int number = 0; exists(listings + "/" + std::to_string(number)); ++number) {
            std::istringstream note(link_target(listings + "/" + std::to_string(number)));
            std::string line;
            std::getline(note, line);
            notes += line + "\n";
            for (std::smatch found; std::getline(note, line);) {
                if (std::regex_search(line, found, open_file) && std::stoi(found[1]) > 2 &&
                    found.str(2).find("/proc/") != 0)
                    notes += "  " + found.str() + "\n";
            }
        }
        return notes;
    }

    WizardRun wizard;
};

TEST_F(OpenDescriptors, of_the_wizard_are_handed_on_to_nobody) {
    wizard.walkToTheEnd();
    ASSERT_EQ(wizard.finish(), exited(0));
    EXPECT_EQ(notes(), "teluma\ncp\nrm\nteluma\ncp\nrm\n");
}

}  // namespace
