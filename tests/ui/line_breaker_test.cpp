// Texts broken into lines, and the label that shows them.

#include "ui/line_breaker.h"

#include <string>
#include <vector>

#include "tests/ui/ui_test.h"
#include "ui/label.h"

namespace {

/// A text, its width and mode, and the lines into which it is broken.
struct Broken {
    const char* text;
    int width;
    const char* lines;
    int mode = break_between_words;
};

const Broken broken_texts[] = {
    {"abcdefghijk", 4, "abcd\nefgh\nijk", break_anywhere},
    {"ab cd ef", 4, "ab c\nd ef", break_anywhere},
    {"abcd", 4, "abcd", break_anywhere},

    // A single word breaks anywhere and keeps the spaces around it.
    {"abcdefghijk", 4, "abcd\nefgh\nijk"},
    {"  abcdefgh ", 4, "  ab\ncdef\ngh"},
    {"abc", 1, "a\nb\nc"},

    // Words that fit stand on the last line, which is not stretched, the others are.
    {"aa  bb\tcc\ndd", 30, "aa bb cc dd"},
    {"aa bb cccccccccc dd", 10, "aa      bb\ncccccccccc\ndd"},
    {"aaaaaa bbbbbb cccccc", 10, "aaaaaa\nbbbbbb\ncccccc"},

    // Spaces are spread evenly; gaps that must be wider stand on the left.
    {"aa bb cc dd eeeeeeeeeeee", 20, "aa    bb    cc    dd\neeeeeeeeeeee"},
    {"aa bb cc dd eeeeeeeeeeee", 21, "aa     bb    cc    dd\neeeeeeeeeeee"},
    {"aa bb cc dd eeeeeeeeeeee", 22, "aa     bb     cc    dd\neeeeeeeeeeee"},

    // Two words that fill the line exactly leave an empty line after them.
    {"aaa bbb", 7, "aaa bbb\n\n"},
    {"aaa bbb cc", 7, "aaa bbb\ncc"},
    {"aaa bbb", 8, "aaa bbb"},
    {"aaa bbb", 6, "aaa\nbbb"},
    {"aa bbbbbbbbbb cc", 10, "aa\nbbbbbbbbbb\ncc"},
    {"bbbbbbbbbb cc", 10, "bbbbbbbbbb\ncc"},

    // A word is the last of its line also where the numbers of line and column add up to the last
    // column: here line 1 and column 8, at "d". One line further down they do not.
    {"aaaaaaaaaa ccccccc d e", 10, "aaaaaaaaaa\nccccccc  d\ne"},
    {"aaaaaaaaaa bbbbbbbbbb ccccccc d e", 10, "aaaaaaaaaa\nbbbbbbbbbb\nccccccc d\ne"},
    {"aaa aaa b c", 3, "aaa\naaa\nb\nc"},

    // After a word that ends one column before the edge no space is counted, so one letter more
    // still seems to fit.
    {"aaaaaaaaa b", 10, "aaaaaaaaab\n\n"},
    {"cc aaaaaaaaa b", 10, "cc\naaaaaaaaab\n\n"},
    {"aaaa bbbb c", 10, "aaaa bbbb\nc"},

    // A word longer than the line runs on over the following lines.
    {"ab cdefghijklmnop qr", 10, "ab cdefghi\njklmnop qr\n\n"},
    {"cdefghijklmnopqrstuvwx yz", 10, "cdefghijkl\nmnopqrstuv\nyz"},
    {"abcdefghijklmnopqrst uv", 10, "abcdefghij\nklmnopqrst\nuv"},
    {"ab cdefghijklmnopqrs uv", 10, "ab cdefghi\njklmnopqrs\nuv"},
    {"abcdefghijklmnopqrst uu vv wwwwwwww", 10, "abcdefghij\nklmnopqrst\nuu      vv\nwwwwwwww"},

    // Words after it are stretched from where it ends, but the last ones are printed over its end.
    {"cdefghijklmno p qq rrrr sss ttt", 10, "cdefghijkl\nmno p   qq\nrrrr   sss\nttt"},
    {"cdefghijklmno pp qqq rr", 10, "cdefghijkl\nmno pp qqq\nrr"},
    {"cdefghijklmno p", 10, "cdefghijkl\npno"},

    {"Selecting 127.0.0.1 will enable access to WebAdmin interface \tonly from this machine and "
     "not remotely from other machines. Are you sure?",
     60,
     "Selecting 127.0.0.1 will enable access to WebAdmin interface\n"
     "only from this machine and not remotely from other machines.\nAre you sure?"},
    {"Selecting 127.0.0.1 will enable access to SMTP service \tonly from this machine and not "
     "remotely from other machines. Are you sure?",
     60,
     "Selecting  127.0.0.1 will enable access to SMTP service only\n"
     "from  this machine and not remotely from other machines. Are\nyou sure?"},
};

using FormatLabelTest = UiTest;

TEST_F(FormatLabelTest, breaks_its_text_as_the_wizard_always_has_however_often_it_is_drawn) {
    for (const Broken& broken : broken_texts) {
        FormatLabel label(broken.text, 2, 3, root(), broken.width, broken.mode);
        for (int drawing = 1; drawing <= 2; ++drawing)
            EXPECT_PICTURE(drawn(label), broken.lines) << drawing;
        const int lines = countLines(broken.text, broken.width, broken.mode);
        EXPECT_EQ(label.getLineCount(), lines);
        EXPECT_EQ(size_of(label), (Position{lines, broken.width}));
    }
}

TEST_F(FormatLabelTest, every_character_has_the_foreground_pair_and_the_rest_the_background_pair) {
    Window frame(root(), 4, 10, 5, 20);
    frame.create();
    std::string text = "aa bb cccccc";
    FormatLabel label(text.c_str(), 1, 2, &frame, 8, break_between_words);
    text.assign(text.size(), '!');
    label.setColors(2, 1, 0);
    EXPECT_COLOURS(drawn(label), "kkkkkkkk\nkkkkkkbb");
    label.setColors(2, 2, 1);
    EXPECT_COLOURS(drawn(label), "BBbbbbBB\nBBBBBBbb");
    EXPECT_EQ(shown().find("cccccc"), (Position{6, 12}));
}

TEST_F(FormatLabelTest, without_words_or_a_known_mode_has_an_empty_window_down_to_the_bottom) {
    for (const auto& [text, mode] : {std::pair{"", 2}, {" \t\n", 2}, {"", 0}, {"some words", 1}}) {
        FormatLabel label(text, 20, 3, root(), 10, mode);
        EXPECT_EQ(label.getLineCount(), 0);
        EXPECT_EQ(label.getHeight(), 4);
        label.setColors(2, 2, 1);
        EXPECT_COLOURS(drawn(label), "bbbbbbbbbb\nbbbbbbbbbb\nbbbbbbbbbb\nbbbbbbbbbb");
    }
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

TEST(CountLines, counts_separators_around_a_single_word_and_none_without_a_width_or_mode) {
    EXPECT_EQ(countLines("  abc ", 6, break_between_words), 1);
    EXPECT_EQ(countLines("  abc ", 5, break_between_words), 2);
    EXPECT_EQ(countLines("abc\n\n\n", 3, break_between_words), 2);
    EXPECT_EQ(countLines(" \t\n  \n", 60, break_anywhere), 1);
    EXPECT_EQ(countLines(std::string(130, 'x').c_str(), 60, break_between_words), 3);
    for (const int mode : {break_anywhere, break_between_words})
        for (const int width : {0, -2}) EXPECT_EQ(countLines("some words", width, mode), 0);
    for (const int mode : {-1, 1, 3, 100}) EXPECT_EQ(countLines("word", 60, mode), 0) << mode;
}

TEST(SplitWords, splits_at_spaces_tabs_and_line_feeds_alone_and_gives_no_empty_words) {
    using Words = std::vector<std::string>;
    EXPECT_EQ(split_words(" one\ttwo\n\n three  "), (Words{"one", "two", "three"}));
    EXPECT_EQ(split_words("one\rtwo\vthree"), (Words{"one\rtwo\vthree"}));
    EXPECT_EQ(split_words("\t \n"), Words());
}

}  // namespace
