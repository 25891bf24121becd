// The parts of ./bench, from the wizard to the samples.

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/process.h"
#include "tools/bench/tables.h"

namespace {

std::vector<Sample> samples_of(const std::string& part, const std::vector<std::string>& arguments) {
    std::vector<std::string> command{BENCH_PROGRAM, part, WIZARD_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const CommandResult result = run_command(command);
    EXPECT_EQ(result.status, exited(0)) << result.err;
    std::istringstream lines(result.out);
    return read_samples(lines);
}

std::vector<double> wizards(const std::vector<Sample>& samples, const std::string& row) {
    return values_of(samples, row, "wizard");
}

TEST(BenchRun, compares_four_programs_in_every_row_but_idleness) {
    const std::vector<Sample> samples = samples_of("compare", {FLOOR_PROGRAM, "1"});
    const std::vector<std::string> programs{"wizard", "whiptail", "dialog", "floor"};
    for (const Row& row : compared_rows) {
        const bool idle = std::string(row.key).rfind("idle_", 0) == 0;
        EXPECT_EQ(columns_of(samples, row.key), idle ? std::vector<std::string>{} : programs)
            << row.key;
    }
    EXPECT_EQ(values_of(samples, "screen_writes", "floor"), std::vector<double>{1});
    EXPECT_EQ(values_of(samples, "password_bytes", "floor"), std::vector<double>(10, 1));
    EXPECT_EQ(values_of(samples, "text_writes", "floor"), std::vector<double>(10, 1));
    EXPECT_EQ(values_of(samples, "resize_writes", "floor"), std::vector<double>{1});
}

TEST(BenchRun, walks_through_all_screens) {
    const std::vector<Sample> samples = samples_of("walk", {});
    EXPECT_EQ(wizards(samples, "walk_bytes").size(), 1U);
    EXPECT_LT(wizards(samples, "stripped").at(0), wizards(samples, "executable").at(0));
}

// The loopback, two interfaces and "all".
TEST(BenchRun, samples_drawing_and_keys_of_the_list_that_there_is_and_refuses_another) {
    const std::vector<Sample> samples = samples_of("list", {"4", "1"});
    for (const Row& row : list_rows)
        EXPECT_EQ(columns_of(samples, row.key), std::vector<std::string>{"4"}) << row.key;
    const CommandResult result = run_command({BENCH_PROGRAM, "list", WIZARD_PROGRAM, "29", "1"});
    EXPECT_EQ(result.status, exited(1));
    EXPECT_EQ(result.err,
              "bench_wizard list: the list of interfaces has another number of rows here\n");
}

TEST(BenchRun, divides_the_time_of_an_apply_run) {
    const std::vector<Sample> samples = samples_of("apply", {});
    const double whole = wizards(samples, "apply_whole").at(0);
    const double asleep = wizards(samples, "apply_asleep").at(0);
    const double server = wizards(samples, "apply_server").at(0);
    EXPECT_GT(asleep, 0);
    EXPECT_GT(server, 0);
    EXPECT_GT(wizards(samples, "apply_own").at(0), 0);
    EXPECT_NEAR(wizards(samples, "apply_own").at(0) + asleep + server, whole, 0.001);
}

TEST(BenchRun, counts_the_calls_of_every_step) {
    EXPECT_EQ(columns_of(samples_of("calls", {}), calls_row),
              (std::vector<std::string>{
                  "opening the progress box", "setting admin password", "connecting to CLI",
                  "creating domain localdomain", "adding aliases", "configuring WebAdmin",
                  "configuring SMTP", "configuring POP3", "configuring IMAP", "configuring WEBMAIL",
                  "configuring relay", "configuring TELUMA sendmail"}));
}

}  // namespace
