// Sandboxes that run at the same time do not meet.

#include <gtest/gtest.h>

#include <future>

#include "tests/sandbox/sandbox.h"
#include "tests/support/files.h"

namespace {

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
    const int count = 4;
    std::vector<std::future<CommandResult>> running;
    running.reserve(count);
    for (int number = 0; number < count; ++number)
        running.push_back(std::async(std::launch::async, [&barrier, number] {
            return run_command({sandbox_program(), "--standin", standin_package(), "--", "sh", "-c",
                                occupy_and_look, "sh", "sandbox" + std::to_string(number), barrier,
                                std::to_string(count)});
        }));
    for (std::future<CommandResult>& sandbox : running) {
        const CommandResult result = sandbox.get();
        EXPECT_EQ(result.status, exited(0)) << result.out << result.err;
    }
}

}  // namespace
