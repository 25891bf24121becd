// What happens in a sandbox stays in it: the host is the same before and after, for an ordinary
// user too, and sandboxes that run at the same time do not meet.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <future>

#include "tests/sandbox/sandbox.h"
#include "tests/support/files.h"

namespace {

// All that a sandbox could change of its host, one line for each fact.
std::string list_host() {
    return run_command(
               {"sh", "-c",
                "find /etc /usr/sbin /opt /var/opt -printf '%p %y %m %U:%G %s %T@ %C@ %l\\n'"
                " 2>/dev/null | sort; cat /proc/self/mountinfo; hostname; domainname; "
                "PATH=$PATH:/usr/sbin:/sbin; ip -brief address; ip -brief link"})
        .out;
}

// Changes all that the sandbox has a private view of, or fails.
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
    "--standin",  standin_package,    "--domain",     "example.com",
    "--sendmail", "link=/etc/passwd", "--interfaces", "eth0=10.1.2.3/8 lan0=192.168.1.1/24:down"};

TEST(SandboxedChanges, leave_files_mounts_interfaces_and_names_of_the_host_as_they_were) {
    const std::string before = list_host();
    const CommandResult result = in_sandbox(change_everything, busy_options);
    EXPECT_EQ(result.status, exited(0)) << result.err;
    EXPECT_EQ(in_sandbox("true", {"--interfaces", "eth0=300.1.2.3/8"}).status, exited(125));
    EXPECT_EQ(list_host(), before);
}

// Runs sandboxes as a user who is not root: as another one if the tests are run by root.
class OrdinaryUser : public testing::Test {
  protected:
    // The checkout and the build may be in a directory that only root may enter.
    void SetUp() override {
        const auto copied = std::filesystem::copy_options::recursive;
        const auto entry = std::filesystem::path(sandbox_program);
        std::filesystem::copy(entry.parent_path(), directory / "sandbox", copied);
        std::filesystem::copy(standin_package, directory / "standin", copied);
        run_command({"chmod", "-R", "a+rX", directory.path()});
    }

    TempDir directory;
};

TEST_F(OrdinaryUser, is_root_in_the_sandbox_can_change_everything_and_start_the_server) {
    const std::string before = list_host();
    const TempDir closed;
    std::vector<std::string> command = {"env", "--chdir", closed.path()};
    if (geteuid() == 0)
        command.insert(command.end(), {"setpriv", "--reuid", "12345", "--regid", "12345",
                                       "--clear-groups", "--inh-caps=-all", "--"});
    command.insert(
        command.end(),
        {directory / "sandbox/enter", "--standin", directory / "standin", "--", "sh", "-c",
         "set -e; test $(id -u) = 0; test $(id -u teluma) = 0;"
         "chown teluma:teluma /opt/teluma/bin/sendmail; /opt/teluma/bin/teluma;"
         "PATH=$PATH:/usr/sbin:/sbin; ip address show eth1 | grep 10.20.0.5" +
             std::string(change_everything)});
    const CommandResult result = run_command(command);
    if (result.status == exited(125))
        EXPECT_NE(result.err.find("as root"), std::string::npos) << result.err;
    else
        EXPECT_EQ(result.status, exited(0)) << result.out << result.err;
    EXPECT_EQ(list_host(), before);
}

// Takes the server's port, every private place and a name, waits at the file $2 until all $3
// sandboxes have done so, and then looks whether anybody else was there.
const char occupy_and_look[] = R"sh(
name=$1
for directory in /opt /var/opt /etc /usr/sbin /run /dev/shm; do
    test ! -e $directory/occupied || exit 1
    echo $name >$directory/occupied
done
domainname $name
ip link add only type veth peer name there || exit 2
/opt/teluma/bin/teluma || exit 3
echo $name >>"$2"
tries=0
while [ $(wc -l <"$2") -lt $3 ]; do
    tries=$((tries + 1))
    [ $tries -lt 3000 ] || exit 4
    sleep 0.01
done
for directory in /opt /var/opt /etc /usr/sbin /run /dev/shm; do
    test "$(cat $directory/occupied)" = $name || exit 5
done
test "$(domainname)" = $name || exit 6
)sh";

TEST(ParallelSandboxes, have_files_ports_interfaces_and_names_of_their_own) {
    const TempDir directory;
    const std::string barrier = directory / "barrier";
    const auto run = [&](const std::string& name) {
        return run_command({sandbox_program, "--standin", standin_package, "--", "sh", "-c",
                            occupy_and_look, "sh", name, barrier, "2"});
    };
    std::future<CommandResult> first = std::async(std::launch::async, run, "first");
    const CommandResult second = run("second");
    EXPECT_EQ(first.get().status, exited(0));
    EXPECT_EQ(second.status, exited(0)) << second.err;
}

}  // namespace
