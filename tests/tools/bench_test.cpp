// What ./bench measures with, and what it makes of its samples.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <sstream>
#include <stdexcept>

#include "tests/e2e/key_wait.h"
#include "tests/support/terminal_program.h"
#include "tests/support/wait_until.h"
#include "tools/bench/measured_program.h"
#include "tools/bench/tables.h"
#include "tools/bench/trace.h"

namespace {

// What the exception says that `piece` throws.
template <class Piece>
std::string thrown_by(Piece piece) {
    try {
        piece();
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "nothing";
}

TEST(KeyRest, is_a_read_from_the_terminal_and_no_sleep_nor_a_wait_for_a_child_nor_the_end) {
    const TerminalProgram reading({{"sh", "-c", "read line"}});
    wait_until([&] { return rests_for_key(reading.pid()); }, "it rested");
    for (const char* command : {"exec sleep 1000", "sleep 1000; true"}) {
        const TerminalProgram waiting({{"sh", "-c", command}});
        wait_until([&] { return waits_for_key(waiting.pid()); }, "it waited");
        EXPECT_FALSE(rests_for_key(waiting.pid())) << command;
    }
    TerminalProgram ended({{"true"}});
    ended.waitExit();
    EXPECT_FALSE(rests_for_key(ended.pid()));
}

// The program that takes one write for a box and one byte for a key.
TEST(MeasuredProgram, counts_the_bytes_of_each_answer_and_no_time_while_it_rests) {
    MeasuredProgram floor({FLOOR_PROGRAM});
    const size_t frame = floor.firstScreen().bytes;
    EXPECT_GT(frame, 200U);
    EXPECT_GT(floor.firstScreen().milliseconds, 0);
    EXPECT_EQ(floor.type("q").bytes, 1U);
    EXPECT_EQ(floor.type("qqq").bytes, 3U);
    EXPECT_EQ(floor.resize(24, 80).bytes, 0U) << "of a size that is no other";
    EXPECT_GE(floor.resize(34, 100).bytes, frame);
    EXPECT_EQ(floor.type("q").bytes, 1U);
    EXPECT_GT(floor.memory(), 0);
    const double before = floor.processorTime();
    EXPECT_GT(before, 0);
    EXPECT_EQ(floor.processorTime(), before);
}

TEST(MeasuredProgram, waits_for_a_text_that_comes_late_and_says_what_is_shown_instead_of_another) {
    MeasuredProgram shell({"/bin/sh", "-c", "read line; sleep 0.1; echo so late; read line"});
    shell.typeUntil("\n", "so late");
    shell.expect("so late");
    const std::string failure = thrown_by([&] { shell.expect("a box"); });
    EXPECT_NE(failure.find("does not show \"a box\""), std::string::npos) << failure;
    EXPECT_NE(failure.find("\nso late\n"), std::string::npos) << failure;
}

TEST(MeasuredProgram, that_ends_or_cannot_be_run_or_never_rests_is_given_up_and_ended) {
    EXPECT_THROW(MeasuredProgram({"/bin/true"}), std::runtime_error);
    EXPECT_THROW(MeasuredProgram({"/nowhere/program"}), std::runtime_error);
    const Impatience impatience;
    EXPECT_THROW(MeasuredProgram({"/bin/sleep", "1000"}), std::runtime_error);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "there is a child left";
}

std::vector<Sample> samples_in(const std::string& text) {
    std::istringstream lines(text);
    return read_samples(lines);
}

TEST(Samples, come_back_as_they_were_printed) {
    testing::internal::CaptureStdout();
    print_sample("calls", "creating domain localdomain", 429);
    print_sample("start", "floor", 0.746729);
    print_sample("calls", "aliases", 3);
    const std::vector<Sample> samples = samples_in(testing::internal::GetCapturedStdout());
    EXPECT_EQ(values_of(samples, "start", "floor"), std::vector<double>{0.746729});
    EXPECT_EQ(values_of(samples, "start", "wizard"), std::vector<double>());
    EXPECT_EQ(columns_of(samples, "calls"),
              (std::vector<std::string>{"creating domain localdomain", "aliases"}));
}

TEST(Samples, are_refused_with_the_line_that_is_none) {
    EXPECT_EQ(thrown_by([] { samples_in("start\twizard\t3.5\nSegmentation fault\n"); }),
              "not a sample: Segmentation fault");
    EXPECT_EQ(thrown_by([] { samples_in("start\twizard\tsoon\n"); }),
              "not a sample: start\twizard\tsoon");
}

// The figures of the wizard, whiptail, dialog and the floor, and the line that they give.
struct Comparison {
    std::vector<double> figures;
    int decimals;
    double most;
    std::string line;
};

TEST(ComparisonTable, compares_the_printed_figures_with_the_better_peer_or_a_limit) {
    const Comparison comparisons[] = {
        {{3, 4, 2, 1}, 0, better_peer, "3 | 4 | 2 | 1 | 1.50 | at most 2 | NOT reached"},
        {{3, 4, 5, 1}, 0, better_peer, "3 | 4 | 5 | 1 | 0.75 | at most 4 | reached"},
        {{2, 2, 3, 1}, 0, better_peer, "2 | 2 | 3 | 1 | 1.00 | at most 2 | reached"},
        {{3, 9, 9, 1}, 0, 2, "3 | 9 | 9 | 1 | 0.33 | at most 2 | NOT reached"},
        {{2, 1, 1, 1}, 0, 2, "2 | 1 | 1 | 1 | 2.00 | at most 2 | reached"},
        {{3, 2, 2, 1}, 0, anything, "3 | 2 | 2 | 1 | 1.50 | |"},
        {{0, 0, 5, 0}, 1, better_peer, "0.0 | 0.0 | 5.0 | 0.0 | - | at most 0.0 | reached"},
        {{2.4, 1.6, 3, 1}, 0, better_peer, "2 | 2 | 3 | 1 | 1.00 | at most 2 | reached"},
    };
    for (const auto& [figures, decimals, most, line] : comparisons) {
        EXPECT_EQ(
            comparison_table({{"row", "bytes", decimals, most}}, {{"row", "wizard", figures[0]},
                                                                  {"row", "whiptail", figures[1]},
                                                                  {"row", "dialog", figures[2]},
                                                                  {"row", "floor", figures[3]}}),
            "| | wizard | whiptail | dialog | floor | wizard / better peer | must be | |\n"
            "|---|--:|--:|--:|--:|--:|---|---|\n"
            "| bytes | " +
                line + " |\n");
    }
}

TEST(OwnTable, has_the_median_of_the_samples_in_any_order_and_says_whether_a_limit_is_kept) {
    const std::vector<Row> rows{
        {"fast", "fast, ms", 1, 2}, {"slow", "slow, ms", 1, 2}, {"free", "free, ms", 1, anything}};
    EXPECT_EQ(own_table(rows, samples_in("fast\twizard\t9\nfast\twizard\t1\nfast\twizard\t2\n"
                                         "slow\twizard\t2\nslow\twizard\t2.2\n"
                                         "free\twizard\t7\n")),
              "| | wizard | must be | |\n"
              "|---|--:|---|---|\n"
              "| fast, ms | 2.0 | at most 2.0 | reached |\n"
              "| slow, ms | 2.1 | at most 2.0 | NOT reached |\n"
              "| free, ms | 7.0 | | |\n");
}

// Every figure is 2, and so is every list's.
TEST(AllTables, follow_one_another_and_count_the_targets) {
    std::vector<Sample> samples;
    for (const Row& row : compared_rows) {
        for (const char* column : {"wizard", "whiptail", "dialog", "floor"})
            samples.push_back({row.key, column, 2});
    }
    for (const Row& row : own_rows) samples.push_back({row.key, "wizard", 2});
    for (const Row& row : list_rows) {
        samples.push_back({row.key, "2", 2});
        samples.push_back({row.key, "29", 3});
    }
    EXPECT_EQ(thrown_by([&] { all_tables(samples); }), "no sample of calls");
    EXPECT_EQ(thrown_by([] { own_table(own_rows, {}); }), "no sample of apply_whole for wizard");
    samples.push_back({calls_row, "login", 3});
    samples.push_back({calls_row, "alias", 4});
    samples.push_back({calls_row, "login", 5});
    const std::string tables = all_tables(samples);
    EXPECT_EQ(tables.find(comparison_table(compared_rows, samples) + "\n" +
                          own_table(own_rows, samples) + "\n7 of 15 targets are reached.\n\n"),
              0U)
        << tables;
    const std::string end =
        "\n\n| | 2 rows | 29 rows | ratio |\n"
        "|---|--:|--:|--:|\n"
        "| bytes of the screen with the list | 2 | 3 | 1.50 |\n"
        "| time until it is complete, ms | 2.00 | 3.00 | 1.50 |\n"
        "| bytes for a cursor key in the list | 2 | 3 | 1.50 |\n"
        "| time until its answer is complete, ms | 2.00 | 3.00 | 1.50 |\n"
        "\n"
        "| step of an apply run | system calls |\n"
        "|---|--:|\n"
        "| login | 4 |\n"
        "| alias | 4 |\n";
    EXPECT_EQ(tables.substr(tables.size() - end.size()), end);
}

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
struct TimedLog {
    const char* log;
    double from;
    double asleep;
    double server;
};

TEST(OthersTime, knows_sleeps_and_waits_for_the_server_from_all_else) {
    const TimedLog logs[] = {
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
    for (const auto& [log, from, asleep, server] : logs) {
        SCOPED_TRACE(log);
        const OthersTime time = others_time(trace_of(log), wizard, from, "/opt/server");
        EXPECT_DOUBLE_EQ(time.asleep, asleep);
        EXPECT_DOUBLE_EQ(time.server, server);
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

TEST(CallsByStep, begin_a_step_with_the_line_of_progress_as_it_stands_on_the_terminal) {
    const std::string log =
        "7 1.0 close(3) = 0 <0.1>\n"  // before the run
        "7 2.0 close(3) = 0 <0.1>\n"
        "8 3.0 close(3) = 0 <0.1>\n" +  // of another process
        write_of(std::string(72, '-') + "\n--> making tea ... ", 4) +
        "7 5.0 close(3) = 0 <0.1>\n" + write_of("\033[2;12Hale", 6) +
        write_of("\033[H--> making ale ...\033[2H--> drinking it ...", 7);
    EXPECT_EQ(calls_by_step(trace_of(log), wizard, 1.5),
              (std::vector<std::pair<std::string, int>>{{"opening the progress box", 1},
                                                        {"making tea", 2},
                                                        {"making ale", 1},
                                                        {"drinking it", 1}}));
}

}  // namespace
