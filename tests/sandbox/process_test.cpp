// The processes of a sandbox: who reaps them and what ends them.

#include <errno.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/sandbox/sandbox.h"
#include "tests/support/wait_until.h"

namespace {

// A sandbox that runs until it is killed, started without waiting for it.
class RunningSandbox {
  public:
    explicit RunningSandbox(const std::string& script) {
        std::vector<std::string> arguments = {sandbox_program(), "sh", "-c", script};
        std::vector<std::string> environment = changed_environment(mark.environment());
        const int error = posix_spawn(&pid, arguments[0].c_str(), nullptr, nullptr,
                                      exec_array(arguments).data(), exec_array(environment).data());
        EXPECT_EQ(error, 0);
    }
    ~RunningSandbox() { killOuterProcess(); }
    RunningSandbox(const RunningSandbox&) = delete;
    RunningSandbox& operator=(const RunningSandbox&) = delete;

    void killOuterProcess() {
        if (pid <= 0)
            return;
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
        pid = -1;
    }

    size_t processes() const { return mark.carriers().size(); }

  private:
    ProcessMark mark;
    pid_t pid = -1;
};

TEST(SandboxProcesses, are_all_gone_after_the_outer_process_was_killed) {
    RunningSandbox sandbox("setsid sleep 1000 & trap '' TERM INT HUP; sleep 1000; sleep 1000");
    // The outer process, the first inside, the command and its two children.
    wait_until([&] { return sandbox.processes() == 5; }, "the sandbox runs its command");
    sandbox.killOuterProcess();
    wait_until([&] { return sandbox.processes() == 0; }, "the sandbox's processes are gone");
}

TEST(SandboxProcesses, are_numbered_apart_with_the_command_not_the_first) {
    const CommandResult result = in_sandbox("echo $PPID; test $$ -gt 1");
    EXPECT_EQ(result.status, exited(0));
    EXPECT_EQ(result.out, "1\n");
}

TEST(SandboxProcesses, do_not_see_those_of_the_host) {
    const CommandResult result = in_sandbox("cat /proc/[0-9]*/cmdline");
    EXPECT_NE(result.out.find("/proc/"), std::string::npos) << "at least cat itself is seen";
    EXPECT_EQ(result.out.find(program_invocation_short_name), std::string::npos) << result.out;
}

TEST(SandboxProcesses, orphaned_by_their_parent_are_reaped_when_they_end) {
    // The orphan ends at once; as a zombie it would keep its entry in /proc for ever.
    const CommandResult result = in_sandbox(
        "orphan=$(sh -c 'sh -c \"exit 0\" >/dev/null & echo $!')\n"
        "tries=0\n"
        "while [ -d /proc/$orphan ] && [ $tries -lt 3000 ]; do sleep 0.01; tries=$((tries + 1)); "
        "done\n"
        "test -n \"$orphan\" && test ! -d /proc/$orphan");
    EXPECT_EQ(result.status, exited(0)) << result.err;
}

TEST(SandboxProcesses, left_running_do_not_delay_the_end_of_the_command) {
    const CommandResult result = in_sandbox("setsid sleep 1000 & exit 4");
    EXPECT_EQ(result.status, exited(4));
}

}  // namespace
