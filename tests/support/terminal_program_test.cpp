#include "tests/support/terminal_program.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <system_error>

#include "tests/support/failure_of.h"
#include "tests/support/files.h"

namespace {

ProgramSetup shell(const std::string& script) { return {{"sh", "-c", script}}; }

TEST(TerminalProgram, leaves_what_was_printed_after_the_alternate_screen_and_the_modes) {
    TerminalProgram program(shell(
        R"(printf '\33[?1049hfull'; stty raw -echo; printf '\33[?1049l\n\tall done\n'; exit 3)"));
    EXPECT_EQ(program.waitExit(), exited(3));
    EXPECT_FALSE(program.alternateScreen());
    EXPECT_FALSE(program.image().shows("full"));
    EXPECT_EQ(program.printedAfterwards(), "\n\tall done\n");
    EXPECT_FALSE(program.modes().canonical());
    EXPECT_NE(program.modes(), program.modesBefore());
    EXPECT_NE(testing::PrintToString(program.modesBefore()).find(" echo icanon"),
              std::string::npos);
}

TEST(TerminalProgram, wait_exit_has_seen_the_last_words_every_time_however_much_came_before) {
    for (int round = 0; round < 20; ++round) {
        TerminalProgram program(shell(round == 0 ? "seq 20000" : "echo 20000"));
        ASSERT_EQ(program.waitExit(), exited(0));
        const std::string printed = program.printedAfterwards();
        ASSERT_EQ(printed.substr(printed.size() - 6), "20000\n");
    }
}

TEST(TerminalProgram, starts_with_default_signals_its_environment_and_no_other_descriptors) {
    const TempDir dir;
    ProgramSetup setup = shell(
        "echo $TERM $LC_ALL ${LINES-none} $GREETING; pwd; ls /proc/self/fd; "
        "grep -E 'Sig(Blk|Ign)' /proc/self/status");
    setup.term = "vt220";
    setup.environment = {{"GREETING", "hello"}};
    setup.directory = dir.path();
    setenv("LINES", "99", 1);
    const auto before = std::signal(SIGINT, SIG_IGN);
    TerminalProgram program(setup);
    std::signal(SIGINT, before);
    unsetenv("LINES");
    EXPECT_EQ(program.waitExit(), exited(0));
    EXPECT_EQ(program.printedAfterwards(),
              "vt220 C.UTF-8 none hello\n" + dir.path() +
                  "\n0  1  2  3\nSigBlk:\t0000000000000000\nSigIgn:\t0000000000000000\n");
    setup.directory = "/no/such/directory";
    EXPECT_THROW(TerminalProgram{setup}, std::system_error);
}

/// Waits for a text that ends with a number and a dot, and returns the number.
pid_t number_after(const std::string& word, TerminalProgram& program) {
    program.waitForText(".");
    const std::string text = program.image().text();
    return std::stoi(text.substr(text.find(word) + word.size()));
}

TEST(TerminalProgram, is_killed_with_its_children_and_jobs_when_the_object_goes) {
    pid_t child = 0;
    pid_t job = 0;
    {
        TerminalProgram program(
            shell("trap '' HUP TERM; sh -c 'echo child $$.; sleep 1000' & wait"));
        TerminalProgram jobs(shell("set -m; sh -c 'trap \"\" HUP; echo job $$.; sleep 1000'"));
        child = number_after("child ", program);
        job = number_after("job ", jobs);
        EXPECT_NE(getpgid(job), jobs.pid());
    }
    wait_until([&] { return !process_running(child); }, "the child was gone");
    wait_until([&] { return !process_running(job); }, "the job was gone");
}

TEST(TerminalProgram, a_wait_in_vain_ends_the_test_and_prints_the_screen) {
    TerminalProgram program(shell("echo 'only this'; read go; exit 9"));
    program.waitForText("only this");
    const auto wait = [&] {
        program.waitForText("something else");
        FAIL() << "the test went on";
    };
    std::string failure;
    {
        const Impatience impatience;
        failure = failure_of(wait);
    }
    EXPECT_EQ(failure.find("Failed\nwaited in vain until \"something else\" was on the screen; the "
                           "screen:\nonly this"),
              0U)
        << failure;
    program.type("\r");
    failure = failure_of(wait);
    EXPECT_NE(failure.find("the program ended (exit status 9) before \"something else\" was on"),
              std::string::npos)
        << failure;
    EXPECT_EQ(failure.find("the test went on"), std::string::npos);
}

}  // namespace
