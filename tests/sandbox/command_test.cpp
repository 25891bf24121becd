// A command in a sandbox runs as it would outside: same arguments, environment and exit status; and
// a sandbox that can't be made says why.

#include <errno.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/sandbox/sandbox.h"

namespace {

// A directory on the path that may not be entered would count as a command that can't be run.
const EnvironmentChanges plain_path = {{"PATH", "/usr/sbin:/usr/bin:/sbin:/bin"}};

TEST(SandboxedCommand, ends_the_sandbox_with_its_status_and_its_output) {
    const CommandResult result = in_sandbox("echo out; echo err >&2; kill -KILL $$");
    EXPECT_EQ(result.status, exited(137));
    EXPECT_EQ(result.out, "out\n");
    EXPECT_EQ(result.err, "err\n");
    for (const auto& [script, status] :
         {std::pair("exit 0", 0), std::pair("exit 77", 77), std::pair("kill -HUP $$", 129)})
        EXPECT_EQ(in_sandbox(script).status, exited(status)) << script;
    EXPECT_EQ(run_command({sandbox_program, "no-such-command"}, plain_path).status, exited(127));
    EXPECT_EQ(run_command({sandbox_program, "/etc/passwd"}).status, exited(126));
    EXPECT_EQ(run_command({sandbox_program, "exit", "3"}, plain_path).status, exited(127))
        << "a builtin of the shell";
}

TEST(SandboxedCommand, gets_its_arguments_unchanged) {
    EXPECT_EQ(run_command({sandbox_program, "--", "printf", "<%s>", "a b", "", "*", "$HOME",
                           "quote'\"", "--standin", "-x", "\\"})
                  .out,
              "<a b><><*><$HOME><quote'\"><--standin><-x><\\>");
}

TEST(SandboxedCommand, gets_the_callers_environment_mask_directory_input_and_signals) {
    const CommandResult result =
        run_command({"sh", "-c", "umask 027; echo typed | \"$@\"", "sh", sandbox_program, "sh",
                     "-c", "cat; echo \"$MARKER $PATH\"; umask; pwd"},
                    {{"MARKER", "kept"}, {"PATH", "/usr/bin:/bin"}});
    EXPECT_EQ(result.out,
              "typed\nkept /usr/bin:/bin\n0027\n" + std::filesystem::current_path().string() + "\n")
        << result.err;
    const std::string signals = "grep -E 'SigBlk|SigIgn' /proc/self/status";
    EXPECT_EQ(in_sandbox(signals).out, run_command({"sh", "-c", signals}).out);
    EXPECT_EQ(in_sandbox("pwd; ls -A", {"--directory", "/run/scratch"}).out, "/run/scratch\n");
}

/// Marks the environment of a sandbox's processes, which no other process then has.
const EnvironmentChanges marked = {{"SANDBOX_TEST_MARK", std::to_string(getpid())}};

/// How many living processes have the mark, the sandbox's own included.
int marked_processes() {
    const std::string mark = "SANDBOX_TEST_MARK=" + std::to_string(getpid()) + '\0';
    int found = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        // That of a process that has ended or belongs to somebody else reads as empty.
        std::ifstream file(entry.path() / "environ", std::ios::binary);
        const std::string environment{std::istreambuf_iterator<char>(file), {}};
        found += environment.find(mark) != std::string::npos ? 1 : 0;
    }
    return found;
}

TEST(SandboxProcesses, are_all_gone_after_the_outer_process_was_killed) {
    const std::string script = "setsid sleep 1000 & trap '' TERM INT HUP; sleep 1000; sleep 1000";
    std::vector<std::string> arguments = {sandbox_program, "sh", "-c", script};
    std::vector<std::string> environment = changed_environment(marked);
    pid_t pid = -1;
    ASSERT_EQ(posix_spawn(&pid, arguments[0].c_str(), nullptr, nullptr,
                          exec_array(arguments).data(), exec_array(environment).data()),
              0);
    // The outer process, the first inside, the command and its two children.
    wait_until([&] { return marked_processes() == 5; }, "the sandbox runs its command");
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    wait_until([&] { return marked_processes() == 0; }, "the sandbox's processes are gone");
}

TEST(SandboxProcesses, that_the_command_leaves_behind_are_gone_when_it_ends) {
    const CommandResult result =
        run_command({sandbox_program, "--standin", standin_package, "sh", "-c",
                     "setsid sleep 1000 & /opt/teluma/bin/teluma && "
                     "kill -0 $(cat /var/opt/teluma/run/teluma.pid) && exit 4"},
                    marked);
    EXPECT_EQ(result.status, exited(4)) << result.err;
    EXPECT_EQ(marked_processes(), 0);
}

TEST(SandboxProcesses, are_numbered_apart_from_those_of_the_host_and_reaped_as_orphans) {
    EXPECT_EQ(in_sandbox("echo $PPID; test $$ -gt 1").out, "1\n");
    const CommandResult listed = in_sandbox("cat /proc/[0-9]*/cmdline");
    EXPECT_NE(listed.out.find("/proc/"), std::string::npos) << "at least cat itself is seen";
    EXPECT_EQ(listed.out.find(program_invocation_short_name), std::string::npos) << listed.out;
    // The orphan ends at once; as a zombie it would keep its entry in /proc for ever.
    const CommandResult orphaned = in_sandbox(
        "orphan=$(sh -c 'sh -c \"exit 0\" >/dev/null & echo $!')\n"
        "tries=0\n"
        "while [ -d /proc/$orphan ] && [ $tries -lt 3000 ]; do sleep 0.01; tries=$((tries + 1)); "
        "done\n"
        "test -n \"$orphan\" && test ! -d /proc/$orphan");
    EXPECT_EQ(orphaned.status, exited(0)) << orphaned.err;
}

void expect_refusal(std::vector<std::string> arguments, const std::string& reason) {
    arguments.insert(arguments.begin(), sandbox_program);
    const CommandResult result = run_command(arguments);
    EXPECT_EQ(result.status, exited(125)) << reason;
    EXPECT_EQ(result.out, "") << "the command must not have run";
    EXPECT_NE(result.err.find(reason), std::string::npos) << result.err;
}

TEST(SandboxRefusal, says_what_is_wrong) {
    expect_refusal({}, "no command given");
    expect_refusal({"--domain", "example.com"}, "no command given");
    expect_refusal({"--domain"}, "--domain needs a value");
    expect_refusal({"--no-such-option", "echo", "ran"}, "--no-such-option");
    expect_refusal({"--standin", "/usr", "echo", "ran"}, "no stand-in server");
    expect_refusal({"--sendmail", "maybe", "echo", "ran"}, "--sendmail");
    expect_refusal({"--sendmail", "link=", "echo", "ran"}, "--sendmail");
    for (const char* list :
         {"eth0", "eth0=", "=10.0.0.1/8", "eth0=10.0.0.1", "eth0=10.0.0.1/8 lan"})
        expect_refusal({"--interfaces", list, "echo", "ran"}, "NAME=ADDRESS/BITS");
    expect_refusal({"--interfaces", "eth0=10.0.0.1/8 eth0=10.0.0.2/8", "echo", "ran"},
                   "making the interfaces");
    expect_refusal({"--directory", "/no/such/directory", "echo", "ran"}, "/no/such/directory");
    // The kernel lays no more than two overlays over each other.
    expect_refusal({sandbox_program, sandbox_program, sandbox_program, "echo", "ran"},
                   "keeping changes of /etc in memory");
    // Every sandbox has a directory below /run, so one inside another can show this without
    // touching the host.
    expect_refusal({"sh", "-c",
                    "mkdir /run/package && cp '" + standin_package + "/install' /run/package && '" +
                        sandbox_program + "' --standin /run/package -- echo ran"},
                   "/run/package is out of sight");
}

// Makes a sandbox in a user namespace of its own, as user `id` of it, after the shell command
// `forbid` has forbidden further namespaces there.
CommandResult sandbox_where(const std::string& forbid, const std::string& id) {
    return run_command({"unshare", "--user", "--map-user=" + id, "--map-group=" + id, "--keep-caps",
                        "sh", "-c", forbid + " && exec \"$@\"", "sh", sandbox_program, "echo",
                        "ran"});
}

TEST(SandboxRefusal, names_the_setting_or_the_capability_that_is_missing) {
    if (run_command({"unshare", "--user", "true"}).status != exited(0))
        GTEST_SKIP() << "needs a user namespace in which to forbid namespaces";
    const CommandResult user = sandbox_where("echo 0 >/proc/sys/user/max_user_namespaces", "1000");
    EXPECT_EQ(user.status, exited(125));
    EXPECT_NE(user.err.find("Run the command as root (sudo)"), std::string::npos) << user.err;
    EXPECT_NE(user.err.find("sysctl -w user.max_user_namespaces="), std::string::npos) << user.err;
    const CommandResult root = sandbox_where("echo 0 >/proc/sys/user/max_mnt_namespaces", "0");
    EXPECT_EQ(root.status, exited(125));
    EXPECT_NE(root.err.find("SYS_ADMIN"), std::string::npos) << root.err;
}

}  // namespace
