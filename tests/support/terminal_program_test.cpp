#include "tests/support/terminal_program.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <system_error>

#include "tests/support/expect_screen.h"
#include "tests/support/failure_of.h"
#include "tests/support/impatience.h"
#include "tests/support/process.h"
#include "tests/support/temp_dir.h"
#include "tests/support/wait_until.h"

namespace {

ProgramSetup shell(const std::string& script) {
    return {{"sh", "-c", script}};
}

ProgramSetup sample() {
    return {{SAMPLE_PROGRAM}};
}

pid_t number_after(const std::string& word, TerminalProgram& program) {
    const std::string text = program.image().text();
    return std::stoi(text.substr(text.find(word) + word.size()));
}

TEST(TerminalProgram, shows_what_the_program_draws) {
    TerminalProgram program(sample());
    program.waitCursorAt(5, 3);
    const ScreenImage image = program.image();
    EXPECT_EQ(image.find("24 rows, 80 columns"), (Position{1, 0}));
    EXPECT_EQ(image.cell(0, 0), (Cell{"A", 7, 4, true}));
    EXPECT_EQ(image.cell(23, 0), (Cell{"h", 0, 1, false}));
    EXPECT_PICTURE(image.region(4, 2, 3, 6), R"(
┌────┐
│Next│
└────┘
)");
    EXPECT_TRUE(program.alternateScreen());
}

TEST(TerminalProgram, lines_are_the_same_in_a_locale_without_utf8) {
    ProgramSetup setup = sample();
    setup.locale = "C";
    setup.term = "vt220";
    TerminalProgram program(setup);
    program.waitCursorAt(5, 3);
    EXPECT_PICTURE(program.image().region(4, 2, 1, 6), "┌────┐");
}

TEST(TerminalProgram, passes_keys_and_text_on) {
    TerminalProgram program(sample());
    program.waitForText("key none");
    program.press(Key::up);
    program.waitForText("key KEY_UP");
    program.press(Key::backspace);
    program.waitForText("key KEY_BACKSPACE");
    program.press(Key::enter);
    program.waitForText("key ^J");
    program.type("7");
    program.waitForText("key 7");
    program.waitGone("key ^J");
}

TEST(TerminalProgram, sees_the_cursor_hidden_and_shown) {
    TerminalProgram program(sample());
    program.waitForText("key none");
    program.type("h");
    program.waitUntil([](const ScreenImage& screen) { return !screen.cursor().visible; },
                      "the cursor was hidden");
    program.type("v");
    program.waitCursorAt(5, 3);
}

TEST(TerminalProgram, the_program_follows_a_resize) {
    TerminalProgram program(sample());
    program.waitForText("24 rows, 80 columns");
    program.resize(60, 200);
    program.waitForText("60 rows, 200 columns");
    program.resize(20, 72);
    program.waitForText("20 rows, 72 columns");
    EXPECT_EQ(program.image().rows(), 20);
    program.waitUntil([](const ScreenImage& screen) { return screen.cell(19, 0).text == "h"; },
                      "the last line was drawn at its new place");
}

TEST(TerminalProgram, after_the_end_the_normal_screen_shows_what_was_printed) {
    TerminalProgram program(sample());
    program.waitForText("key none");
    EXPECT_NE(program.modes(), program.modesBefore());
    program.type("q");
    EXPECT_EQ(program.waitExit(), exited(3));
    EXPECT_FALSE(program.alternateScreen());
    EXPECT_TRUE(program.image().cursor().visible);
    EXPECT_EQ(program.modes(), program.modesBefore());
    EXPECT_TRUE(program.image().shows("all done"));
    EXPECT_FALSE(program.image().shows("A sample"));
    EXPECT_EQ(program.printedAfterwards(), "\n\tall done\n");
    EXPECT_NE(program.output().find("A sample"), std::string::npos);
}

TEST(TerminalProgram, a_terminal_that_was_not_put_back_is_seen_as_it_was_left) {
    TerminalProgram program(sample());
    program.waitForText("key none");
    program.type("x");
    EXPECT_EQ(program.waitExit(), exited(4));
    EXPECT_TRUE(program.alternateScreen());
    EXPECT_FALSE(program.modes().echo());
    EXPECT_NE(program.modes(), program.modesBefore());
}

TEST(TerminalProgram, wait_exit_has_seen_all_output_however_much) {
    TerminalProgram program(
        shell("i=0; while [ $i -lt 20000 ]; do i=$((i+1)); echo line $i; done"));
    EXPECT_EQ(program.waitExit(), exited(0));
    EXPECT_TRUE(program.image().shows("line 20000"));
    const std::string printed = program.printedAfterwards();
    EXPECT_EQ(printed.substr(printed.size() - 11), "line 20000\n");
}

TEST(TerminalProgram, wait_exit_has_seen_the_last_words_every_time) {
    for (int round = 0; round < 50; ++round) {
        TerminalProgram program(shell("printf 'last words'"));
        ASSERT_EQ(program.waitExit(), exited(0));
        ASSERT_EQ(program.output(), "last words");
    }
}

TEST(TerminalProgram, ctrl_c_interrupts_the_program_and_its_children) {
    TerminalProgram program(
        shell("trap 'echo parent; exit 5' INT; "
              "sh -c 'trap \"echo child; exit\" INT; echo ready; while :; do sleep 0.01; done'"));
    program.waitForText("ready");
    program.press(Key::ctrl_c);
    EXPECT_EQ(program.waitExit(), exited(5));
    EXPECT_TRUE(program.image().shows("child"));
    EXPECT_TRUE(program.image().shows("parent"));
}

TEST(TerminalProgram, a_signal_to_the_foreground_reaches_the_children_too) {
    TerminalProgram program(
        shell("trap 'echo parent; exit 5' TERM; "
              "sh -c 'trap \"echo child; exit\" TERM; echo ready; while :; do sleep 0.01; done'"));
    program.waitForText("ready");
    program.signalForeground(SIGTERM);
    EXPECT_EQ(program.waitExit(), exited(5));
    EXPECT_TRUE(program.image().shows("child"));
    EXPECT_TRUE(program.image().shows("parent"));
}

TEST(TerminalProgram, signal_reaches_the_program_alone) {
    TerminalProgram program(
        shell("trap 'echo got it; exit 6' USR1; echo ready; "
              "while :; do sleep 0.01; done"));
    program.waitForText("ready");
    program.signal(SIGUSR1);
    EXPECT_EQ(program.waitExit(), exited(6));
    EXPECT_TRUE(program.image().shows("got it"));
}

TEST(TerminalProgram, a_program_that_a_signal_ends_has_that_status) {
    TerminalProgram program(shell("echo ready; exec sleep 1000"));
    program.waitForText("ready");
    program.signal(SIGTERM);
    EXPECT_EQ(program.waitExit(), killed_by(SIGTERM));
}

TEST(TerminalProgram, starts_with_default_signals_and_none_blocked) {
    struct sigaction ignore {};
    struct sigaction before {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGINT, &ignore, &before);
    TerminalProgram program(shell("grep -E 'Sig(Blk|Ign|Cgt)' /proc/self/status"));
    sigaction(SIGINT, &before, nullptr);
    program.waitExit();
    EXPECT_TRUE(program.image().shows("SigBlk:\t0000000000000000") ||
                program.image().shows("SigBlk: 0000000000000000"))
        << program.image().text();
    EXPECT_TRUE(program.image().shows("SigIgn: 0000000000000000")) << program.image().text();
}

TEST(TerminalProgram, has_the_environment_the_directory_and_no_other_descriptors) {
    const TempDir dir;
    ProgramSetup setup = shell("echo $TERM $LC_ALL ${LINES-none} $GREETING; pwd; ls /proc/self/fd");
    setup.term = "vt220";
    setup.environment = {{"GREETING", "hello"}};
    setup.directory = dir.path();
    setenv("LINES", "99", 1);
    TerminalProgram program(setup);
    unsetenv("LINES");
    EXPECT_EQ(program.waitExit(), exited(0));
    const std::string printed = program.printedAfterwards();
    EXPECT_EQ(printed.rfind("vt220 C.UTF-8 none hello\n" + dir.path() + "\n", 0), 0U) << printed;
    EXPECT_NE(printed.find("0  1  2  3\n"), std::string::npos) << printed;
}

TEST(TerminalProgram, a_program_that_cannot_be_run_throws) {
    EXPECT_THROW(TerminalProgram({{"/no/such/program"}}), std::system_error);
    ProgramSetup setup = sample();
    setup.directory = "/no/such/directory";
    EXPECT_THROW(TerminalProgram{setup}, std::system_error);
}

TEST(TerminalProgram, is_killed_with_its_children_when_the_object_goes) {
    pid_t pid = 0;
    pid_t child = 0;
    {
        TerminalProgram program(
            shell("trap '' HUP TERM; sh -c 'echo child $$.; sleep 1000' & wait"));
        program.waitForText(".");
        pid = program.pid();
        child = number_after("child ", program);
    }
    EXPECT_FALSE(process_running(pid));
    wait_until([&] { return !process_running(child); }, "the child was gone");
}

TEST(TerminalProgram, takes_a_foreground_job_in_a_group_of_its_own_along) {
    pid_t job = 0;
    {
        TerminalProgram program(shell("set -m; sh -c 'trap \"\" HUP; echo job $$.; sleep 1000'"));
        program.waitForText(".");
        job = number_after("job ", program);
        EXPECT_NE(getpgid(job), program.pid());
    }
    wait_until([&] { return !process_running(job); }, "the job was gone");
}

TEST(TerminalProgram, a_hang_up_sends_sighup_and_ends_the_input) {
    TerminalProgram program(shell("trap 'exit 8' HUP; echo ready; while :; do sleep 0.01; done"));
    program.waitForText("ready");
    program.hangUp();
    EXPECT_EQ(program.waitExit(), exited(8));
    EXPECT_TRUE(program.image().shows("ready"));
}

TEST(TerminalProgram, a_wait_in_vain_ends_the_test_and_prints_the_screen) {
    TerminalProgram program(shell("echo 'only this'; exec sleep 1000"));
    program.waitForText("only this");
    const Impatience impatience;
    bool went_on = false;
    const std::string failure = failure_of([&] {
        program.waitForText("something else");
        went_on = true;
    });
    EXPECT_FALSE(went_on);
    EXPECT_NE(failure.find("waited in vain until \"something else\" was on the screen"),
              std::string::npos)
        << failure;
    EXPECT_NE(failure.find("only this"), std::string::npos) << failure;
}

TEST(TerminalProgram, a_wait_is_over_at_once_when_the_program_has_ended) {
    TerminalProgram program(shell("echo bye; exit 9"));
    const std::string failure = failure_of([&] { program.waitForText("something else"); });
    EXPECT_NE(failure.find("the program ended (exit status 9) before \"something else\" was on the "
                           "screen; the screen:\nbye"),
              std::string::npos)
        << failure;
}

}  // namespace
