#include "tools/bench/apply_trace.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

constexpr int wizard = 7;

Trace trace_of(const std::string& log) {
    std::istringstream lines(log);
    return read_trace(lines);
}

OthersTime others_in(const std::string& log, double from = 0) {
    return others_time(trace_of(log), wizard, from, "/opt/server");
}

TEST(OthersTime, knows_sleeps_from_waits_for_the_server) {
    const OthersTime time = others_in(
        "7 10.0 pselect6(0, NULL, NULL, NULL, {tv_sec=2}, NULL) = 0 (Timeout) <2.0>\n"
        "7 12.0 ppoll([{fd=5<socket:[99]>, events=POLLIN}], 1, NULL, [], 8) = 1 <0.25>\n");
    EXPECT_DOUBLE_EQ(time.asleep, 2);
    EXPECT_DOUBLE_EQ(time.server, 0.25);
}

TEST(OthersTime, does_not_take_a_wait_for_a_key_for_one) {
    const OthersTime time =
        others_in("7 10.0 ppoll([{fd=0</dev/pts/0>, events=POLLIN}], 1, NULL, [], 8) = 1 <3.0>\n");
    EXPECT_EQ(time.asleep + time.server, 0);
}

TEST(OthersTime, counts_a_wait_that_had_begun_from_the_beginning_of_the_run) {
    const std::string log =
        "7 10.0 ppoll([{fd=5<socket:[99]>, events=POLLIN}], 1, NULL, [], 8) = 1 <2.0>\n";
    EXPECT_DOUBLE_EQ(others_in(log, 11.5).server, 0.5);
    EXPECT_EQ(others_in(log, 12.5).server, 0);
}

TEST(OthersTime, counts_the_servers_commands_from_exec_to_their_end) {
    const OthersTime time = others_in(
        "8 20.0 execve(\"/bin/sh\", [\"sh\"], 0x1) = 0 <0.1>\n"
        "9 20.5 execve(\"/opt/server\", [\"server\", \"-A\"], 0x1) = 0 <0.1>\n"
        "9 21.5 +++ exited with 0 +++\n"
        "8 22.0 +++ exited with 0 +++\n"
        "7 19.9 wait4(8, [0], 0, NULL) = 8 <2.1>\n");
    EXPECT_DOUBLE_EQ(time.server, 1);
}

TEST(OthersTime, leaves_the_wizards_own_commands_to_the_wizard) {
    const OthersTime time = others_in(
        "9 20.5 execve(\"/usr/bin/cp\", [\"cp\"], 0x1) = 0 <0.1>\n"
        "9 21.5 +++ exited with 0 +++\n");
    EXPECT_EQ(time.server, 0);
}

TEST(OthersTime, leaves_out_what_other_processes_wait_for) {
    const OthersTime time =
        others_in("8 10.0 pselect6(0, NULL, NULL, NULL, {tv_sec=2}, NULL) = 0 <2.0>\n");
    EXPECT_EQ(time.asleep, 0);
}

// As strace -xx writes it.
std::string hexadecimal(const std::string& text) {
    std::ostringstream quoted;
    for (const unsigned char byte : text) {
        char digits[8];
        std::snprintf(digits, sizeof(digits), "\\x%02x", byte);
        quoted << digits;
    }
    return quoted.str();
}

std::string write_of(const std::string& text, double time) {
    return "7 " + std::to_string(time) + " write(1, \"" + hexadecimal(text) + "\", 9) = 9 <0.1>\n";
}

using Steps = std::vector<std::pair<std::string, int>>;

Steps steps_in(const std::string& log, double from = 0) {
    return calls_by_step(trace_of(log), wizard, from);
}

TEST(CallsByStep, begin_a_step_with_the_write_of_its_line) {
    EXPECT_EQ(steps_in("7 1.0 close(3) = 0 <0.1>\n" + write_of("--> making tea ... ", 2) +
                       "7 3.0 close(3) = 0 <0.1>\n" + write_of(" ... DONE", 4) +
                       write_of("\033[3H--> drinking it ... ", 5)),
              (Steps{{"opening the progress box", 1}, {"making tea", 3}, {"drinking it", 1}}));
}

TEST(CallsByStep, know_a_line_of_which_only_the_difference_is_written) {
    EXPECT_EQ(steps_in(write_of("--> making tea ... ", 1) + write_of("\033[1;12Hale", 2)),
              (Steps{{"opening the progress box", 0}, {"making tea", 1}, {"making ale", 1}}));
}

TEST(CallsByStep, take_lines_that_scroll_for_what_they_were) {
    EXPECT_EQ(steps_in(write_of("\033[2H--> making tea ... ", 1) +
                       write_of("\033[H--> making tea ...\033[2H--> drinking it ...", 2)),
              (Steps{{"opening the progress box", 0}, {"making tea", 1}, {"drinking it", 1}}));
}

TEST(CallsByStep, go_down_with_a_line_feed_as_a_terminal_does_behind_its_driver) {
    EXPECT_EQ(steps_in(write_of(std::string(72, '-') + "\n--> making tea ...", 1)),
              (Steps{{"opening the progress box", 0}, {"making tea", 1}}));
}

TEST(CallsByStep, leave_out_calls_before_the_run_and_those_of_other_processes) {
    EXPECT_EQ(steps_in("7 1.0 close(3) = 0 <0.1>\n"
                       "7 2.0 close(3) = 0 <0.1>\n"
                       "8 3.0 close(3) = 0 <0.1>\n",
                       1.5),
              (Steps{{"opening the progress box", 1}}));
}

}  // namespace
