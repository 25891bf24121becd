// In a sandbox whose /tmp and /var/tmp are its own and empty, as its /run is.

#include "wizard/system/private_directory.h"

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "apply/shell_command.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/server_account.h"

namespace {

std::string current_directory() { return std::filesystem::current_path(); }

std::string parent_of(const std::string& path) { return std::filesystem::path(path).parent_path(); }

void mount_memory(const char* path, unsigned long flags = 0) {
    checked(mount("none", path, "tmpfs", flags, "mode=1777"), "mount");
}

class PrivateDirectory : public testing::Test {
  protected:
    PrivateDirectory() {
        for (const char* parent : {"/tmp", "/var/tmp"}) mount_memory(parent);
    }

    // In a process of its own: enters the directory, does something there and ends through exit().
    // Returns what `action` returns.
    static bool inside(const std::function<bool()>& action) {
        const auto enter_and_act = [&] {
            enter_private_directory();
            std::exit(action() ? 0 : 1);
        };
        return as_user(geteuid(), enter_and_act) == exited(0);
    }

    // Where it was made; written down by the process that was there, which has left a working copy.
    static std::string place() {
        EXPECT_TRUE(inside([] {
            write_file("temp.cfg", "half");
            const std::string here = current_directory();
            leave_private_directory_in_child();
            write_file("place", here);
            return chdir(here.c_str()) == 0;
        }));
        return read_file("place");
    }
};

TEST_F(PrivateDirectory, is_the_current_one_and_closed_to_everybody_else_whatever_the_mask) {
    umask(0);
    EXPECT_TRUE(inside([] {
        const FileFacts facts = file_facts(current_directory());
        return parent_of(current_directory()) == "/run" && facts.mode == 0700 &&
               facts.owner == getuid() && std::filesystem::is_empty(".");
    }));
}

TEST_F(PrivateDirectory, lets_no_other_user_read_a_file_in_it) {
    if (chown("/run/scratch", 12, 12) != 0) GTEST_SKIP() << "a user namespace without other ids";
    EXPECT_TRUE(inside([] {
        const std::string copy = current_directory() + "/temp.cfg";
        write_file("temp.cfg", "secret", 0666);
        return setgid(12) == 0 && setuid(12) == 0 && access(copy.c_str(), F_OK) == -1;
    }));
}

TEST_F(PrivateDirectory, has_another_name_every_time_and_is_gone_at_the_end) {
    EXPECT_NE(place(), place());
    EXPECT_EQ(private_directories("/run"), 0);
}

TEST_F(PrivateDirectory, that_has_been_removed_is_made_anew_and_is_gone_at_the_end) {
    write_file("/run/scratch/temp.cfg", "the user's");
    EXPECT_TRUE(inside([] {
        const std::string removed = current_directory();
        rmdir(removed.c_str());
        enter_private_directory();
        return current_directory() != removed && private_directories("/run") == 1;
    }));
    EXPECT_EQ(private_directories("/run"), 0);
    EXPECT_EQ(read_file("/run/scratch/temp.cfg"), "the user's");
}

TEST_F(PrivateDirectory, remembers_where_the_program_was_started_for_commands_of_the_servers) {
    EXPECT_TRUE(inside([] {
        enter_private_directory();
        const bool named = name_from_start("a/b") == "/run/scratch/a/b" &&
                           name_from_start("/a") == "/a" && name_from_start("").empty();
        return named && run_server_command("[ $(pwd -P) = /run/scratch ]") == 0;
    }));
}

// As a home on another host, where root counts as nobody.
TEST_F(PrivateDirectory, is_entered_also_from_a_directory_that_cannot_be_opened) {
    if (server_user() == 0) GTEST_SKIP() << "a user namespace without other ids";
    chmod(".", 0);
    const auto enter_and_leave = [] {
        enter_private_directory();
        const bool entered = parent_of(current_directory()) == "/tmp";
        leave_private_directory_in_child();
        std::exit(entered && current_directory() == "/" ? 0 : 1);
    };
    EXPECT_EQ(as_user(server_user(), enter_and_leave), exited(0));
    EXPECT_EQ(private_directories("/tmp"), 0);
}

TEST_F(PrivateDirectory, has_no_name_for_a_file_in_a_directory_that_is_gone) {
    mkdir("gone", 0755);
    checked(chdir("gone"), "chdir");
    rmdir("/run/scratch/gone");
    EXPECT_TRUE(
        inside([] { return name_from_start("a").empty() && name_from_start("/a") == "/a"; }));
}

TEST_F(PrivateDirectory, is_made_elsewhere_when_there_is_no_room_in_run) {
    mount_memory("/run", MS_RDONLY);
    EXPECT_EQ(parent_of(place()), "/tmp");
    EXPECT_EQ(private_directories("/tmp"), 0);
    mount_memory("/tmp", MS_RDONLY);
    EXPECT_EQ(parent_of(place()), "/var/tmp");
    EXPECT_EQ(private_directories("/var/tmp"), 0);
}

TEST_F(PrivateDirectory, that_can_be_made_nowhere_leaves_the_program_where_it_was) {
    for (const char* parent : {"/run", "/tmp", "/var/tmp"}) mount_memory(parent, MS_RDONLY);
    EXPECT_TRUE(inside(
        [] { return current_directory() == "/run/scratch" && name_from_start("a") == "a"; }));
}

}  // namespace
