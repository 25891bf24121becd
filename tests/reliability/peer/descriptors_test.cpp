// What the server and the commands that the wizard runs find open: their standard streams, and
// nothing of the wizard's.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/e2e/wizard_run.h"
#include "tests/support/files.h"
#include "tests/support/installed_server.h"

namespace {

// A program that notes under its name what it finds open beside the standard streams, but for the
// directory that ls reads, and then is the real one. The notes are the targets of links, numbered
// from 0: cp can open no file but the one that it is to write.
void put_in_front_of(const std::string& real, const std::string& program) {
    write_file(program, R"(#!/bin/sh
open=$(ls -l /proc/self/fd | grep -- '->' | grep -Ev ' [012] -> | /proc/')
ln -s "${0##*/} $open" /run/scratch/notes/$(ls /run/scratch/notes | wc -l)
exec )" + real + " \"$@\"\n",
               0755);
}

// With a note of the server's executable and of the shell's commands.
TEST(OpenDescriptors, of_the_wizard_are_handed_on_to_nobody) {
    const std::string server = InstalledServer::binary;
    std::filesystem::rename(server, server + ".real");
    put_in_front_of(server + ".real", server);
    std::filesystem::create_directory("noted");
    std::filesystem::create_directory("notes");
    for (const std::string name : {"cp", "rm"}) put_in_front_of("/bin/" + name, "noted/" + name);
    WizardRun wizard({{"sh", "-c", "PATH=/run/scratch/noted:$PATH exec " WIZARD_PROGRAM}});
    wizard.walkToTheEnd();
    ASSERT_EQ(wizard.finish(), exited(0));
    std::string notes;
    for (int number = 0; exists("notes/" + std::to_string(number)); ++number)
        notes += link_target("notes/" + std::to_string(number)) + "\n";
    EXPECT_EQ(notes, "teluma \ncp \nrm \nteluma \ncp \nrm \n");
}

}  // namespace
