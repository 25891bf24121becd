#pragma once

#include <string>
#include <vector>

/// How a text is broken into lines.
enum LineBreakMode {
    break_anywhere = 0,      ///< after every `width` characters; so is a single word in any mode
    break_between_words = 2  ///< between words, every line but the last filled to the width
};

/// Characters that are written one after another from a place on.
struct TextRun {
    int line;
    int col;
    std::string text;
};

/// A text broken into lines of a width.
struct BrokenText {
    std::vector<TextRun> runs = {};
    int line_count = 0;
};

/// Splits `text` at spaces, tabs and line feeds; no word is empty.
std::vector<std::string> split_words(const std::string& text);

/// Breaks `text` into lines of `width` characters in `mode`; no lines for an empty text, for a mode
/// that is not a LineBreakMode and for a width below 1. Between words, the wider gaps of a
/// stretched line are on its left, and the run of a word longer than the width goes on over the
/// next lines.
BrokenText break_text(const std::string& text, int width, int mode);

/// The number of those lines.
int countLines(const char* text, int width, int mode);
