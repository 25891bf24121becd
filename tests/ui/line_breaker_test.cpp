#include "ui/line_breaker.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

/// A text, its width and how many lines it takes broken anywhere and between words.
struct Counted {
    std::string text;
    int width;
    int anywhere;
    int between_words;
};

TEST(CountLines, goes_by_text_width_and_mode) {
    for (const Counted& counted : {
             Counted{"", 60, 0, 0},
             Counted{"abc", 60, 1, 1},
             Counted{std::string(59, 'x'), 60, 1, 1},
             Counted{std::string(60, 'x'), 60, 1, 1},
             Counted{std::string(61, 'x'), 60, 2, 2},
             Counted{std::string(130, 'x'), 60, 3, 3},
             Counted{"aa bb cc", 5, 2, 2},
             Counted{"aa bb cc", 4, 2, 3},
             Counted{" \t\n  \n", 60, 1, 0},
             // A single word is counted with the separators around it.
             Counted{"  abc ", 6, 1, 1},
             Counted{"  abc ", 5, 2, 2},
             Counted{"abc\n\n\n", 3, 2, 2},
             Counted{"some words", 1, 10, 10},
             Counted{"some words", 0, 0, 0},
             Counted{"some words", -2, 0, 0},
         }) {
        EXPECT_EQ(countLines(counted.text.c_str(), counted.width, 0), counted.anywhere)
            << counted.text << " " << counted.width;
        EXPECT_EQ(countLines(counted.text.c_str(), counted.width, 2), counted.between_words)
            << counted.text << " " << counted.width;
        for (const int mode : {-1, 1, 3, 100})
            EXPECT_EQ(countLines(counted.text.c_str(), counted.width, mode), 0) << mode;
    }
}

TEST(SplitWords, splits_at_spaces_tabs_and_line_feeds_alone_and_gives_no_empty_words) {
    using Words = std::vector<std::string>;
    EXPECT_EQ(split_words(" one\ttwo\n\n three  "), (Words{"one", "two", "three"}));
    EXPECT_EQ(split_words("one\rtwo\vthree"), (Words{"one\rtwo\vthree"}));
    EXPECT_EQ(split_words(""), Words());
    EXPECT_EQ(split_words("\t \n"), Words());
    EXPECT_EQ(split_words(std::string(5000, ' ') + "w"), Words{"w"});
}

TEST(BreakWords, every_stretched_line_ends_at_the_last_column_and_none_is_beyond_the_count) {
    const char* const text =
        "There is already an application that binds the 25 port on the selected interface "
        "192.168.100.200. Please stop that application and remove it from the automatic startup "
        "daemons at boot.";
    for (int width = 20; width <= 60; ++width) {
        const BrokenText broken = break_text(text, width, break_between_words);
        for (const TextRun& run : broken.runs) {
            EXPECT_LT(run.line, broken.line_count) << width;
            if (&run != &broken.runs.back() && run.text.find(' ') != std::string::npos) {
                EXPECT_EQ(run.col + static_cast<int>(run.text.size()), width) << run.text;
            }
        }
    }
}

}  // namespace
