#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/support/screen_image.h"

/// Expects that two images look the same: characters, colours and cursor, as far as a person could
/// tell. A failure prints the two side by side.
#define EXPECT_SAME_LOOK(expected, drawn) EXPECT_PRED_FORMAT2(looks_same, expected, drawn)

/// Expects that an image, mostly a region of one, shows the characters of a picture that stands
/// beside the code:
///
///     EXPECT_PICTURE(terminal.image().region(8, 2, 3, 6), R"(
///     ┌────┐
///     │Next│
///     └────┘
///     )");
///
/// (without the indentation). The newline after the opening is not part of the picture; spaces at
/// the end of a row may be left out.
#define EXPECT_PICTURE(image, picture) EXPECT_PRED_FORMAT2(picture_matches, image, picture)

/// The same for the looks of the cells, one letter each as listed in screen_text.h; here each row
/// must have its full width.
#define EXPECT_COLOURS(image, letters) EXPECT_PRED_FORMAT2(colours_match, image, letters)

testing::AssertionResult looks_same(const char* expected_expression, const char* drawn_expression,
                                    const ScreenImage& expected, const ScreenImage& drawn);

testing::AssertionResult picture_matches(const char* image_expression,
                                         const char* picture_expression, const ScreenImage& image,
                                         const std::string& picture);

testing::AssertionResult colours_match(const char* image_expression, const char* letters_expression,
                                       const ScreenImage& image, const std::string& letters);
