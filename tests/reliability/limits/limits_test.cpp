// The limits that the wizard is started with, ulimit(1): few descriptors, or many that are open
// already; files that may not become as large as those that it rewrites.

#include <gtest/gtest.h>

#include "tests/e2e/apply_test.h"
#include "tests/e2e/endings.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/local_port.h"
#include "tests/support/wait_until.h"

namespace {

// The search for leaks is left out: it takes descriptors of its own, and may wait for ever without.
std::string wizard_with_limits(const std::string& limits) {
    return "LSAN_OPTIONS=detect_leaks=0 exec prlimit --core=512:1024 --nofile=" + limits +
           " " WIZARD_PROGRAM;
}

// A port whose program keeps every connection of the wizard's.
class RetriedPort : public testing::Test {
  protected:
    RetriedPort() {
        server.start();
        program.open();
    }

    // Whether the port comes to count as free by so many retries.
    bool isFreed(WizardRun& wizard, int retries) {
        const auto counts_as_free = [&] { return wizard.image().shows(title_of(Stop::smtp)); };
        wizard.walk(Stop::password, Stop::webadmin);
        wizard.answerListener(Stop::webadmin, {});
        for (;; --retries) {
            wait_until([&] { return program.takeAll() > 0 || counts_as_free(); }, "it was tried");
            wizard.waitForKey();
            if (counts_as_free() || retries == 0) return counts_as_free();
            wizard.press(Key::enter);
        }
    }

    InstalledServer server;
    LocalPort program{9000};
};

TEST_F(RetriedPort, stays_taken_beyond_the_soft_limit_of_descriptors) {
    WizardRun wizard({{"sh", "-c", wizard_with_limits("30:4096")}});
    EXPECT_FALSE(isFreed(wizard, 40));
    program.close();
    wizard.press(Key::enter);
    wizard.walkToTheEnd({}, Stop::smtp);
    EXPECT_EQ(wizard.finish(), exited(0));
}

TEST_F(RetriedPort, that_has_taken_all_descriptors_keeps_the_server_from_being_touched) {
    const std::string config = read_file(InstalledServer::config);
    const Lines log = server.log();
    WizardRun wizard({{"sh", "-c", wizard_with_limits("30:30")}});
    ASSERT_TRUE(isFreed(wizard, 40));
    wizard.walkToTheEnd({}, Stop::smtp);
    wizard.dismissError(login_message);
    EXPECT_TRUE(ends_with(wizard, exited(1), ""));
    EXPECT_TRUE(server.isRunning());
    EXPECT_EQ(server.log(), log);
    EXPECT_EQ(read_file(InstalledServer::config), config);
}

// Of a command that opens 2,000 files and then becomes the wizard, with a soft limit of
// descriptors: above that number and below it.
class InheritedDescriptors : public testing::TestWithParam<std::string> {};

TEST_P(InheritedDescriptors, do_not_keep_the_answers_from_being_applied) {
    WizardRun wizard({{"bash", "-c",
                       "ulimit -Sn 4096\n"
                       "for ((i = 10; i < 2010; ++i)); do eval \"exec $i</dev/null\"; done\n"
                       "ulimit -Sn " +
                           GetParam() + "\nexec " WIZARD_PROGRAM}});
    wizard.walkToTheEnd();
    EXPECT_EQ(wizard.finish(), exited(0));
}

INSTANTIATE_TEST_SUITE_P(Limit, InheritedDescriptors, testing::Values("4096", "1024"));

// What the server's executable finds.
TEST(CommandLimits, are_those_that_the_wizard_was_started_with) {
    const InstalledServer server;
    server.replaceBy(
        "for limit in -Sn -Hn -Sc -Hc; do ulimit $limit; done >/run/scratch/new\n"
        "mv /run/scratch/new /run/scratch/limits\nexec sleep 1000\n");
    // The sanitizers have a limit of their own.
    WizardRun wizard({{"sh", "-c",
                       "export ASAN_OPTIONS=$ASAN_OPTIONS:disable_coredump=0; " +
                           wizard_with_limits("200:4096")}});
    wizard.walkToTheEnd();
    wait_until([] { return exists("/run/scratch/limits"); }, "the command ran");
    EXPECT_EQ(read_file("/run/scratch/limits"), "200\n4096\n1\n2\n");
}

// A file of the server's that is larger than the limit.
struct LargeFile {
    std::string name;
    const char* path;
    const char* message;
    bool ends;  // with the message
};

class FileSizeLimit : public testing::TestWithParam<LargeFile> {};

TEST_P(FileSizeLimit, fails_the_step_and_leaves_the_file_alone) {
    const InstalledServer server;
    server.start();
    std::string content = read_file(GetParam().path);
    while (content.size() < 200000) content += "# padding\n";
    write_file(GetParam().path, content);
    WizardRun wizard({{"prlimit", "--fsize=100000", WIZARD_PROGRAM}});
    wizard.walkToTheEnd();
    wizard.dismissError(GetParam().message);
    if (GetParam().ends) {
        EXPECT_TRUE(ends_with(wizard, exited(1), ""));
    } else {
        wizard.waitForScreen(Stop::relay);
        wizard.press(Key::ctrl_c);
        EXPECT_TRUE(is_aborted(wizard));
    }
    EXPECT_EQ(read_file(GetParam().path), content);
}

const LargeFile large_files[] = {
    {"configuration", InstalledServer::config, login_message, true},
    {"filters_script", InstalledServer::filters, "Could not configure relay!", false},
};

INSTANTIATE_TEST_SUITE_P(Below, FileSizeLimit, testing::ValuesIn(large_files), CaseName());

}  // namespace
