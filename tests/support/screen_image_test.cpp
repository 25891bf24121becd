#include "tests/support/screen_image.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

void write(ScreenImage& image, int row, int col, const std::string& text) {
    for (const char character : text)
        image.cell(row, col++).text = character;
}

TEST(ScreenImage, a_new_image_is_blank_in_default_colours_with_a_visible_cursor_at_the_origin) {
    const ScreenImage image(2, 3);
    EXPECT_EQ(image.text(), "\n\n");
    EXPECT_EQ(image.rowText(1), "   ");
    EXPECT_EQ(image.cell(1, 2), Cell());
    EXPECT_TRUE(image.cursor().visible);
    EXPECT_EQ(image.cursor().position, Position());
}

TEST(ScreenImage, text_cuts_the_blanks_at_the_ends_of_rows_and_row_text_keeps_them) {
    ScreenImage image(2, 8);
    write(image, 0, 1, "ab c");
    EXPECT_EQ(image.text(), " ab c\n\n");
    EXPECT_EQ(image.rowText(0), " ab c   ");
}

TEST(ScreenImage, find_returns_the_topmost_then_leftmost_place) {
    ScreenImage image(3, 8);
    write(image, 1, 4, "OK");
    write(image, 1, 1, "OK");
    write(image, 2, 0, "OK");
    EXPECT_EQ(image.find("OK"), (Position{1, 1}));
    EXPECT_EQ(image.find("KO"), std::nullopt);
    EXPECT_TRUE(image.shows("OK"));
    EXPECT_FALSE(image.shows("Yes"));
}

TEST(ScreenImage, find_counts_cells_and_not_bytes) {
    ScreenImage image(1, 8);
    image.cell(0, 0).text = "│";
    image.cell(0, 1).text = "日";
    image.cell(0, 2).text = "";
    write(image, 0, 3, "Next");
    EXPECT_EQ(image.find("Next"), (Position{0, 3}));
}

TEST(ScreenImage, find_does_not_go_on_from_one_row_to_the_next) {
    ScreenImage image(2, 2);
    write(image, 0, 0, "ab");
    write(image, 1, 0, "cd");
    EXPECT_FALSE(image.shows("abcd"));
}

TEST(ScreenImage, a_region_is_a_copy_with_the_cursor_where_it_stands_in_it) {
    ScreenImage image(4, 10);
    write(image, 2, 5, "Exit");
    image.cell(2, 5).bold = true;
    image.setCursor({{2, 6}, true});
    const ScreenImage region = image.region(1, 4, 2, 6);
    EXPECT_EQ(region.text(), "\n Exit\n");
    EXPECT_TRUE(region.cell(1, 1).bold);
    EXPECT_TRUE(region.cursor().visible);
    EXPECT_EQ(region.cursor().position, (Position{1, 2}));
}

TEST(ScreenImage, a_cursor_outside_a_region_is_hidden_in_it) {
    ScreenImage image(4, 10);
    image.setCursor({{3, 0}, true});
    EXPECT_FALSE(image.region(0, 0, 3, 10).cursor().visible);
}

TEST(ScreenImage, a_place_outside_the_screen_throws) {
    ScreenImage image(2, 3);
    EXPECT_THROW(image.cell(2, 0), std::out_of_range);
    EXPECT_THROW(image.cell(0, -1), std::out_of_range);
    EXPECT_THROW(image.region(1, 1, 2, 2), std::out_of_range);
}

}  // namespace
