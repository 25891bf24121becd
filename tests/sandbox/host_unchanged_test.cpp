// What happens in a sandbox stays in it: the host is the same before and after.

#include <gtest/gtest.h>

#include "tests/sandbox/host_listing.h"
#include "tests/sandbox/sandbox.h"
#include "tests/support/wait_until.h"

namespace {

// Changes everything that the sandbox has a private view of, and ends with an error if it can't.
const char change_everything[] = R"sh(
set -e
for directory in /opt /var/opt /etc /usr/sbin /run /dev/shm; do
    echo changed >$directory/left_by_a_test
done
rm /etc/hosts /usr/sbin/sendmail
mv /etc/passwd /etc/group /opt
ln -s /opt/passwd /etc/passwd
chmod 700 /etc /usr/sbin /opt /var/opt
touch /etc /usr/sbin /opt /var/opt
hostname changed.example.com
domainname changed.example.com
ip link add changed0 type veth peer name changed1
ip link set lo down
mount -t tmpfs none /mnt
umount /var/opt
)sh";

// Options under which setting up a sandbox itself has the most to do.
const std::vector<std::string> busy_options = {
    "--standin",  standin_package(),  "--domain",     "example.com",
    "--sendmail", "link=/etc/passwd", "--interfaces", "eth0=10.1.2.3/8 lan0=192.168.1.1/24:down"};

TEST(SandboxedChanges, leave_files_mounts_interfaces_and_names_of_the_host_as_they_were) {
    const std::string before = list_host();
    const CommandResult result = in_sandbox(change_everything, busy_options);
    EXPECT_EQ(result.status, exited(0)) << result.err;
    EXPECT_EQ(list_host(), before);
}

TEST(SandboxedChanges, leave_the_host_as_it_was_when_the_sandbox_could_not_be_completed) {
    const std::string before = list_host();
    const CommandResult result = in_sandbox("true", {"--interfaces", "eth0=300.1.2.3/8"});
    EXPECT_EQ(result.status, exited(125)) << result.err;
    EXPECT_EQ(list_host(), before);
}

TEST(SandboxedProcesses, that_the_command_leaves_behind_are_gone_when_it_ends) {
    const ProcessMark mark;
    const std::string leave_daemons = "for n in 1 2 3; do setsid sleep 1000 & done";
    const CommandResult result =
        run_command({sandbox_program(), "sh", "-c", leave_daemons}, mark.environment());
    EXPECT_EQ(result.status, exited(0)) << result.err;
    EXPECT_EQ(mark.carriers(), std::vector<int>());
}

TEST(SandboxedProcesses, include_the_server_that_the_command_started) {
    const ProcessMark mark;
    const CommandResult result =
        run_command({sandbox_program(), "--standin", standin_package(), "sh", "-c",
                     "/opt/teluma/bin/teluma && kill -0 $(cat /var/opt/teluma/run/teluma.pid)"},
                    mark.environment());
    EXPECT_EQ(result.status, exited(0)) << result.err;
    EXPECT_EQ(mark.carriers(), std::vector<int>());
}

}  // namespace
