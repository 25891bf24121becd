#include "tools/bench/trace.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

constexpr int wizard = 7;

Trace trace_of(const std::string& log) {
    std::istringstream lines(log);
    return read_trace(lines);
}

TEST(TraceLog, takes_the_two_pieces_of_each_process_for_a_call_and_leaves_out_what_is_none) {
    const Trace trace = trace_of(
        "1     1.0 read(3,  <unfinished ...>\n"
        "2     2.0 wait4(-1,  <unfinished ...>\n"
        "2     2.5 --- SIGCHLD {si_signo=SIGCHLD, si_pid=34} ---\n"
        "1     3.0 <... read resumed>\"\", 1) = 0 <2.0>\n"
        "2     4.5 <... wait4 resumed>NULL, 0, NULL) = 1 <2.5>\n"
        "1     5.0 +++ exited with 0 +++\n"
        "2     5.5 close(3</dev/null>) = 0\n"
        "2     6.0 +++ killed by SIGKILL +++\n"
        "3     6.0 pselect6(1, [0], NULL <unfinished ...>\n"
        "4     6.0 pselect6(1, [0], NULL, NULL, NULL, {[], 8}");
    ASSERT_EQ(trace.calls.size(), 3U);
    EXPECT_EQ(trace.calls[0].name, "read");
    EXPECT_EQ(trace.calls[0].process, 1);
    EXPECT_EQ(trace.calls[1].name, "wait4");
    EXPECT_EQ(trace.calls[1].arguments, "-1, NULL, 0, NULL) = 1 <2.5>");
    EXPECT_DOUBLE_EQ(trace.calls[1].begin, 2);
    EXPECT_DOUBLE_EQ(trace.calls[1].seconds, 2.5);
    EXPECT_EQ(trace.calls[2].seconds, 0);
    EXPECT_EQ(trace.ends, (std::map<int, double>{{1, 5.0}, {2, 6.0}}));
}

TEST(TerminalWrites, count_each_call_that_arrives_at_a_terminal_once) {
    EXPECT_EQ(
        terminal_writes(trace_of("7 1.0 write(1</dev/pts/0>, \"\"..., 1024) = 1024 <0.1>\n"
                                 "7 2.0 writev(1</dev/pts/0>, [{iov_len=3}], 1) = 3 <0.1>\n"
                                 "7 3.0 write(3</dev/tty>, \"\"..., 5) = 5 <0.1>\n"
                                 "7 4.0 write(2</dev/null>, \"\"..., 5) = 5 <0.1>\n"
                                 "7 5.0 write(4<socket:[1234]>, \"\"..., 5) = 5 <0.1>\n"
                                 "7 6.0 read(0</dev/pts/0>, \"\"..., 5) = 5 <0.1>\n"
                                 "7 7.0 write(1</dev/pts/0>, \"\"..., 5) = -1 EAGAIN <0.1>\n")),
        3);
}

// A log, the moment from which on it counts, and the times in it.
struct Division {
    const char* log;
    double from;
    double asleep;
    double server;
};

TEST(OthersTime, knows_sleeps_and_waits_for_the_server_from_all_else) {
    const Division divisions[] = {
        {"7 10.0 pselect6(0, NULL, NULL, NULL, {tv_sec=2}, NULL) = 0 (Timeout) <2.0>\n", 0, 2, 0},
        {"8 10.0 pselect6(0, NULL, NULL, NULL, {tv_sec=2}, NULL) = 0 (Timeout) <2.0>\n", 0, 0, 0},
        {"7 10.0 ppoll([{fd=5<socket:[99]>, events=POLLIN}], 1, NULL) = 1 <2.0>\n", 0, 0, 2},
        {"7 10.0 ppoll([{fd=5<socket:[99]>, events=POLLIN}], 1, NULL) = 1 <2.0>\n", 11.5, 0, 0.5},
        {"7 10.0 ppoll([{fd=5<socket:[99]>, events=POLLIN}], 1, NULL) = 1 <2.0>\n", 12.5, 0, 0},
        {"7 10.0 ppoll([{fd=0</dev/pts/0>, events=POLLIN}], 1, NULL) = 1 <3.0>\n", 0, 0, 0},
        // A command of the server's, from exec to its end, and one of the wizard's own.
        {"8 20.0 execve(\"/bin/sh\", [\"sh\"], 0x1) = 0 <0.1>\n"
         "9 20.5 execve(\"/opt/server\", [\"server\", \"-A\"], 0x1) = 0 <0.1>\n"
         "9 21.5 +++ exited with 0 +++\n"
         "8 22.0 +++ exited with 0 +++\n"
         "7 19.9 wait4(8, [0], 0, NULL) = 8 <2.1>\n",
         0, 0, 1},
        {"9 20.5 execve(\"/usr/bin/cp\", [\"cp\"], 0x1) = 0 <0.1>\n"
         "9 21.5 +++ exited with 0 +++\n",
         0, 0, 0},
    };
    for (const Division& division : divisions) {
        SCOPED_TRACE(division.log);
        const OthersTime time =
            others_time(trace_of(division.log), wizard, division.from, "/opt/server");
        EXPECT_DOUBLE_EQ(time.asleep, division.asleep);
        EXPECT_DOUBLE_EQ(time.server, division.server);
    }
}

// With the text as strace -xx writes it.
std::string write_of(const std::string& text, double time) {
    std::ostringstream line;
    line << wizard << " " << time << " write(1, \"" << std::hex;
    for (const unsigned char byte : text)
        line << "\\x" << (byte < 16 ? "0" : "") << static_cast<int>(byte);
    line << "\", 9) = 9 <0.1>\n";
    return line.str();
}

using Steps = std::vector<std::pair<std::string, int>>;

Steps steps_in(const std::string& log, double from = 0) {
    return calls_by_step(trace_of(log), wizard, from);
}

TEST(CallsByStep, begin_a_step_with_the_write_of_its_line_or_of_what_differs_in_it) {
    EXPECT_EQ(steps_in("7 1.0 close(3) = 0 <0.1>\n" + write_of("--> making tea ... ", 2) +
                       "7 3.0 close(3) = 0 <0.1>\n" + write_of("\033[1;12Hale", 4)),
              (Steps{{"opening the progress box", 1}, {"making tea", 2}, {"making ale", 1}}));
}

TEST(CallsByStep, take_lines_that_scroll_for_what_they_were) {
    EXPECT_EQ(steps_in(write_of("\033[2H--> making tea ... ", 1) +
                       write_of("\033[H--> making tea ...\033[2H--> drinking it ...", 2)),
              (Steps{{"opening the progress box", 0}, {"making tea", 1}, {"drinking it", 1}}));
}

TEST(CallsByStep, go_down_with_a_line_feed_as_a_terminal_does_after_its_driver) {
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
