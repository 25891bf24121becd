#include "tests/screens/dialog_region.h"

#include <gtest/gtest.h>

#include "tests/support/expect_screen.h"

ScreenImage dialog_region(const ScreenImage& screen, int lines, int cols) {
    const int rows = lines + 9;
    return screen.region((screen.rows() - rows) / 2, (screen.cols() - cols) / 2, rows, cols);
}

ScreenImage pending_region(const ScreenImage& screen, int length) {
    const int rows = 7;
    const int cols = length + 4;
    return screen.region((screen.rows() - rows) / 2, (screen.cols() - 4 - cols) / 2, rows, cols);
}

std::string words_on(const ScreenImage& image) {
    std::string words;
    for (int row = 0; row < image.rows(); ++row) {
        for (int col = 0; col < image.cols(); ++col) {
            const std::string& text = image.cell(row, col).text;
            const bool is_part_of_word = text.size() == 1 && text != " ";
            if (is_part_of_word)
                words += text;
            else if (!words.empty() && words.back() != ' ')
                words += ' ';
        }
    }
    return words;
}

namespace {

std::string centred_row(const std::string& text, size_t cols) {
    const size_t left = (cols - text.size()) / 2;
    return "│" + std::string(left, ' ') + text + std::string(cols - text.size() - left, ' ') +
           "│\n";
}

}  // namespace

void expect_error_box(const ScreenImage& screen, const std::string& message, const Caller& caller) {
    const testing::ScopedTrace trace(caller.file, caller.line, message);
    // A message as wide as its box ends its line, and a second one is left empty.
    constexpr int lines = 2;
    const size_t cols = message.size();
    std::string line;
    for (size_t col = 0; col < cols; ++col)
        line += "─";
    const std::string blank = centred_row("", cols);
    EXPECT_PICTURE(dialog_region(screen, lines, static_cast<int>(cols) + 2),
                   "\n┌" + line + "┐\n" + centred_row("Error!", cols) + "├" + line + "┤\n" +
                       centred_row(message, cols) + blank + blank + blank +
                       centred_row("  OK  ", cols) + blank + blank + "└" + line + "┘\n");
}
