#include "tools/bench/trace_log.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

Trace trace_of(const std::string& log) {
    std::istringstream lines(log);
    return read_trace(lines);
}

TEST(TraceLog, tells_process_name_arguments_and_time_of_a_call) {
    const Trace trace = trace_of("27    100.250000 write(1</dev/pts/0>, \"\", 3) = 3 <0.000012>\n");
    ASSERT_EQ(trace.calls.size(), 1U);
    EXPECT_EQ(trace.calls[0].process, 27);
    EXPECT_EQ(trace.calls[0].name, "write");
    EXPECT_EQ(trace.calls[0].arguments, "1</dev/pts/0>, \"\", 3) = 3 <0.000012>");
    EXPECT_DOUBLE_EQ(trace.calls[0].begin, 100.25);
    EXPECT_DOUBLE_EQ(trace.calls[0].seconds, 0.000012);
}

TEST(TraceLog, takes_a_call_in_two_pieces_for_one_that_began_with_the_first) {
    const Trace trace = trace_of(
        "27    100.000000 wait4(-1,  <unfinished ...>\n"
        "33    100.100000 read(0, \"\", 1) = 1 <0.000010>\n"
        "27    100.500000 <... wait4 resumed>[{WIFEXITED(s)}], 0, NULL) = 33 <0.500000>\n");
    ASSERT_EQ(trace.calls.size(), 2U);
    EXPECT_EQ(trace.calls[0].name, "read");
    EXPECT_EQ(trace.calls[1].name, "wait4");
    EXPECT_EQ(trace.calls[1].arguments, "-1, [{WIFEXITED(s)}], 0, NULL) = 33 <0.500000>");
    EXPECT_DOUBLE_EQ(trace.calls[1].begin, 100);
    EXPECT_DOUBLE_EQ(trace.calls[1].seconds, 0.5);
}

TEST(TraceLog, keeps_pieces_of_two_processes_apart) {
    const Trace trace = trace_of(
        "1     1.0 read(3,  <unfinished ...>\n"
        "2     2.0 wait4(-1,  <unfinished ...>\n"
        "1     3.0 <... read resumed>\"\", 1) = 0 <2.0>\n"
        "2     4.0 <... wait4 resumed>NULL, 0, NULL) = 1 <2.0>\n");
    ASSERT_EQ(trace.calls.size(), 2U);
    EXPECT_EQ(trace.calls[0].name, "read");
    EXPECT_EQ(trace.calls[0].process, 1);
    EXPECT_EQ(trace.calls[1].name, "wait4");
    EXPECT_EQ(trace.calls[1].process, 2);
}

TEST(TraceLog, leaves_out_what_has_not_ended) {
    EXPECT_TRUE(trace_of("27    100.0 pselect6(1, [0], NULL, NULL, NULL, {[], 8}").calls.empty());
    EXPECT_TRUE(trace_of("27    100.0 pselect6(1, [0], NULL <unfinished ...>\n").calls.empty());
}

TEST(TraceLog, tells_ends_of_processes_from_calls_and_signals) {
    const Trace trace = trace_of(
        "33    100.0 --- SIGCHLD {si_signo=SIGCHLD, si_pid=34} ---\n"
        "33    100.3 +++ exited with 0 +++\n"
        "34    100.4 +++ killed by SIGKILL +++\n");
    EXPECT_TRUE(trace.calls.empty());
    EXPECT_EQ(trace.ends, (std::map<int, double>{{33, 100.3}, {34, 100.4}}));
}

TEST(TraceLog, has_no_duration_where_the_log_has_none) {
    const Trace trace = trace_of("27    100.0 close(3</dev/null>) = 0\n");
    ASSERT_EQ(trace.calls.size(), 1U);
    EXPECT_EQ(trace.calls[0].seconds, 0);
}

TEST(TracedText, is_read_from_its_hexadecimal_form) {
    EXPECT_EQ(first_text({1, "write", R"(1, "\x2d\x2d\x3e\x20\x00\xe2", 6) = 6)", 0, 0}),
              std::string("--> \0\xe2", 6));
}

TEST(TracedText, ends_with_its_own_quote) {
    EXPECT_EQ(first_text({1, "rename", R"("\x61", "\x62") = 0)", 0, 0}), "a");
}

TEST(TracedText, is_empty_where_there_is_none) {
    EXPECT_EQ(first_text({1, "close", "3) = 0", 0, 0}), "");
    EXPECT_EQ(first_text({1, "write", "1, \"\", 0) = 0", 0, 0}), "");
}

}  // namespace
