// Files that take long to be copied, that somebody holds back or exchanges, or for which there is
// no room or no right: none keeps anybody waiting, and none comes out shorter than it was.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "apply/file_rewrite.h"
#include "apply/server_config.h"
#include "apply/server_process.h"
#include "apply/server_session.h"
#include "tests/apply/apply_rig.h"
#include "tests/apply/child_processes.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/server_account.h"
#include "wizard/system/signal_gate.h"

namespace {

constexpr const char* config = InstalledServer::config;
constexpr const char* pid_file = InstalledServer::pid_file;

int prepare() { return config_prepare(config); }

int keep() { return keep_copy_beside(Descriptor(open(config, O_RDONLY)).get(), config); }

class LongCopy : public InstalledServerCase {
  protected:
    static constexpr const char* original = "/var/opt/teluma/run/teluma.cfg.beforewizard";
    static constexpr const char* unfinished = "/var/opt/teluma/run/teluma.cfg.beforewizard.new";
    static constexpr int interrupted = 7;

    // How a process ends that returns the result of this while a signal with this handler is
    // waiting to be let in.
    static ExitStatus endOf(int (*piece)(), void (*handler)(int)) {
        return as_user(geteuid(), [&] {
            hold_signal(SIGTERM, handler);
            raise(SIGTERM);
            _exit(piece());
        });
    }
};

TEST_F(LongCopy, of_the_original_can_be_interrupted_and_leaves_nothing_behind) {
    ASSERT_EQ(truncate(config, 64 << 20), 0);
    EXPECT_EQ(endOf(keep, [](int) { std::exit(exists(unfinished) ? interrupted : 1); }),
              exited(interrupted));
    EXPECT_FALSE(exists(unfinished));
    EXPECT_FALSE(exists(original));
}

TEST_F(LongCopy, of_the_original_never_replaces_that_of_another_wizard) {
    EXPECT_EQ(endOf(keep, [](int) { write_file(original, "first"); }), exited(0));
    EXPECT_EQ(read_file(original), "first");
    EXPECT_FALSE(exists(unfinished));
}

TEST_F(LongCopy, of_the_original_never_makes_that_of_another_wizard_count_before_it_is_complete) {
    EXPECT_EQ(endOf(keep,
                    [](int) {
                        unlink(unfinished);
                        write_file(unfinished, "half");
                    }),
              exited(1));
    EXPECT_FALSE(exists(original));
}

// It would be a pid file of root's in which the server's user has written whom to signal.
TEST_F(LongCopy, of_a_file_of_the_servers_user_is_never_roots) {
    if (server_user() == 0) GTEST_SKIP() << "a user namespace without other ids";
    chown(config, server_user(), server_user());
    EXPECT_EQ(
        endOf(keep, [](int) { _exit(std::rename(unfinished, pid_file) == 0 ? interrupted : 1); }),
        exited(interrupted));
    EXPECT_EQ(file_facts(pid_file).owner, server_user());
}

TEST_F(LongCopy, of_the_lines_can_be_interrupted) {
    EXPECT_EQ(
        endOf(prepare,
              [](int) { _exit(exists("temp.cfg") && !exists(unfinished) ? interrupted : 1); }),
        exited(interrupted));
}

TEST_F(LongCopy, of_the_lines_of_a_file_that_is_exchanged_meanwhile_is_copied_over_none) {
    std::filesystem::create_directory("bin");
    write_file("bin/cp", "#!/bin/sh\nmkdir /run/scratch/copied\n", 0755);
    setenv("PATH", (std::filesystem::current_path() / "bin:" += getenv("PATH")).c_str(), 1);
    EXPECT_EQ(
        endOf([] { return prepare() == 1 && *server_session.cli_host == '\0' ? interrupted : 1; },
              [](int) {
                  std::filesystem::rename(config, "/var/opt/teluma/run/away");
                  write_file(config, "other");
              }),
        exited(interrupted));
    EXPECT_FALSE(exists("/run/scratch/copied"));
    EXPECT_EQ(read_file(config), "other");
}

TEST_F(LongCopy, of_a_file_with_somebody_elses_lease_fails_after_five_seconds) {
    if (server_user() == 0) GTEST_SKIP() << "a user namespace without other ids";
    const std::string before = read_file(config);
    chown(config, server_user(), server_user());
    Pipe told = make_pipe();
    // That does not give back a lease, fcntl(2).
    OtherProcess holder(server_user(), [&] {
        std::signal(SIGIO, SIG_IGN);
        if (fcntl(open(config, O_RDWR), F_SETLEASE, F_WRLCK) == -1 ||
            write(told.write_end.get(), "r", 1) != 1)
            _exit(1);
    });
    told.write_end.close();
    char ready = 0;
    ASSERT_EQ(read(told.read_end.get(), &ready, 1), 1);
    EXPECT_EQ(prepare(), 1);
    EXPECT_EQ(waits.sleeps, std::vector<int>(5, 1));
    holder.end();
    EXPECT_EQ(read_file(config), before);
    EXPECT_EQ(prepare(), 0);
}

class FullDisk : public InstalledServerCase {
  protected:
    // Goes to an empty directory in which files can take 4096 bytes in all.
    FullDisk() {
        std::filesystem::create_directory("small");
        checked(mount("none", "small", "tmpfs", 0, "size=4096"), "mount");
        std::filesystem::current_path("small");
    }
};

TEST_F(FullDisk, only_a_configuration_that_fits_is_prepared) {
    std::string content = read_file(config);
    EXPECT_EQ(prepare(), 0);
    EXPECT_EQ(read_file(config).size(), content.size() + 5);
    // In one block and in many, so that it is the close that fails, and a write.
    for (const size_t size : {5000u, 500000u}) {
        while (content.size() < size) content += "# padding\n";
        write_file(config, content);
        EXPECT_EQ(prepare(), 1);
        EXPECT_EQ(read_file(config), content);
        EXPECT_FALSE(exists("temp.cfg"));
    }
}

TEST_F(FullDisk, a_file_whose_original_finds_no_room_beside_it_is_not_touched) {
    const std::string content(5000, 'x');
    // Room for nothing of it, and for some.
    for (const char* room : {"size=8192", "size=12288"}) {
        checked(mount("none", ".", "tmpfs", MS_REMOUNT, room), "mount");
        write_file("file", content);
        EXPECT_EQ(keep_copy_beside(Descriptor(open("file", O_RDONLY)).get(), "file"), 1);
        EXPECT_EQ(read_file("file"), content);
        EXPECT_FALSE(exists("file.beforewizard"));
        EXPECT_FALSE(exists("file.beforewizard.new"));
    }
}

using ReadOnlyFiles = InstalledServerCase;

TEST_F(ReadOnlyFiles, count_as_missing) {
    write_file(pid_file, "4711\n");
    checked(mount(nullptr, "/var/opt", nullptr, MS_REMOUNT | MS_RDONLY, nullptr), "mount");
    EXPECT_EQ(server_read_pid(), 1);
    EXPECT_EQ(server_session.pid, 0);
    EXPECT_EQ(prepare(), 1);
    EXPECT_STREQ(server_session.cli_host, "");
    EXPECT_FALSE(exists("temp.cfg"));
}

}  // namespace
