#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/support/screen_image.h"

class TerminalProgram;

/// Expects that a screen looks as the text file NAME.txt beside the test's source says
/// ("golden/..."; the format is to_text()'s). `screen` is a ScreenImage, or a TerminalProgram,
/// which is then given patience() to come to look so.
///
/// With UPDATE_GOLDEN=1 in the environment the file is written anew instead, when the program has
/// been quiet for a while, and the test fails: no run that rewrites its own expectations passes.
#define EXPECT_SCREEN(screen, name) \
    EXPECT_PRED_FORMAT2(screen_matches_golden, screen, (GoldenFile{__FILE__, name}))

/// A golden file by the test source beside which it stands and its name.
struct GoldenFile {
    std::string test_source;
    std::string name;

    std::string path() const;
};

testing::AssertionResult screen_matches_golden(const char* screen_expression, const char*,
                                               const ScreenImage& image, const GoldenFile& file);

testing::AssertionResult screen_matches_golden(const char* screen_expression, const char*,
                                               TerminalProgram& program, const GoldenFile& file);
