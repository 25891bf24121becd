#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/support/screen_image.h"

class TerminalProgram;

/// Expects that a screen looks as the text file NAME.txt says, which stands beside the test's
/// source (name it "golden/..."); its format is to_text()'s. `screen` is either a ScreenImage, or a
/// TerminalProgram, which is then given patience() to come to look so.
///
/// A failure prints the file and the screen side by side. With UPDATE_GOLDEN=1 in the environment
/// the file is written anew instead, and the test fails once to say so: no run that rewrites its
/// own expectations passes.
#define EXPECT_SCREEN(screen, name) \
    EXPECT_PRED_FORMAT2(screen_matches_golden, screen, (GoldenFile{__FILE__, name}))

/// A golden file by the test source beside which it stands (an absolute path) and its name.
struct GoldenFile {
    std::string test_source;
    std::string name;

    std::string path() const;
};

testing::AssertionResult screen_matches_golden(const char* screen_expression,
                                               const char* file_expression,
                                               const ScreenImage& image, const GoldenFile& file);

/// Waits for the screen; when the golden file is to be written, waits until the program has been
/// quiet for a while, as there is nothing to compare with.
testing::AssertionResult screen_matches_golden(const char* screen_expression,
                                               const char* file_expression,
                                               TerminalProgram& program, const GoldenFile& file);
