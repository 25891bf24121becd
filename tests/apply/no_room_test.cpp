// No room for the working copy, or no right to write: no file comes out shorter than it was.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include <string>

#include "apply/file_rewrite.h"
#include "apply/server_config.h"
#include "apply/server_process.h"
#include "apply/server_session.h"
#include "tests/apply/apply_rig.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"

namespace {

class FullDisk : public InstalledServerCase {
  protected:
    FullDisk() { goToSmallDirectory(); }
};

TEST_F(FullDisk, a_working_copy_that_could_not_be_written_whole_is_not_installed) {
    // In one block and in many, so that it is the close that fails, and a write.
    for (const size_t size : {5000u, 500000u}) {
        write_file("/run/scratch/file", "old\n");
        FileRewrite rewrite("/run/scratch/file");
        ASSERT_TRUE(rewrite.isOpen());
        rewrite.write(std::string(size, 'x'));
        EXPECT_EQ(rewrite.install(), 1);
        EXPECT_EQ(read_file("/run/scratch/file"), "old\n");
        EXPECT_FALSE(exists("temp.cfg"));
    }
}

TEST_F(FullDisk, only_a_configuration_that_fits_is_prepared) {
    std::string config = read_file(InstalledServer::config);
    EXPECT_EQ(config_prepare(InstalledServer::config), 0);
    EXPECT_EQ(read_file(InstalledServer::config).size(), config.size() + 5);
    while (config.size() < 5000) config += "# padding\n";
    write_file(InstalledServer::config, config);
    EXPECT_EQ(config_prepare(InstalledServer::config), 1);
    EXPECT_EQ(read_file(InstalledServer::config), config);
    EXPECT_FALSE(exists("temp.cfg"));
}

TEST_F(FullDisk, a_file_whose_original_finds_no_room_beside_it_is_not_touched) {
    const std::string content(3000, 'x');
    write_file("file", content);
    EXPECT_EQ(keep_copy_beside(Descriptor(open("file", O_RDONLY)).get(), "file"), 1);
    EXPECT_EQ(read_file("file"), content);
    EXPECT_FALSE(exists("file.beforewizard"));
    EXPECT_FALSE(exists("file.beforewizard.new"));
}

using ReadOnlyFiles = InstalledServerCase;

TEST_F(ReadOnlyFiles, count_as_missing) {
    write_file(InstalledServer::pid_file, "4711\n");
    checked(mount(nullptr, "/var/opt", nullptr, MS_REMOUNT | MS_RDONLY, nullptr), "mount");
    EXPECT_EQ(server_read_pid(), 1);
    EXPECT_EQ(server_session.pid, 0);
    EXPECT_EQ(config_prepare(InstalledServer::config), 1);
    EXPECT_STREQ(server_session.cli_host, "");
    EXPECT_FALSE(exists("temp.cfg"));
}

}  // namespace
