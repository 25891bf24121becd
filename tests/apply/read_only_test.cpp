// The server's files can be read but not written.

#include <gtest/gtest.h>
#include <sys/mount.h>

#include <string>

#include "apply/server_config.h"
#include "apply/server_process.h"
#include "tests/apply/installed_server_case.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"

namespace {

class ReadOnlyFiles : public InstalledServerCase {
  protected:
    static void makeReadOnly() {
        checked(mount(nullptr, "/var/opt", nullptr, MS_REMOUNT | MS_RDONLY, nullptr), "mount");
    }
};

TEST_F(ReadOnlyFiles, a_pid_file_counts_as_missing) {
    write_file(InstalledServer::pid_file, "4711\n");
    makeReadOnly();
    EXPECT_EQ(server_read_pid(), 1);
    EXPECT_EQ(server_pid, 0);
}

TEST_F(ReadOnlyFiles, a_configuration_cannot_be_prepared) {
    makeReadOnly();
    EXPECT_EQ(config_prepare(InstalledServer::config), 1);
    EXPECT_STREQ(cli_host, "");
    EXPECT_FALSE(exists("temp.cfg"));
}

}  // namespace
