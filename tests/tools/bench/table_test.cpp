#include "tools/bench/table.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

constexpr Target as_better_peer{Target::Kind::better_peer, 0};
constexpr Target at_most_two{Target::Kind::at_most, 2};

// A sample of each column of the comparison.
std::vector<Sample> compared(double wizard, double whiptail, double dialog, double floor) {
    return {{"row", "wizard", wizard},
            {"row", "whiptail", whiptail},
            {"row", "dialog", dialog},
            {"row", "floor", floor}};
}

// The last line of the table of one row.
std::string row_of(const std::vector<Sample>& samples, int decimals, Target target) {
    std::string table = comparison_table({{"row", "bytes", decimals, target}}, samples);
    EXPECT_EQ(table.back(), '\n');
    table.pop_back();
    return table.substr(table.rfind('\n') + 1);
}

TEST(ComparisonTable, has_a_heading_and_a_rule_of_as_many_columns) {
    EXPECT_EQ(comparison_table({}, {}),
              "| | wizard | whiptail | dialog | floor | wizard / better peer | must be | |\n"
              "|---|--:|--:|--:|--:|--:|---|---|\n");
}

TEST(ComparisonTable, compares_with_the_better_peer_whichever_it_is) {
    EXPECT_EQ(row_of(compared(300, 400, 200, 100), 0, as_better_peer),
              "| bytes | 300 | 400 | 200 | 100 | 1.50 | at most 200 | NOT reached |");
    EXPECT_EQ(row_of(compared(300, 400, 500, 100), 0, as_better_peer),
              "| bytes | 300 | 400 | 500 | 100 | 0.75 | at most 400 | reached |");
}

TEST(ComparisonTable, takes_as_much_as_the_better_peer_for_reached) {
    EXPECT_EQ(row_of(compared(200, 200, 300, 100), 0, as_better_peer),
              "| bytes | 200 | 200 | 300 | 100 | 1.00 | at most 200 | reached |");
}

TEST(ComparisonTable, compares_with_a_limit_whatever_the_peers_have) {
    EXPECT_EQ(row_of(compared(3, 9, 9, 1), 0, at_most_two),
              "| bytes | 3 | 9 | 9 | 1 | 0.33 | at most 2 | NOT reached |");
    EXPECT_EQ(row_of(compared(2, 1, 1, 1), 0, at_most_two),
              "| bytes | 2 | 1 | 1 | 1 | 2.00 | at most 2 | reached |");
}

TEST(ComparisonTable, says_nothing_of_a_row_without_a_target) {
    EXPECT_EQ(row_of(compared(3, 2, 2, 1), 0, {}), "| bytes | 3 | 2 | 2 | 1 | 1.50 | | |");
}

TEST(ComparisonTable, has_no_multiple_of_nothing) {
    EXPECT_EQ(row_of(compared(0, 0, 5, 0), 1, as_better_peer),
              "| bytes | 0.0 | 0.0 | 5.0 | 0.0 | - | at most 0.0 | reached |");
}

TEST(ComparisonTable, compares_figures_as_it_prints_them) {
    EXPECT_EQ(row_of(compared(2.104, 2.096, 3, 1), 2, as_better_peer),
              "| bytes | 2.10 | 2.10 | 3.00 | 1.00 | 1.00 | at most 2.10 | reached |");
}

TEST(ComparisonTable, takes_the_median_of_the_samples) {
    std::vector<Sample> samples = compared(1, 2, 3, 4);
    samples.push_back({"row", "wizard", 8});
    samples.push_back({"row", "wizard", 9});
    EXPECT_EQ(row_of(samples, 0, {}), "| bytes | 8 | 2 | 3 | 4 | 4.00 | | |");
}

TEST(ComparisonTable, names_what_has_not_been_measured) {
    try {
        row_of({{"row", "wizard", 1}}, 0, {});
        FAIL() << "a row was made";
    } catch (const std::runtime_error& failure) {
        EXPECT_STREQ(failure.what(), "no sample of row for whiptail");
    }
}

TEST(OwnTable, says_whether_a_limit_is_kept) {
    const std::vector<Row> rows{{"fast", "fast, ms", 1, at_most_two},
                                {"slow", "slow, ms", 1, at_most_two},
                                {"free", "free, ms", 1, {}}};
    EXPECT_EQ(
        own_table(rows, {{"fast", "wizard", 2}, {"slow", "wizard", 2.1}, {"free", "wizard", 7}}),
        "| | wizard | must be | |\n"
        "|---|--:|---|---|\n"
        "| fast, ms | 2.0 | at most 2.0 | reached |\n"
        "| slow, ms | 2.1 | at most 2.0 | NOT reached |\n"
        "| free, ms | 7.0 | | |\n");
}

TEST(ListTable, tells_how_a_figure_grows) {
    EXPECT_EQ(
        list_table({{"key", "bytes for a key", 0, {}}}, {{"key", "2", 40}, {"key", "29", 50}}),
        "| | 2 rows | 29 rows | ratio |\n"
        "|---|--:|--:|--:|\n"
        "| bytes for a key | 40 | 50 | 1.25 |\n");
}

TEST(ColumnTable, has_a_line_for_each_column_of_the_samples) {
    EXPECT_EQ(column_table("calls", "step", "calls",
                           {{"calls", "login", 3}, {"calls", "alias", 4}, {"calls", "login", 5}}),
              "| step | calls |\n"
              "|---|--:|\n"
              "| login | 4 |\n"
              "| alias | 4 |\n");
}

TEST(ColumnTable, of_nothing_is_refused) {
    EXPECT_THROW(column_table("calls", "step", "calls", {}), std::runtime_error);
}

TEST(ReachedCount, counts_the_rows_that_have_a_target) {
    EXPECT_EQ(reached_count("| a | 1 | at most 2 | reached |\n"
                            "| b | 3 | at most 2 | NOT reached |\n"
                            "| c | 3 | | |\n"
                            "| d | 2 | at most 2 | reached |\n"),
              "2 of 3 targets are reached.");
}

}  // namespace
