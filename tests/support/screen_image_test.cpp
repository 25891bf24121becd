#include "tests/support/screen_image.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/expect_screen.h"
#include "tests/support/failure_of.h"
#include "tests/support/screen_text.h"

namespace {

void write(ScreenImage& image, int row, int col, const std::string& text) {
    for (const char character : text) image.cell(row, col++).text = character;
}

TEST(ScreenImage, finds_the_topmost_then_leftmost_place_counted_in_cells) {
    ScreenImage image(3, 8);
    image.cell(1, 0).text = "│";
    image.cell(1, 1).text = "日";
    image.cell(1, 2).text = "";
    write(image, 1, 6, "OK");
    write(image, 1, 3, "OK");
    write(image, 2, 0, "OK");
    EXPECT_EQ(image.find("OK"), (Position{1, 3}));
    EXPECT_EQ(image.find("OKOK"), std::nullopt) << "goes on from one row to the next";
}

TEST(ScreenImage, a_region_has_the_cursor_only_if_it_stands_in_it) {
    ScreenImage image(4, 10);
    write(image, 2, 5, "Exit");
    image.cell(2, 5).bold = true;
    image.setCursor({{2, 6}, true});
    const ScreenImage region = image.region(1, 4, 2, 6);
    EXPECT_EQ(region.text(), "\n Exit\n");
    EXPECT_TRUE(region.cell(1, 1).bold);
    EXPECT_TRUE(region.cursor().visible);
    EXPECT_EQ(region.cursor().position, (Position{1, 2}));
    EXPECT_FALSE(image.region(0, 0, 2, 10).cursor().visible);
}

TEST(ScreenImage, a_place_outside_the_screen_throws) {
    ScreenImage image(2, 3);
    EXPECT_THROW(image.cell(2, 0), std::out_of_range);
    EXPECT_THROW(image.cell(0, -1), std::out_of_range);
    EXPECT_THROW(image.region(1, 1, 2, 2), std::out_of_range);
}

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

TEST(ScreenText, an_unusual_look_gets_a_letter_of_its_own_and_a_hidden_cursor_no_place) {
    ScreenImage image(1, 4);
    image.cell(0, 0) = {"a", 3, 2, false};
    image.cell(0, 1) = {"b", 3, 2, true};
    image.cell(0, 2) = {" ", 3, 2, true};
    image.cell(0, 3) = {"c", 3, 2, false};
    image.setCursor({{0, 2}, false});
    EXPECT_EQ(to_text(image),
              "ab c|\n"
              "colours\n"
              "0120|\n"
              "cursor hidden\n"
              "0 = yellow on green\n"
              "1 = bold yellow on green\n"
              "2 = blank on green\n");
}

TEST(ExpectSameLook, passes_over_what_a_blank_hides_and_nothing_else) {
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

TEST(ExpectPicture, takes_rows_without_their_blanks_and_shows_both_sides_when_they_differ) {
    EXPECT_PICTURE(small_screen(), R"(
OK
│x
)");
    EXPECT_PICTURE(small_screen(), "OK\n│x   ");
    EXPECT_EQ(failure_of([] { EXPECT_PICTURE(small_screen(), "OK\n│y\n"); }),
              "the picture of small_screen() is not what was expected\n"
              "  expected   drawn\n"
              "  OK         OK\n"
              "! │y         │x\n");
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
