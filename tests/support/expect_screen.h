#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/support/screen_image.h"

/// Expects that two images look the same to a person: characters, colours and cursor. This and the
/// others print the two sides next to each other when they differ.
#define EXPECT_SAME_LOOK(expected, drawn) EXPECT_PRED_FORMAT2(looks_same, expected, drawn)

/// Expects that an image, mostly a region of one, shows the characters of a picture, in a raw
/// string that may begin with a newline; spaces at the end of a row may be left out.
#define EXPECT_PICTURE(image, picture) EXPECT_PRED_FORMAT2(picture_matches, image, picture)

/// The same for the looks of the cells, one letter each as listed in screen_text.h, in full width.
#define EXPECT_COLOURS(image, letters) EXPECT_PRED_FORMAT2(colours_match, image, letters)

testing::AssertionResult looks_same(const char* expected_expression, const char* drawn_expression,
                                    const ScreenImage& expected, const ScreenImage& drawn);

testing::AssertionResult picture_matches(const char* image_expression, const char*,
                                         const ScreenImage& image, const std::string& picture);

testing::AssertionResult colours_match(const char* image_expression, const char*,
                                       const ScreenImage& image, const std::string& letters);
