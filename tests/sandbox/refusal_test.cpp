// What a sandbox says when it can't be made: always status 125, and what to do about it.

#include <gtest/gtest.h>

#include "tests/sandbox/sandbox.h"

namespace {

void expect_refusal(const CommandResult& result, const std::string& reason) {
    EXPECT_EQ(result.status, exited(125));
    EXPECT_EQ(result.out, "") << "the command must not have run";
    EXPECT_NE(result.err.find(reason), std::string::npos) << result.err;
}

TEST(SandboxRefusal, of_a_missing_command) {
    expect_refusal(run_command({sandbox_program()}), "no command given");
    expect_refusal(run_command({sandbox_program(), "--domain", "example.com"}), "no command given");
}

TEST(SandboxRefusal, of_an_unknown_option) {
    expect_refusal(in_sandbox("echo ran", {"--no-such-option"}), "--no-such-option");
}

TEST(SandboxRefusal, of_an_option_without_its_value) {
    expect_refusal(run_command({sandbox_program(), "--domain"}), "--domain needs a value");
}

TEST(SandboxRefusal, of_a_directory_without_a_stand_in_server) {
    expect_refusal(in_sandbox("echo ran", {"--standin", "/usr"}), "no stand-in server");
}

TEST(SandboxRefusal, of_an_unknown_state_of_sendmail) {
    expect_refusal(in_sandbox("echo ran", {"--sendmail", "maybe"}), "--sendmail");
    expect_refusal(in_sandbox("echo ran", {"--sendmail", "link="}), "--sendmail");
}

TEST(SandboxRefusal, of_an_interface_that_is_not_well_written) {
    for (const char* list :
         {"eth0", "eth0=", "=10.0.0.1/8", "eth0=10.0.0.1", "eth0=10.0.0.1/8 lan"})
        expect_refusal(in_sandbox("echo ran", {"--interfaces", list}), "NAME=ADDRESS/BITS");
}

TEST(SandboxRefusal, of_an_interface_that_the_kernel_does_not_take) {
    expect_refusal(in_sandbox("echo ran", {"--interfaces", "eth0=10.0.0.1/8 eth0=10.0.0.2/8"}),
                   "making the interfaces");
}

TEST(SandboxRefusal, of_a_directory_that_is_not_there) {
    expect_refusal(in_sandbox("echo ran", {"--directory", "/no/such/directory"}),
                   "/no/such/directory");
}

TEST(SandboxRefusal, of_a_stand_in_in_a_place_that_the_sandbox_covers) {
    // Every sandbox has a directory below /run, so one inside another can show this without
    // touching the host.
    const std::string script = "mkdir /run/package && cp '" + standin_package() +
                               "/install' /run/package && '" + sandbox_program() +
                               "' --standin /run/package -- echo ran";
    expect_refusal(in_sandbox(script), "/run/package is out of sight");
}

TEST(SandboxRefusal, of_a_step_of_the_setting_up_names_the_step) {
    // The kernel lays no more than two overlays over each other.
    const std::string enter = sandbox_program();
    expect_refusal(run_command({enter, enter, enter, enter, "echo", "ran"}),
                   "keeping changes of /etc in memory");
}

// Runs the shell command `forbid` in a user namespace of its own, as user `id` of it and able to
// forbid further namespaces there, then tries to make a sandbox.
CommandResult sandbox_where(const std::string& forbid, const std::string& id) {
    return run_command({"unshare", "--user", "--map-user=" + id, "--map-group=" + id, "--keep-caps",
                        "sh", "-c", forbid + " && exec \"$@\"", "sh", sandbox_program(), "echo",
                        "ran"});
}

bool user_namespaces_allowed() {
    return run_command({"unshare", "--user", "true"}).status == exited(0);
}

TEST(SandboxRefusal, of_an_ordinary_user_names_the_setting_of_the_kernel_that_forbids_it) {
    if (!user_namespaces_allowed())
        GTEST_SKIP() << "needs a user namespace in which to forbid user namespaces";
    const CommandResult result =
        sandbox_where("echo 0 >/proc/sys/user/max_user_namespaces", "1000");
    expect_refusal(result, "Run the command as root (sudo)");
    expect_refusal(result, "sysctl -w user.max_user_namespaces=");
}

TEST(SandboxRefusal, of_a_root_without_the_right_to_make_namespaces_names_the_capabilities) {
    if (!user_namespaces_allowed())
        GTEST_SKIP() << "needs a user namespace in which to forbid mount namespaces";
    expect_refusal(sandbox_where("echo 0 >/proc/sys/user/max_mnt_namespaces", "0"), "SYS_ADMIN");
}

TEST(SandboxHelp, prints_the_options_and_makes_no_sandbox) {
    const CommandResult result = run_command({sandbox_program(), "--help"});
    EXPECT_EQ(result.status, exited(0));
    EXPECT_NE(result.out.find("Usage: sandbox/enter"), std::string::npos);
    EXPECT_NE(result.out.find("--interfaces LIST"), std::string::npos);
}

}  // namespace
