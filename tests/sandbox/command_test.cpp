// A command in a sandbox runs as it would outside: same arguments, environment and exit status.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "tests/sandbox/sandbox.h"

namespace {

// A directory on the path that may not be entered would count as a command that can't be run.
const EnvironmentChanges plain_path = {{"PATH", "/usr/sbin:/usr/bin:/sbin:/bin"}};

TEST(SandboxedCommand, passes_its_exit_status_on) {
    EXPECT_EQ(in_sandbox("exit 0").status, exited(0));
    EXPECT_EQ(in_sandbox("exit 1").status, exited(1));
    EXPECT_EQ(in_sandbox("exit 77").status, exited(77));
}

TEST(SandboxedCommand, killed_by_a_signal_gives_128_and_the_signals_number) {
    EXPECT_EQ(in_sandbox("kill -KILL $$").status, exited(137));
    EXPECT_EQ(in_sandbox("kill -TERM $$").status, exited(143));
    EXPECT_EQ(in_sandbox("kill -INT $$").status, exited(130));
    EXPECT_EQ(in_sandbox("kill -HUP $$").status, exited(129));
}

TEST(SandboxedCommand, killed_by_a_signal_adds_no_words_to_the_commands_output) {
    const CommandResult result = in_sandbox("echo out; echo err >&2; kill -KILL $$");
    EXPECT_EQ(result.out, "out\n");
    EXPECT_EQ(result.err, "err\n");
}

TEST(SandboxedCommand, that_does_not_exist_gives_127) {
    const CommandResult result = run_command({sandbox_program(), "no-such-command"}, plain_path);
    EXPECT_EQ(result.status, exited(127));
    EXPECT_NE(result.err.find("no-such-command"), std::string::npos) << result.err;
}

TEST(SandboxedCommand, that_is_not_executable_gives_126) {
    EXPECT_EQ(run_command({sandbox_program(), "/etc/passwd"}).status, exited(126));
}

TEST(SandboxedCommand, with_the_name_of_a_shell_builtin_is_still_looked_for_on_the_path) {
    EXPECT_EQ(run_command({sandbox_program(), "exit", "3"}, plain_path).status, exited(127));
}

TEST(SandboxedCommand, gets_its_arguments_unchanged) {
    const std::vector<std::string> odd = {"a b",      "",          "*",  "$HOME",
                                          "quote'\"", "--standin", "-x", "\\"};
    std::vector<std::string> command = {sandbox_program(), "--", "printf", "<%s>"};
    command.insert(command.end(), odd.begin(), odd.end());
    std::string expected;
    for (const std::string& argument : odd)
        expected += "<" + argument + ">";
    EXPECT_EQ(run_command(command).out, expected);
}

TEST(SandboxedCommand, gets_the_callers_environment_and_file_mode_mask) {
    const CommandResult result =
        run_command({"sh", "-c", "umask 027; exec \"$@\"", "sh", sandbox_program(), "sh", "-c",
                     "echo \"$MARKER $PATH\"; umask"},
                    {{"MARKER", "kept"}, {"PATH", "/usr/bin:/bin"}});
    EXPECT_EQ(result.out, "kept /usr/bin:/bin\n0027\n") << result.err;
}

TEST(SandboxedCommand, starts_in_the_callers_directory) {
    EXPECT_EQ(in_sandbox("pwd").out, std::filesystem::current_path().string() + "\n");
}

TEST(SandboxedCommand, starts_in_a_directory_of_the_private_view_when_told_so) {
    const CommandResult result = in_sandbox("pwd; ls -A", {"--directory", "/run/scratch"});
    EXPECT_EQ(result.out, "/run/scratch\n") << result.err;
}

TEST(SandboxedCommand, reads_the_callers_standard_input) {
    const CommandResult result =
        run_command({"sh", "-c", "echo typed | \"$1\" cat", "sh", sandbox_program()});
    EXPECT_EQ(result.out, "typed\n") << result.err;
}

TEST(SandboxedCommand, has_the_same_signals_blocked_and_ignored_as_outside) {
    const std::string command = "grep -E 'SigBlk|SigIgn' /proc/self/status";
    const CommandResult outside = run_command({"sh", "-c", command});
    EXPECT_EQ(outside.status, exited(0));
    EXPECT_EQ(in_sandbox(command).out, outside.out);
}

}  // namespace
