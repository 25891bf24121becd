#include "ui/format_label.h"

#include <cstring>
#include <string>
#include <vector>

#include "tests/ui/ui_test.h"
#include "ui/line_breaker.h"

namespace {

class FormatLabelTest : public UiTest {
  protected:
    /// The lines of a label of this text, without the blanks at their ends.
    std::vector<std::string> lines(const std::string& text, int width,
                                   int mode = break_between_words) {
        FormatLabel label(text.c_str(), 2, 3, root(), width, mode);
        label.draw();
        EXPECT_EQ(label.getHeight(), label.getLineCount()) << text;
        EXPECT_EQ(label.getWidth(), width) << text;
        std::vector<std::string> lines;
        for (int line = 0; line < label.getLineCount(); ++line) {
            const std::string whole = line_of(label.getCursesWindow(), line);
            lines.push_back(whole.substr(0, whole.find_last_not_of(' ') + 1));
        }
        return lines;
    }

    using Lines = std::vector<std::string>;
};

TEST_F(FormatLabelTest, anywhere_breaks_after_every_width_characters) {
    EXPECT_EQ(lines("abcdefghijk", 4, break_anywhere), (Lines{"abcd", "efgh", "ijk"}));
    EXPECT_EQ(lines("ab cd ef", 4, break_anywhere), (Lines{"ab c", "d ef"}));
    EXPECT_EQ(lines("abcd", 4, break_anywhere), (Lines{"abcd"}));
}

TEST_F(FormatLabelTest, a_single_word_breaks_anywhere) {
    EXPECT_EQ(lines("abcdefghijk", 4), (Lines{"abcd", "efgh", "ijk"}));
}

TEST_F(FormatLabelTest, a_single_word_keeps_the_blanks_around_it) {
    EXPECT_EQ(lines("  abcdefgh ", 4), (Lines{"  ab", "cdef", "gh"}));
}

TEST_F(FormatLabelTest, a_single_word_breaks_anywhere_every_time_it_is_drawn) {
    FormatLabel label("abcdef", 2, 3, root(), 4, break_between_words);
    label.draw();
    label.draw();
    EXPECT_PICTURE(shown(2, 3, 2, 4), R"(
abcd
ef
)");
}

TEST_F(FormatLabelTest, words_that_fit_stand_on_the_last_line_with_single_blanks) {
    EXPECT_EQ(lines("aa  bb\tcc\ndd", 30), (Lines{"aa bb cc dd"}));
}

TEST_F(FormatLabelTest, a_line_is_stretched_to_the_last_column_and_the_last_line_is_not) {
    EXPECT_EQ(lines("aa bb cccccccccc dd", 10), (Lines{"aa      bb", "cccccccccc", "dd"}));
}

TEST_F(FormatLabelTest, blanks_are_spread_evenly_over_the_gaps) {
    EXPECT_EQ(lines("aa bb cc dd eeeeeeeeeeee", 20),
              (Lines{"aa    bb    cc    dd", "eeeeeeeeeeee"}));
}

TEST_F(FormatLabelTest, gaps_that_must_be_wider_stand_on_the_left) {
    EXPECT_EQ(lines("aa bb cc dd eeeeeeeeeeee", 21),
              (Lines{"aa     bb    cc    dd", "eeeeeeeeeeee"}));
    EXPECT_EQ(lines("aa bb cc dd eeeeeeeeeeee", 22),
              (Lines{"aa     bb     cc    dd", "eeeeeeeeeeee"}));
}

TEST_F(FormatLabelTest, a_single_word_on_a_line_is_not_stretched) {
    EXPECT_EQ(lines("aaaaaa bbbbbb cccccc", 10), (Lines{"aaaaaa", "bbbbbb", "cccccc"}));
}

TEST_F(FormatLabelTest, two_words_that_fill_the_line_exactly_leave_an_empty_line_behind_them) {
    EXPECT_EQ(lines("aaa bbb", 7), (Lines{"aaa bbb", ""}));
    EXPECT_EQ(lines("aaa bbb cc", 7), (Lines{"aaa bbb", "cc"}));
}

TEST_F(FormatLabelTest, two_words_that_are_one_short_of_the_line_stay_the_last_line) {
    EXPECT_EQ(lines("aaa bbb", 8), (Lines{"aaa bbb"}));
}

TEST_F(FormatLabelTest, two_words_that_are_one_too_long_stand_on_two_lines) {
    EXPECT_EQ(lines("aaa bbb", 6), (Lines{"aaa", "bbb"}));
}

TEST_F(FormatLabelTest, a_word_as_long_as_the_line_stands_alone_on_it) {
    EXPECT_EQ(lines("aa bbbbbbbbbb cc", 10), (Lines{"aa", "bbbbbbbbbb", "cc"}));
    EXPECT_EQ(lines("bbbbbbbbbb cc", 10), (Lines{"bbbbbbbbbb", "cc"}));
}

// A word is the last of its line also where the numbers of line and column add up to the last
// column: here line 1 and column 8, at "d".
TEST_F(FormatLabelTest, a_line_ends_early_where_line_and_column_add_up_to_the_last_column) {
    EXPECT_EQ(lines("aaaaaaaaaa ccccccc d e", 10), (Lines{"aaaaaaaaaa", "ccccccc  d", "e"}));
    // One line further down they do not, and the oddity of the next test shows instead.
    EXPECT_EQ(lines("aaaaaaaaaa bbbbbbbbbb ccccccc d e", 10),
              (Lines{"aaaaaaaaaa", "bbbbbbbbbb", "ccccccc d", "e"}));
}

TEST_F(FormatLabelTest, a_word_at_the_start_of_a_line_with_the_number_of_the_last_column_is_alone) {
    EXPECT_EQ(lines("aaa aaa b c", 3), (Lines{"aaa", "aaa", "b", "c"}));
}

// Behind a word that ends one column before the edge no blank is counted, so one letter more still
// seems to fit.
TEST_F(FormatLabelTest, one_letter_behind_a_word_that_ends_before_the_last_column_joins_it) {
    EXPECT_EQ(lines("aaaaaaaaa b", 10), (Lines{"aaaaaaaaab", ""}));
    EXPECT_EQ(lines("cc aaaaaaaaa b", 10), (Lines{"cc", "aaaaaaaaab", ""}));
}

TEST_F(FormatLabelTest, one_letter_behind_two_words_that_end_before_the_last_column_runs_over) {
    EXPECT_EQ(lines("aaaa bbbb c", 10), (Lines{"aaaa bbbb", "c"}));
}

TEST_F(FormatLabelTest, a_word_longer_than_the_line_runs_on_over_the_following_lines) {
    EXPECT_EQ(lines("ab cdefghijklmnop qr", 10), (Lines{"ab cdefghi", "jklmnop qr", ""}));
    EXPECT_EQ(lines("cdefghijklmnopqrstuvwx yz", 10), (Lines{"cdefghijkl", "mnopqrstuv", "yz"}));
}

TEST_F(FormatLabelTest, a_long_word_that_ends_with_the_line_is_followed_by_a_new_line) {
    EXPECT_EQ(lines("abcdefghijklmnopqrst uv", 10), (Lines{"abcdefghij", "klmnopqrst", "uv"}));
    EXPECT_EQ(lines("ab cdefghijklmnopqrs uv", 10), (Lines{"ab cdefghi", "jklmnopqrs", "uv"}));
    EXPECT_EQ(lines("abcdefghijklmnopqrst uu vv wwwwwwww", 10),
              (Lines{"abcdefghij", "klmnopqrst", "uu      vv", "wwwwwwww"}));
}

TEST_F(FormatLabelTest, words_behind_a_long_word_are_stretched_from_where_it_ends) {
    EXPECT_EQ(lines("cdefghijklmno p qq rrrr", 10), (Lines{"cdefghijkl", "mno p   qq", "rrrr"}));
    EXPECT_EQ(lines("cdefghijklmno pp qqq rr", 10), (Lines{"cdefghijkl", "mno pp qqq", "rr"}));
}

TEST_F(FormatLabelTest, the_last_words_are_printed_from_the_first_column_over_a_long_words_end) {
    EXPECT_EQ(lines("cdefghijklmno p", 10), (Lines{"cdefghijkl", "pno"}));
}

TEST_F(FormatLabelTest, every_character_has_the_foreground_pair_and_the_rest_the_background_pair) {
    FormatLabel label("aa bb cccccc", 2, 3, root(), 8, break_between_words);
    label.setColors(2, 1, 0);
    label.draw();
    const ScreenImage image = shown(2, 3, 2, 8);
    EXPECT_PICTURE(image, R"(
aa    bb
cccccc
)");
    EXPECT_COLOURS(image, R"(
kkkkkkkk
kkkkkkbb
)");
}

TEST_F(FormatLabelTest, a_message_of_the_dialogs_is_bold_white_on_blue) {
    FormatLabel label("aa bb", 2, 3, root(), 8, break_between_words);
    label.setColors(2, 2, 1);
    label.draw();
    EXPECT_COLOURS(shown(2, 3, 1, 8), "BBbBBbbb\n");
}

TEST_F(FormatLabelTest, an_empty_text_has_no_lines_and_a_window_down_to_the_bottom_of_the_screen) {
    FormatLabel label("", 20, 3, root(), 10, break_between_words);
    EXPECT_EQ(label.getLineCount(), 0);
    EXPECT_EQ(label.getHeight(), 4);
    EXPECT_EQ(label.getWidth(), 10);
    label.setColors(2, 2, 1);
    label.draw();
    EXPECT_COLOURS(shown(19, 2, 5, 12), R"(
kkkkkkkkkkkk
kbbbbbbbbbbk
kbbbbbbbbbbk
kbbbbbbbbbbk
kbbbbbbbbbbk
)");
}

TEST_F(FormatLabelTest, separators_alone_draw_nothing) {
    FormatLabel label(" \t\n", 22, 3, root(), 10, break_between_words);
    label.draw();
    EXPECT_EQ(label.getLineCount(), 0);
    EXPECT_EQ(shown().text().find_first_not_of(" \n"), std::string::npos);
}

TEST_F(FormatLabelTest, text_that_takes_more_than_its_lines_is_cut_at_the_bottom) {
    // The tab counts as one character, but goes to column 8.
    FormatLabel label("\tabcdefgh", 2, 3, root(), 10, break_anywhere);
    EXPECT_EQ(label.getLineCount(), 1);
    label.draw();
    const ScreenImage image = shown();
    EXPECT_EQ(image.rowText(2).substr(3, 9), "        a");
    EXPECT_EQ(image.rowText(3).find_first_not_of(' '), std::string::npos);
}

TEST_F(FormatLabelTest, another_mode_has_no_lines_and_draws_nothing) {
    FormatLabel label("some words", 22, 3, root(), 10, 1);
    label.draw();
    EXPECT_EQ(label.getLineCount(), 0);
    EXPECT_EQ(shown().text().find_first_not_of(" \n"), std::string::npos);
}

TEST_F(FormatLabelTest, keeps_a_copy_of_its_text) {
    char text[] = "First";
    FormatLabel label(text, 2, 3, root(), 10, break_between_words);
    std::strcpy(text, "wrong");
    label.draw();
    EXPECT_PICTURE(shown(2, 3, 1, 10), "First\n");
}

TEST_F(FormatLabelTest, stands_at_its_place_of_the_parent) {
    Window frame(root(), 4, 10, 5, 20);
    frame.create();
    FormatLabel label("aa bb", 1, 2, &frame, 10, break_between_words);
    label.draw();
    EXPECT_EQ(shown().find("aa bb"), (Position{5, 12}));
}

TEST_F(FormatLabelTest, a_question_whose_lines_just_fit_is_not_stretched) {
    EXPECT_EQ(
        lines("Selecting 127.0.0.1 will enable access to WebAdmin interface \tonly from "
              "this machine and not remotely from other machines. Are you sure?",
              60),
        (Lines{"Selecting 127.0.0.1 will enable access to WebAdmin interface",
               "only from this machine and not remotely from other machines.", "Are you sure?"}));
}

TEST_F(FormatLabelTest, a_question_whose_lines_are_one_short_has_a_wider_gap_in_front) {
    EXPECT_EQ(lines("Selecting 127.0.0.1 will enable access to SMTP service \tonly from this "
                    "machine and not remotely from other machines. Are you sure?",
                    60),
              (Lines{"Selecting  127.0.0.1 will enable access to SMTP service only",
                     "from  this machine and not remotely from other machines. Are", "you sure?"}));
}

}  // namespace
