#include "tools/bench/measured_program.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <stdexcept>

#include "tests/e2e/key_wait.h"
#include "tests/support/terminal_program.h"
#include "tests/support/wait_until.h"
#include "tests/tools/thrown_by.h"

namespace {

TEST(KeyRest, is_a_read_from_the_terminal) {
    const TerminalProgram reading({{"sh", "-c", "read line"}});
    wait_until([&] { return rests_for_key(reading.pid()); }, "it rested");
}

TEST(KeyRest, is_neither_a_sleep_nor_a_wait_for_a_child) {
    for (const char* command : {"exec sleep 1000", "sleep 1000; true"}) {
        const TerminalProgram waiting({{"sh", "-c", command}});
        wait_until([&] { return waits_for_key(waiting.pid()); }, "it waited");
        EXPECT_FALSE(rests_for_key(waiting.pid())) << command;
    }
}

TEST(KeyRest, is_not_for_a_process_that_has_ended) {
    TerminalProgram ended({{"true"}});
    ended.waitExit();
    EXPECT_FALSE(rests_for_key(ended.pid()));
}

// The program that takes one write for a box and one byte for a key.
TEST(MeasuredProgram, counts_the_bytes_of_each_answer) {
    MeasuredProgram floor({FLOOR_PROGRAM});
    const size_t frame = floor.firstScreen().bytes;
    EXPECT_GT(frame, 200U);
    EXPECT_GT(floor.firstScreen().milliseconds, 0);
    EXPECT_EQ(floor.type("q").bytes, 1U);
    EXPECT_EQ(floor.type("qqq").bytes, 3U);
    EXPECT_EQ(floor.resize(24, 80).bytes, 0U) << "of a size that is no other";
    EXPECT_GE(floor.resize(34, 100).bytes, frame);
    EXPECT_EQ(floor.type("q").bytes, 1U);
}

TEST(MeasuredProgram, has_memory_and_takes_no_time_while_it_rests) {
    const MeasuredProgram floor({FLOOR_PROGRAM});
    EXPECT_GT(floor.memory(), 0);
    const double before = floor.processorTime();
    EXPECT_GT(before, 0);
    EXPECT_EQ(floor.processorTime(), before);
}

TEST(MeasuredProgram, waits_for_a_text_that_comes_late) {
    MeasuredProgram shell({"/bin/sh", "-c", "read line; sleep 0.1; echo so late; read line"});
    shell.typeUntil("\n", "so late");
    shell.expect("so late");
}

TEST(MeasuredProgram, says_what_is_shown_instead_of_what_was_expected) {
    const MeasuredProgram shell({"/bin/sh", "-c", "echo something else; read line"});
    shell.expect("something else");
    const std::string failure = thrown_by([&] { shell.expect("a box"); });
    EXPECT_NE(failure.find("does not show \"a box\""), std::string::npos) << failure;
    EXPECT_NE(failure.find("\nsomething else\n"), std::string::npos) << failure;
}

TEST(MeasuredProgram, that_ends_or_cannot_be_run_is_not_waited_for) {
    EXPECT_THROW(MeasuredProgram({"/bin/true"}), std::runtime_error);
    EXPECT_THROW(MeasuredProgram({"/nowhere/program"}), std::runtime_error);
}

TEST(MeasuredProgram, that_never_rests_is_given_up_and_ended) {
    const Impatience impatience;
    EXPECT_THROW(MeasuredProgram({"/bin/sleep", "1000"}), std::runtime_error);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "there is a child left";
}

}  // namespace
