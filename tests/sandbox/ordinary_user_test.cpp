// An ordinary user gets a sandbox by a user namespace, or is told what stands in the way.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "tests/sandbox/host_listing.h"
#include "tests/sandbox/sandbox.h"
#include "tests/support/files.h"

namespace {

// Runs sandboxes as a user who is not root: as another one if the tests are run by root.
class OrdinaryUser : public testing::Test {
  protected:
    // The checkout and the build may be in a directory that only root may enter.
    void SetUp() override {
        const auto copied = std::filesystem::copy_options::recursive;
        const auto entry = std::filesystem::path(sandbox_program());
        std::filesystem::copy(entry.parent_path(), sandbox_copy, copied);
        std::filesystem::copy(standin_package(), standin_copy, copied);
        run_command({"chmod", "-R", "a+rX", directory.path()});
    }

    CommandResult inSandbox(const std::string& script, const std::string& from = "/") const {
        std::vector<std::string> command = {"env", "--chdir", from};
        if (geteuid() == 0)
            command.insert(command.end(), {"setpriv", "--reuid", "12345", "--regid", "12345",
                                           "--clear-groups", "--inh-caps=-all", "--"});
        command.insert(command.end(), {sandbox_copy + "/enter", "--standin", standin_copy, "--",
                                       "sh", "-c", script});
        return run_command(command);
    }

    // Expects status 0, or a refusal that says what to do.
    static void expectSuccessOrAdvice(const CommandResult& result) {
        if (result.status == exited(125))
            EXPECT_NE(result.err.find("as root"), std::string::npos) << result.err;
        else
            EXPECT_EQ(result.status, exited(0)) << result.out << result.err;
    }

  private:
    TempDir directory;
    std::string sandbox_copy = directory / "sandbox";
    std::string standin_copy = directory / "standin";
};

TEST_F(OrdinaryUser, is_root_in_the_sandbox_and_so_is_the_servers_user) {
    expectSuccessOrAdvice(
        inSandbox("test $(id -u) = 0 && test $(id -u teluma) = 0 &&"
                  " chown teluma:teluma /opt/teluma/bin/sendmail"));
}

TEST_F(OrdinaryUser, can_change_every_private_place) {
    expectSuccessOrAdvice(
        inSandbox("for directory in /opt /var/opt /etc /usr/sbin /run; do"
                  "    echo changed >$directory/left_by_a_test || exit 1; "
                  "done; mv /usr/sbin/sendmail /usr/sbin/moved && rm /etc/hosts"));
}

TEST_F(OrdinaryUser, can_start_the_server_which_ends_with_the_sandbox) {
    expectSuccessOrAdvice(
        inSandbox("/opt/teluma/bin/teluma && ip address show eth1 | grep 10.20.0.5"));
}

TEST_F(OrdinaryUser, may_start_from_a_directory_that_is_closed_to_them) {
    const TempDir closed;
    expectSuccessOrAdvice(inSandbox("true", closed.path()));
}

TEST_F(OrdinaryUser, leaves_the_host_as_it_was) {
    const std::string before = list_host();
    expectSuccessOrAdvice(inSandbox("rm /etc/hosts && domainname changed.example.com"));
    EXPECT_EQ(list_host(), before);
}

}  // namespace
