// The helpers for processes and waiting.

#include "tests/support/process.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <system_error>

#include "tests/support/failure_of.h"

namespace {

TEST(RunCommand, returns_all_of_both_outputs_and_the_exit_status) {
    const CommandResult result =
        run_command({"sh", "-c", "echo out; echo err >&2; head -c 1000000 /dev/zero; exit 7"});
    EXPECT_EQ(result.out, "out\n" + std::string(1000000, '\0'));
    EXPECT_EQ(result.err, "err\n");
    EXPECT_EQ(result.status, exited(7));
    EXPECT_EQ(run_command({"sh", "-c", "kill -TERM $$"}).status, killed_by(SIGTERM));
    EXPECT_THROW(run_command({"/no/such/command"}), std::system_error);
}

TEST(RunCommand, passes_changes_of_the_environment_and_an_empty_standard_input) {
    setenv("SAMPLE_REMOVED", "yes", 1);
    const CommandResult result =
        run_command({"sh", "-c", "echo $SAMPLE_SET-$SAMPLE_REMOVED-; cat"},
                    {{"SAMPLE_SET", "a b"}, {"SAMPLE_REMOVED", std::nullopt}});
    unsetenv("SAMPLE_REMOVED");
    EXPECT_EQ(result.out, "a b--\n");
}

TEST(RunCommand, waits_for_the_command_alone_and_not_for_ever) {
    const CommandResult daemon = run_command({"sh", "-c", "sleep 1000 & echo $!"});
    EXPECT_EQ(daemon.status, exited(0));
    EXPECT_EQ(kill(std::stoi(daemon.out), SIGKILL), 0);
    const Impatience impatience;
    const std::string failure = failure_of([] {
        run_command({"sh", "-c", "echo started; exec sleep 1000"});
    });
    EXPECT_NE(failure.find("waited in vain for the end of sh; it had written:\nstarted"),
              std::string::npos)
        << failure;
}

TEST(WaitUntil, fails_the_test_with_the_description_when_patience_is_over) {
    const Impatience impatience;
    EXPECT_EQ(failure_of([] { wait_until([] { return false; }, "the file was there"); }),
              "Failed\nwaited in vain until the file was there");
}

}  // namespace
