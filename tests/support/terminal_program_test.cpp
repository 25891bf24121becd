#include "tests/support/terminal_program.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <system_error>

#include "tests/support/failure_of.h"
#include "tests/support/files.h"

namespace {

ProgramSetup shell(const std::string& script) { return {{"sh", "-c", script}}; }

pid_t number_after(const std::string& word, TerminalProgram& program) {
    const std::string text = program.image().text();
    return std::stoi(text.substr(text.find(word) + word.size()));
}

TEST(TerminalProgram, passes_keys_on_and_shows_what_is_drawn) {
    TerminalProgram program(
        shell(R"(stty -echo -icanon; printf '\33[?1049h\33[?1h\33[44mready\33[2;3H'; cat -v)"));
    program.waitCursorAt(1, 2);
    EXPECT_EQ(program.image().find("ready"), (Position{0, 0}));
    EXPECT_EQ(program.image().cell(0, 0).background, 4);
    EXPECT_TRUE(program.alternateScreen());
    program.press(Key::up);
    program.type("7\n");
    program.waitForText("^[OA7");
    program.type("\x1b[?25l\n");
    program.waitForText("^[[?25l");
}

TEST(TerminalProgram, leaves_the_normal_screen_with_what_was_printed_after_the_alternate_one) {
    TerminalProgram program(shell(
        R"(printf '\33[?1049hfull'; stty raw; printf '\33[?1049l\n\tall done\n'; stty sane; exit 3)"));
    EXPECT_EQ(program.waitExit(), exited(3));
    EXPECT_FALSE(program.alternateScreen());
    EXPECT_FALSE(program.image().shows("full"));
    EXPECT_NE(program.output().find("full"), std::string::npos);
    EXPECT_EQ(program.printedAfterwards(), "\n\tall done\n");
}

TEST(TerminalProgram, that_was_not_put_back_is_seen_as_it_was_left) {
    TerminalProgram program(shell(R"(printf '\33[?1049h'; stty raw -echo; exit 4)"));
    EXPECT_EQ(program.waitExit(), exited(4));
    EXPECT_TRUE(program.alternateScreen());
    EXPECT_FALSE(program.modes().echo());
    EXPECT_FALSE(program.modes().canonical());
    EXPECT_NE(program.modes(), program.modesBefore());
    EXPECT_NE(testing::PrintToString(program.modesBefore()).find(" echo icanon isig icrnl opost"),
              std::string::npos);
}

TEST(TerminalProgram, wait_exit_has_seen_all_output_however_much) {
    TerminalProgram program(shell("seq 20000"));
    EXPECT_EQ(program.waitExit(), exited(0));
    EXPECT_TRUE(program.image().shows("20000"));
    const std::string printed = program.printedAfterwards();
    EXPECT_EQ(printed.substr(printed.size() - 12), "19999\n20000\n");
}

TEST(TerminalProgram, wait_exit_has_seen_the_last_words_every_time) {
    for (int round = 0; round < 20; ++round) {
        TerminalProgram program(shell("printf 'last words'"));
        ASSERT_EQ(program.waitExit(), exited(0));
        ASSERT_EQ(program.output(), "last words");
    }
}

/// Both of a parent and its child answer a signal before they end.
ProgramSetup family(const std::string& signal) {
    return shell("trap 'echo parent; exit 5' " + signal + "; sh -c 'trap \"echo child; exit\" " +
                 signal + "; echo ready; while :; do sleep 0.01; done'");
}

TEST(TerminalProgram, signals_reach_the_program_and_its_children_or_the_program_alone) {
    TerminalProgram interrupted(family("INT"));
    interrupted.waitForText("ready");
    interrupted.press(Key::ctrl_c);
    EXPECT_EQ(interrupted.waitExit(), exited(5));
    EXPECT_TRUE(interrupted.image().shows("child"));
    EXPECT_TRUE(interrupted.image().shows("parent"));

    TerminalProgram ended(family("TERM"));
    ended.waitForText("ready");
    ended.signalForeground(SIGTERM);
    EXPECT_EQ(ended.waitExit(), exited(5));
    EXPECT_TRUE(ended.image().shows("child"));

    TerminalProgram alone(shell("echo ready; exec sleep 1000"));
    alone.waitForText("ready");
    alone.signal(SIGTERM);
    EXPECT_EQ(alone.waitExit(), killed_by(SIGTERM));

    TerminalProgram hung_up(shell("trap 'exit 8' HUP; echo ready; while :; do sleep 0.01; done"));
    hung_up.waitForText("ready");
    hung_up.hangUp();
    EXPECT_EQ(hung_up.waitExit(), exited(8));
    EXPECT_TRUE(hung_up.image().shows("ready"));
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
}

TEST(TerminalProgram, that_cannot_be_run_throws) {
    EXPECT_THROW(TerminalProgram({{"/no/such/program"}}), std::system_error);
    ProgramSetup setup = shell("true");
    setup.directory = "/no/such/directory";
    EXPECT_THROW(TerminalProgram{setup}, std::system_error);
}

TEST(TerminalProgram, is_killed_with_its_children_and_jobs_when_the_object_goes) {
    pid_t pid = 0;
    pid_t child = 0;
    pid_t job = 0;
    {
        TerminalProgram program(
            shell("trap '' HUP TERM; sh -c 'echo child $$.; sleep 1000' & wait"));
        TerminalProgram jobs(shell("set -m; sh -c 'trap \"\" HUP; echo job $$.; sleep 1000'"));
        program.waitForText(".");
        jobs.waitForText(".");
        pid = program.pid();
        child = number_after("child ", program);
        job = number_after("job ", jobs);
        EXPECT_NE(getpgid(job), jobs.pid());
    }
    EXPECT_FALSE(process_running(pid));
    wait_until([&] { return !process_running(child); }, "the child was gone");
    wait_until([&] { return !process_running(job); }, "the job was gone");
}

TEST(TerminalProgram, a_wait_in_vain_ends_the_test_and_prints_the_screen) {
    TerminalProgram program(shell("echo 'only this'; read go; exit 9"));
    program.waitForText("only this");
    bool went_on = false;
    const auto wait = [&] {
        program.waitForText("something else");
        went_on = true;
    };
    std::string failure;
    {
        const Impatience impatience;
        failure = failure_of(wait);
    }
    EXPECT_NE(failure.find("waited in vain until \"something else\" was on the screen; the "
                           "screen:\nonly this"),
              std::string::npos)
        << failure;
    program.type("\r");
    failure = failure_of(wait);
    EXPECT_NE(failure.find("the program ended (exit status 9) before \"something else\" was on"),
              std::string::npos)
        << failure;
    EXPECT_FALSE(went_on);
}

}  // namespace
