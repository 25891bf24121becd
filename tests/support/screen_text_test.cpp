#include "tests/support/screen_text.h"

#include <gtest/gtest.h>

#include "tests/support/expect_screen.h"
#include "tests/support/failure_of.h"
#include "tests/support/side_by_side.h"

namespace {

ScreenImage small_screen() {
    ScreenImage image(2, 5);
    image.cell(0, 0) = {"O", 7, 4, true};
    image.cell(0, 1) = {"K", 7, 4, false};
    image.cell(0, 2) = {" ", 7, 4, false};
    image.cell(1, 0) = {"│", 0, 1, false};
    image.cell(1, 1) = {"x", 7, 0, true};
    image.setCursor({{1, 4}, true});
    return image;
}

TEST(ScreenText, shows_picture_colours_cursor_and_the_meaning_of_the_letters) {
    EXPECT_EQ(to_text(small_screen()),
              "OK   |\n"
              "│x   |\n"
              "colours\n"
              "Bbb..|\n"
              "rK...|\n"
              "cursor 1,4\n"
              ". = default on default\n"
              "B = bold white on blue\n"
              "K = bold white on black\n"
              "b = white on blue\n"
              "r = black on red\n");
}

TEST(ScreenText, says_that_the_cursor_is_hidden_and_not_where) {
    ScreenImage image(1, 1);
    image.setCursor({{0, 0}, false});
    EXPECT_EQ(to_text(image), " |\ncolours\n.|\ncursor hidden\n. = default on default\n");
}

TEST(ScreenText, an_unusual_look_gets_a_letter_of_its_own) {
    ScreenImage image(1, 4);
    image.cell(0, 0) = {"a", 3, 2, false};
    image.cell(0, 1) = {"b", 3, 2, true};
    image.cell(0, 2) = {" ", 3, 2, true};
    image.cell(0, 3) = {"c", 3, 2, false};
    image.setCursor({{0, 0}, false});
    EXPECT_EQ(to_text(image),
              "ab c|\n"
              "colours\n"
              "0120|\n"
              "cursor hidden\n"
              "0 = yellow on green\n"
              "1 = bold yellow on green\n"
              "2 = blank on green\n");
}

TEST(ScreenText, images_that_differ_only_in_what_a_blank_hides_look_the_same) {
    ScreenImage left(1, 2);
    ScreenImage right(1, 2);
    left.cell(0, 0) = {" ", 7, 4, true};
    right.cell(0, 0) = {" ", default_colour, 4, false};
    EXPECT_SAME_LOOK(left, right);
    right.cell(0, 0).background = 1;
    const std::string failure = failure_of([&] { EXPECT_SAME_LOOK(left, right); });
    EXPECT_NE(failure.find("right, compared with left, is not what was expected"),
              std::string::npos)
        << failure;
    EXPECT_NE(failure.find("! b.|"), std::string::npos) << failure;
}

TEST(SideBySide, marks_the_lines_that_differ_and_aligns_the_right_side) {
    EXPECT_EQ(side_by_side("┌──┐ first\nsame\nleft only\n", "┌──┐ 1st\nsame\n"),
              "  expected     drawn\n"
              "! ┌──┐ first   ┌──┐ 1st\n"
              "  same         same\n"
              "! left only    \n");
}

TEST(ExpectPicture, accepts_the_picture_without_the_blanks_at_the_ends_of_rows) {
    EXPECT_PICTURE(small_screen(), R"(
OK
│x
)");
    EXPECT_PICTURE(small_screen(), "OK\n│x   ");
}

TEST(ExpectPicture, shows_both_pictures_when_they_differ) {
    const std::string failure = failure_of([] { EXPECT_PICTURE(small_screen(), "OK\n│y\n"); });
    EXPECT_EQ(failure,
              "the picture of small_screen() is not what was expected\n"
              "  expected   drawn\n"
              "  OK         OK\n"
              "! │y         │x\n");
}

TEST(ExpectPicture, a_missing_row_is_a_difference) {
    EXPECT_NE(failure_of([] { EXPECT_PICTURE(small_screen(), "OK\n"); }), "");
}

TEST(ExpectColours, compares_the_look_of_every_cell) {
    EXPECT_COLOURS(small_screen(), R"(
Bbb..
rK...
)");
    EXPECT_NE(failure_of([] { EXPECT_COLOURS(small_screen(), "Bbb..\nrk...\n"); }), "");
    EXPECT_NE(failure_of([] { EXPECT_COLOURS(small_screen(), "Bbb\nrK...\n"); }), "");
}

}  // namespace
