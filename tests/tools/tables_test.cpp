#include "tools/bench/tables.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "tests/tools/thrown_by.h"

namespace {

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
        {{300, 400, 200, 100},
         0,
         better_peer,
         "300 | 400 | 200 | 100 | 1.50 | at most 200 | NOT reached"},
        {{300, 400, 500, 100},
         0,
         better_peer,
         "300 | 400 | 500 | 100 | 0.75 | at most 400 | reached"},
        {{200, 200, 300, 100},
         0,
         better_peer,
         "200 | 200 | 300 | 100 | 1.00 | at most 200 | reached"},
        {{3, 9, 9, 1}, 0, 2, "3 | 9 | 9 | 1 | 0.33 | at most 2 | NOT reached"},
        {{2, 1, 1, 1}, 0, 2, "2 | 1 | 1 | 1 | 2.00 | at most 2 | reached"},
        {{3, 2, 2, 1}, 0, anything, "3 | 2 | 2 | 1 | 1.50 | |"},
        {{0, 0, 5, 0}, 1, better_peer, "0.0 | 0.0 | 5.0 | 0.0 | - | at most 0.0 | reached"},
        {{2.104, 2.096, 3, 1},
         2,
         better_peer,
         "2.10 | 2.10 | 3.00 | 1.00 | 1.00 | at most 2.10 | reached"},
    };
    for (const Comparison& comparison : comparisons) {
        const std::vector<double>& all = comparison.figures;
        EXPECT_EQ(comparison_table({{"row", "bytes", comparison.decimals, comparison.most}},
                                   {{"row", "wizard", all[0]},
                                    {"row", "whiptail", all[1]},
                                    {"row", "dialog", all[2]},
                                    {"row", "floor", all[3]}}),
                  "| | wizard | whiptail | dialog | floor | wizard / better peer | must be | |\n"
                  "|---|--:|--:|--:|--:|--:|---|---|\n"
                  "| bytes | " +
                      comparison.line + " |\n");
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

}  // namespace
