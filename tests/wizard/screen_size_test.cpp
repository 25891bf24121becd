#include <gtest/gtest.h>

#include "ui/main_window.h"

namespace {

TEST(ScreenSize, is_unknown_before_there_is_a_screen) {
    EXPECT_EQ(screen_rows, -1);
    EXPECT_EQ(screen_cols, -1);
}

TEST(ScreenSize, the_least_is_72_columns_and_20_lines) {
    EXPECT_EQ(min_screen_cols, 72);
    EXPECT_EQ(min_screen_rows, 20);
}

TEST(Centred, leaves_as_much_on_both_sides_and_the_odd_one_behind) {
    EXPECT_EQ(centred(24, 13), 5);
    EXPECT_EQ(centred(24, 14), 5);
    EXPECT_EQ(centred(80, 45), 17);
    EXPECT_EQ(centred(72, 72), 0);
    EXPECT_EQ(centred(73, 72), 0);
}

TEST(Centred, what_is_too_long_starts_at_the_edge) {
    EXPECT_EQ(centred(20, 21), 0);
    EXPECT_EQ(centred(20, 38), 0);
}

}  // namespace
