#include "ui/label.h"

#include <string>
#include <vector>

#include "tests/ui/ui_test.h"
#include "ui/line_breaker.h"

namespace {

class LabelTest : public UiTest {
  protected:
    LabelTest() : label(root(), 2, 3, "Port:") { label.setColors(2, 1, 0); }

    Label label;
};

TEST_F(LabelTest, is_one_line_as_wide_as_its_text_at_its_place_of_the_parent) {
    Window frame(root(), 4, 10, 5, 20);
    frame.create();
    std::string text = "100%s%d:";
    Label copied(&frame, 1, 2, text.c_str());
    text.assign(text.size(), '!');
    for (const bool focused : {false, true}) {
        copied.setFocused(focused);
        copied.draw();
        EXPECT_EQ(shown().find("100%s%d:"), (Position{5, 12}));
    }
    EXPECT_EQ(copied.getHeight(), 1);
    EXPECT_EQ(copied.getWidth(), 8);
}

TEST_F(LabelTest, without_a_highlight_has_the_foreground_pair) {
    EXPECT_PICTURE(drawn(label), "Port:\n");
    EXPECT_COLOURS(look(label), "kkkkk\n");
}

/// A highlight and the looks of the label with it.
struct Highlight {
    int pair;
    int length;
    const char* looks;
};

TEST_F(LabelTest, a_highlight_has_its_pair_and_what_follows_it_the_background_pair) {
    for (const Highlight& highlight :
         {Highlight{3, 2, "rrbbb\n"}, Highlight{0, 2, "kkbbb\n"}, Highlight{3, 0, "bbbbb\n"},
          Highlight{3, 50, "rrrrr\n"}, Highlight{2, 5, "bbbbb\n"}, Highlight{2, 4, "bbbbb\n"},
          Highlight{3, -1, "bbbbb\n"}, Highlight{-1, 4, "kkkkk\n"}}) {
        label.setHighlight(highlight.pair, highlight.length);
        EXPECT_PICTURE(drawn(label), "Port:\n");
        EXPECT_COLOURS(look(label), highlight.looks) << highlight.pair << " " << highlight.length;
    }
}

TEST_F(LabelTest, of_the_focused_field_is_white_on_black_but_for_its_colon_and_goes_back) {
    label.setColors(2, 2, 1);
    const ScreenImage before = drawn(label);
    label.setFocused(true);
    EXPECT_COLOURS(drawn(label), "KKKKB\n");
    label.setFocused(false);
    EXPECT_SAME_LOOK(before, drawn(label));
}

TEST_F(LabelTest, an_empty_text_in_front_of_a_field_with_the_focus_draws_nothing) {
    Label empty(root(), 5, 10, "");
    empty.setFocused(true);
    empty.draw();
    EXPECT_EQ(shown().rowText(5).find_first_not_of(' '), std::string::npos);
}

class FormatLabelTest : public UiTest {
  protected:
    /// The lines of a label of this text, without the blanks at their ends, drawn as often as you
    /// like.
    std::vector<std::string> lines(const std::string& text, int width, int mode, int drawings) {
        FormatLabel label(text.c_str(), 2, 3, root(), width, mode);
        for (int i = 0; i < drawings; ++i) label.draw();
        EXPECT_EQ(label.getHeight(), label.getLineCount()) << text;
        EXPECT_EQ(label.getWidth(), width) << text;
        std::vector<std::string> lines;
        for (int line = 0; line < label.getLineCount(); ++line) {
            const std::string whole = line_of(label.getCursesWindow(), line);
            lines.push_back(whole.substr(0, whole.find_last_not_of(' ') + 1));
        }
        return lines;
    }
};

/// A text, its width and the lines into which it is broken between words.
struct Broken {
    std::string text;
    int width;
    std::vector<std::string> lines;
};

const Broken broken_texts[] = {
    // A single word breaks anywhere and keeps the spaces around it.
    {"abcdefghijk", 4, {"abcd", "efgh", "ijk"}},
    {"  abcdefgh ", 4, {"  ab", "cdef", "gh"}},
    {"abc", 1, {"a", "b", "c"}},

    // Words that fit stand on the last line, which is not stretched, the others are.
    {"aa  bb\tcc\ndd", 30, {"aa bb cc dd"}},
    {"aa bb cccccccccc dd", 10, {"aa      bb", "cccccccccc", "dd"}},
    {"aaaaaa bbbbbb cccccc", 10, {"aaaaaa", "bbbbbb", "cccccc"}},

    // Spaces are spread evenly; gaps that must be wider stand on the left.
    {"aa bb cc dd eeeeeeeeeeee", 20, {"aa    bb    cc    dd", "eeeeeeeeeeee"}},
    {"aa bb cc dd eeeeeeeeeeee", 21, {"aa     bb    cc    dd", "eeeeeeeeeeee"}},
    {"aa bb cc dd eeeeeeeeeeee", 22, {"aa     bb     cc    dd", "eeeeeeeeeeee"}},

    // Two words that fill the line exactly leave an empty line after them.
    {"aaa bbb", 7, {"aaa bbb", ""}},
    {"aaa bbb cc", 7, {"aaa bbb", "cc"}},
    {"aaa bbb", 8, {"aaa bbb"}},
    {"aaa bbb", 6, {"aaa", "bbb"}},
    {"aa bbbbbbbbbb cc", 10, {"aa", "bbbbbbbbbb", "cc"}},
    {"bbbbbbbbbb cc", 10, {"bbbbbbbbbb", "cc"}},

    // A word is the last of its line also where the numbers of line and column add up to the last
    // column: here line 1 and column 8, at "d". One line further down they do not.
    {"aaaaaaaaaa ccccccc d e", 10, {"aaaaaaaaaa", "ccccccc  d", "e"}},
    {"aaaaaaaaaa bbbbbbbbbb ccccccc d e", 10, {"aaaaaaaaaa", "bbbbbbbbbb", "ccccccc d", "e"}},
    {"aaa aaa b c", 3, {"aaa", "aaa", "b", "c"}},

    // After a word that ends one column before the edge no space is counted, so one letter more
    // still seems to fit.
    {"aaaaaaaaa b", 10, {"aaaaaaaaab", ""}},
    {"cc aaaaaaaaa b", 10, {"cc", "aaaaaaaaab", ""}},
    {"aaaa bbbb c", 10, {"aaaa bbbb", "c"}},

    // A word longer than the line runs on over the following lines.
    {"ab cdefghijklmnop qr", 10, {"ab cdefghi", "jklmnop qr", ""}},
    {"cdefghijklmnopqrstuvwx yz", 10, {"cdefghijkl", "mnopqrstuv", "yz"}},
    {"abcdefghijklmnopqrst uv", 10, {"abcdefghij", "klmnopqrst", "uv"}},
    {"ab cdefghijklmnopqrs uv", 10, {"ab cdefghi", "jklmnopqrs", "uv"}},
    {"abcdefghijklmnopqrst uu vv wwwwwwww",
     10,
     {"abcdefghij", "klmnopqrst", "uu      vv", "wwwwwwww"}},

    // Words after it are stretched from where it ends, but the last ones are printed over its end.
    {"cdefghijklmno p qq rrrr", 10, {"cdefghijkl", "mno p   qq", "rrrr"}},
    {"cdefghijklmno pp qqq rr", 10, {"cdefghijkl", "mno pp qqq", "rr"}},
    {"cdefghijklmno p", 10, {"cdefghijkl", "pno"}},

    {"Selecting 127.0.0.1 will enable access to WebAdmin interface \tonly from this machine and "
     "not remotely from other machines. Are you sure?",
     60,
     {"Selecting 127.0.0.1 will enable access to WebAdmin interface",
      "only from this machine and not remotely from other machines.", "Are you sure?"}},
    {"Selecting 127.0.0.1 will enable access to SMTP service \tonly from this machine and not "
     "remotely from other machines. Are you sure?",
     60,
     {"Selecting  127.0.0.1 will enable access to SMTP service only",
      "from  this machine and not remotely from other machines. Are", "you sure?"}},
};

TEST_F(FormatLabelTest, between_words_breaks_as_the_wizard_always_has_however_often_it_is_drawn) {
    for (const Broken& broken : broken_texts) {
        EXPECT_EQ(lines(broken.text, broken.width, break_between_words, 1), broken.lines);
        EXPECT_EQ(lines(broken.text, broken.width, break_between_words, 2), broken.lines);
    }
}

TEST_F(FormatLabelTest, anywhere_breaks_after_every_width_characters) {
    using Lines = std::vector<std::string>;
    EXPECT_EQ(lines("abcdefghijk", 4, break_anywhere, 1), (Lines{"abcd", "efgh", "ijk"}));
    EXPECT_EQ(lines("ab cd ef", 4, break_anywhere, 1), (Lines{"ab c", "d ef"}));
    EXPECT_EQ(lines("abcd", 4, break_anywhere, 1), (Lines{"abcd"}));
}

TEST_F(FormatLabelTest, every_character_has_the_foreground_pair_and_the_rest_the_background_pair) {
    FormatLabel label("aa bb cccccc", 2, 3, root(), 8, break_between_words);
    label.setColors(2, 1, 0);
    EXPECT_COLOURS(drawn(label), "kkkkkkkk\nkkkkkkbb\n");
    label.setColors(2, 2, 1);
    EXPECT_COLOURS(drawn(label), "BBbbbbBB\nBBBBBBbb\n");
}

TEST_F(FormatLabelTest, without_words_has_no_lines_and_an_empty_window_down_to_the_bottom) {
    for (const char* const text : {"", " \t\n"}) {
        FormatLabel label(text, 20, 3, root(), 10, break_between_words);
        EXPECT_EQ(label.getLineCount(), 0);
        EXPECT_EQ(label.getHeight(), 4);
        label.setColors(2, 2, 1);
        EXPECT_COLOURS(drawn(label), "bbbbbbbbbb\nbbbbbbbbbb\nbbbbbbbbbb\nbbbbbbbbbb\n");
    }
}

TEST_F(FormatLabelTest, in_another_mode_has_no_lines_and_draws_nothing) {
    FormatLabel label("some words", 22, 3, root(), 10, 1);
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

TEST_F(FormatLabelTest, keeps_a_copy_of_its_text_at_its_place_of_the_parent) {
    Window frame(root(), 4, 10, 5, 20);
    frame.create();
    std::string text = "aa bb";
    FormatLabel label(text.c_str(), 1, 2, &frame, 10, break_between_words);
    text = "wrong";
    label.draw();
    EXPECT_EQ(shown().find("aa bb"), (Position{5, 12}));
}

}  // namespace
