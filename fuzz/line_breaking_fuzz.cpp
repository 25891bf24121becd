// However a text is broken into lines, its words come out in order, stretched lines end at the
// edge, the lines are as many as were counted, and the label shows them like that.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/target.h"
#include "fuzz/window_text.h"
#include "ui/label.h"
#include "ui/line_breaker.h"

namespace {

int length_of(const std::string& text) { return static_cast<int>(text.size()); }

// A line that is stretched ends at the edge. One column beyond it where a word of one letter came
// after a word that had left it one column: there is no room for the space between the two.
void require_filled(const TextRun& run, int width) {
    const int end = run.col + length_of(run.text);
    const std::size_t space = run.text.rfind(' ');
    const bool last_word_has_one_letter = space == run.text.size() - 2;
    require(end == width || (end == width + 1 && last_word_has_one_letter),
            "a stretched line ends at the edge");
}

// The words of a run that stands alone on its line or runs over several are not stretched.
bool is_stretched(const TextRun& run, int width) {
    return run.text.find(' ') != std::string::npos && run.col + length_of(run.text) <= width + 1;
}

bool holds_long_word(const TextRun& run, int width) {
    const std::vector<std::string> words = split_words(run.text);
    return std::any_of(words.begin(), words.end(),
                       [&](const std::string& word) { return length_of(word) > width; });
}

void require_well_broken(const BrokenText& broken, const std::vector<std::string>& words,
                         int width) {
    std::string letters;
    int line = 0;
    for (std::size_t i = 0; i < broken.runs.size(); ++i) {
        const TextRun& run = broken.runs[i];
        letters += run.text;
        require(run.line >= line && run.line < broken.line_count, "lines follow one another");
        line = run.line;
        const bool is_last = i + 1 == broken.runs.size();
        if (!is_last && is_stretched(run, width) && !holds_long_word(run, width))
            require_filled(run, width);
    }
    letters.erase(std::remove(letters.begin(), letters.end(), ' '), letters.end());
    std::string expected;
    for (const std::string& word : words) expected += word;
    require_equal(letters, expected, "the words come out in order");
}

// The cells of the label, line after line, when characters are written to them as by curses.
std::string expected_cells(const std::string& text, int width, int mode) {
    std::string cells(static_cast<std::size_t>(countLines(text.c_str(), width, mode) * width), ' ');
    const auto write = [&](int at, const std::string& run) {
        const std::string fitting = run.substr(0, cells.size() - static_cast<std::size_t>(at));
        cells.replace(static_cast<std::size_t>(at), fitting.size(), fitting);
    };
    const std::vector<std::string> words = split_words(text);
    if (mode == break_anywhere || words.size() == 1) {
        write(0, text);
    } else {
        for (const TextRun& run : break_text(text, width, break_between_words).runs)
            write(run.line * width + run.col, run.text);
    }
    return cells;
}

bool is_plain(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char character) { return character >= ' ' && character <= '~'; });
}

// Bytes that are no character of their own are only drawn, and so are texts in a mode that is none.
// What goes over the end of the last line piles up in its last cell.
void require_drawn(const std::string& text, int width, int mode) {
    FormatLabel label(text.c_str(), 1, 1, nullptr, width, mode);
    label.draw();
    if (!is_plain(text) || mode == 1) return;
    const std::string cells = expected_cells(text, width, mode);
    const auto columns = static_cast<std::size_t>(width);
    for (std::size_t at = 0; at < cells.size(); at += columns) {
        std::string shown = row_text(label.getCursesWindow(), static_cast<int>(at / columns));
        if (at + columns == cells.size()) shown.back() = cells.back();
        require_equal(shown, cells.substr(at, columns), "the label shows the lines");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    need_curses();
    FuzzInput input(data, size);
    const int width = input.takeNumber(1, 80);
    const int mode = input.takeNumber(0, 2);
    const std::string text = c_text(input.takeRest());
    const std::vector<std::string> words = split_words(text);
    if (words.size() > 1) {
        const BrokenText broken = break_text(text, width, break_between_words);
        require_well_broken(broken, words, width);
        require(broken.line_count == countLines(text.c_str(), width, break_between_words),
                "the lines are as many as were counted");
    }
    require_drawn(text, width, mode);
    return 0;
}
