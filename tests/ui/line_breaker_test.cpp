#include "ui/line_breaker.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string repeated(char character, size_t count) {
    return std::string(count, character);
}

TEST(CountLines, of_an_empty_text_is_0) {
    EXPECT_EQ(countLines("", 60, break_between_words), 0);
    EXPECT_EQ(countLines("", 60, break_anywhere), 0);
}

TEST(CountLines, of_one_short_word_is_1) {
    EXPECT_EQ(countLines("abc", 60, break_between_words), 1);
    EXPECT_EQ(countLines("abc", 60, break_anywhere), 1);
}

TEST(CountLines, of_a_single_word_of_130_characters_at_width_60_is_3) {
    EXPECT_EQ(countLines(repeated('x', 130).c_str(), 60, break_between_words), 3);
}

TEST(CountLines, anywhere_rounds_the_length_over_the_width_up) {
    EXPECT_EQ(countLines(repeated('x', 59).c_str(), 60, break_anywhere), 1);
    EXPECT_EQ(countLines(repeated('x', 60).c_str(), 60, break_anywhere), 1);
    EXPECT_EQ(countLines(repeated('x', 61).c_str(), 60, break_anywhere), 2);
    EXPECT_EQ(countLines("a b c d e", 2, break_anywhere), 5);
}

TEST(CountLines, the_modes_are_0_for_anywhere_and_2_for_between_words) {
    EXPECT_EQ(countLines("aa bb cc", 5, 0), 2);
    EXPECT_EQ(countLines("aa bb cc", 4, 2), 3);
}

TEST(CountLines, of_any_other_mode_is_0) {
    for (const int mode : {-1, 1, 3, 100})
        EXPECT_EQ(countLines("some words", 60, mode), 0) << mode;
}

TEST(CountLines, of_separators_alone_is_0) {
    EXPECT_EQ(countLines(" \t\n  \n", 60, break_between_words), 0);
}

TEST(CountLines, of_one_word_counts_the_separators_around_it_too) {
    EXPECT_EQ(countLines("  abc ", 6, break_between_words), 1);
    EXPECT_EQ(countLines("  abc ", 5, break_between_words), 2);
    EXPECT_EQ(countLines("abc\n\n\n", 3, break_between_words), 2);
}

TEST(CountLines, of_a_width_below_1_is_0) {
    EXPECT_EQ(countLines("some words", 0, break_between_words), 0);
    EXPECT_EQ(countLines("some words", 0, break_anywhere), 0);
    EXPECT_EQ(countLines("some words", -2, break_anywhere), 0);
}

TEST(SplitWords, splits_at_blanks_tabs_and_line_feeds_and_gives_no_empty_words) {
    EXPECT_EQ(split_words(" one\ttwo\n\n three  "),
              (std::vector<std::string>{"one", "two", "three"}));
    EXPECT_EQ(split_words("one"), (std::vector<std::string>{"one"}));
    EXPECT_EQ(split_words(""), std::vector<std::string>{});
    EXPECT_EQ(split_words("\t \n"), std::vector<std::string>{});
}

TEST(SplitWords, keeps_other_white_space_in_the_words) {
    EXPECT_EQ(split_words("one\rtwo\vthree"), (std::vector<std::string>{"one\rtwo\vthree"}));
}

TEST(SplitWords, takes_far_more_than_a_thousand_words) {
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += "w ";
    EXPECT_EQ(split_words(text.c_str()).size(), 5000U);
    EXPECT_EQ(countLines(text.c_str(), 60, break_between_words),
              break_words(split_words(text.c_str()), 60).line_count);
}

// The number of lines that a label makes room for must be what its text is broken into.
TEST(BreakWords, breaks_into_as_many_lines_as_are_counted) {
    const char* const text =
        "Selecting 127.0.0.1 will enable access to POP3 service\tonly from this machine and not "
        "remotely from other machines. Are you sure?";
    for (int width = 1; width <= 130; ++width) {
        const BrokenText broken = break_words(split_words(text), width);
        EXPECT_EQ(broken.line_count, countLines(text, width, break_between_words)) << width;
        for (const TextRun& run : broken.runs) {
            EXPECT_GE(run.line, 0);
            EXPECT_LT(run.line, broken.line_count) << width;
        }
    }
}

TEST(BreakWords, every_stretched_line_ends_at_the_last_column) {
    const std::vector<std::string> words = split_words(
        "There is already an application that binds the 25 port on the selected interface "
        "192.168.100.200. Please stop that application and remove it from the automatic startup "
        "daemons at boot.");
    for (int width = 20; width <= 60; ++width) {
        const BrokenText broken = break_words(words, width);
        for (size_t i = 0; i + 1 < broken.runs.size(); ++i) {
            const TextRun& run = broken.runs[i];
            if (run.text.find(' ') == std::string::npos)
                continue;
            EXPECT_EQ(run.col + static_cast<int>(run.text.size()), width) << run.text;
        }
    }
}

}  // namespace
