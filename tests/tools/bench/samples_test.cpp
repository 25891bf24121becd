#include "tools/bench/samples.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

namespace {

std::vector<Sample> samples_in(const std::string& text) {
    std::istringstream lines(text);
    return read_samples(lines);
}

TEST(Median, is_the_middle_one_of_an_odd_number_in_any_order) {
    EXPECT_EQ(median({9, 1, 5}), 5);
}

TEST(Median, is_between_the_two_middle_ones_of_an_even_number) {
    EXPECT_EQ(median({10, 1, 4, 2}), 3);
}

TEST(Median, of_one_is_that) {
    EXPECT_EQ(median({7}), 7);
}

TEST(Median, does_not_follow_an_outlier) {
    EXPECT_EQ(median({2, 2, 1000}), 2);
}

TEST(Median, of_nothing_is_refused) {
    EXPECT_THROW(median({}), std::invalid_argument);
}

TEST(Samples, come_back_as_they_were_printed) {
    testing::internal::CaptureStdout();
    print_sample("memory", "wizard", 2636);
    print_sample("calls", "creating domain localdomain", 429);
    print_sample("start", "floor", 0.746729);
    const std::vector<Sample> samples = samples_in(testing::internal::GetCapturedStdout());
    ASSERT_EQ(samples.size(), 3U);
    EXPECT_EQ(samples[1].row, "calls");
    EXPECT_EQ(samples[1].column, "creating domain localdomain");
    EXPECT_EQ(samples[1].value, 429);
    EXPECT_EQ(samples[2].value, 0.746729);
}

TEST(Samples, are_refused_with_the_line_that_is_none) {
    try {
        samples_in("start\twizard\t3.5\nSegmentation fault\n");
        FAIL() << "the line was taken";
    } catch (const std::runtime_error& failure) {
        EXPECT_STREQ(failure.what(), "not a sample: Segmentation fault");
    }
}

TEST(Samples, without_a_number_are_refused) {
    EXPECT_THROW(samples_in("start\twizard\tsoon\n"), std::runtime_error);
}

TEST(Samples, are_found_by_row_and_column) {
    const std::vector<Sample> samples = samples_in(
        "start\twizard\t3\n"
        "start\tfloor\t1\n"
        "memory\twizard\t2000\n"
        "start\twizard\t4\n");
    EXPECT_EQ(values_of(samples, "start", "wizard"), (std::vector<double>{3, 4}));
    EXPECT_TRUE(values_of(samples, "memory", "floor").empty());
}

TEST(Samples, keep_the_columns_of_a_row_in_the_order_of_their_coming) {
    const std::vector<Sample> samples = samples_in(
        "calls\tlogin\t3\n"
        "start\twizard\t3\n"
        "calls\talias\t4\n"
        "calls\tlogin\t5\n");
    EXPECT_EQ(columns_of(samples, "calls"), (std::vector<std::string>{"login", "alias"}));
}

}  // namespace
