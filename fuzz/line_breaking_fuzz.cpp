// However a text is broken into lines, its words come out in order, stretched lines end at the
// edge, the lines are as many as were counted, and the label shows them like that.

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "fuzz/window_text.h"
#include "ui/label.h"
#include "ui/line_breaker.h"

namespace {

const char separators[] = " \t\n";

std::string without_separators(const std::string& text) {
    std::string letters;
    std::copy_if(text.begin(), text.end(), std::back_inserter(letters), [](char character) {
        return std::string(separators).find(character) == std::string::npos;
    });
    return letters;
}

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
    const std::vector<std::string> words = split_words(run.text.c_str());
    return std::any_of(words.begin(), words.end(),
                       [&](const std::string& word) { return length_of(word) > width; });
}

void require_well_broken(const BrokenText& broken, const std::vector<std::string>& words,
                         int width) {
    std::string letters;
    int line = 0;
    for (std::size_t i = 0; i < broken.runs.size(); ++i) {
        const TextRun& run = broken.runs[i];
        letters += without_separators(run.text);
        require(run.line >= line && run.line < broken.line_count, "lines follow one another");
        line = run.line;
        const bool is_last = i + 1 == broken.runs.size();
        if (!is_last && is_stretched(run, width) && !holds_long_word(run, width))
            require_filled(run, width);
    }
    std::string expected;
    for (const std::string& word : words) expected += word;
    require_equal(letters, expected, "the words come out in order");
}

// A screen of the label's size, to which characters are written as curses writes them.
class Paper {
  public:
    Paper(int height, int width)
        : width(width), rows(static_cast<std::size_t>(height), blankRow()) {}

    void write(int line, int col, const std::string& text) {
        for (const char character : text) {
            if (line == static_cast<int>(rows.size())) return;
            rows[static_cast<std::size_t>(line)][static_cast<std::size_t>(col)] = character;
            line += (col + 1) / width;
            col = (col + 1) % width;
        }
    }

    const std::vector<std::string>& lines() const { return rows; }

  private:
    std::string blankRow() const { return std::string(static_cast<std::size_t>(width), ' '); }

    int width;
    std::vector<std::string> rows;
};

std::vector<std::string> expected_lines(const std::string& text, int width, int mode) {
    Paper paper(countLines(text.c_str(), width, mode), width);
    const std::vector<std::string> words = split_words(text.c_str());
    if (mode == break_anywhere || words.size() == 1) {
        paper.write(0, 0, text);
    } else {
        for (const TextRun& run : break_text(text, width, break_between_words).runs)
            paper.write(run.line, run.col, run.text);
    }
    return paper.lines();
}

// What goes over the end of the last line piles up in its last cell.
void require_drawn(const std::string& text, int width, int mode) {
    FormatLabel label(text.c_str(), 1, 1, nullptr, width, mode);
    label.draw();
    const std::vector<std::string> lines = expected_lines(text, width, mode);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string shown = row_text(label.getCursesWindow(), static_cast<int>(i));
        if (i + 1 == lines.size()) shown.back() = lines[i].back();
        require_equal(shown, lines[i], "the label shows the lines");
    }
}

// Bytes that are no character of their own are only drawn.
void draw_anything(const std::string& text, int width, int mode) {
    FormatLabel label(text.c_str(), 1, 1, nullptr, width, mode);
    label.draw();
}

bool is_plain(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char character) { return character >= ' ' && character <= '~'; });
}

}  // namespace

extern "C" int llvm_fuzzer_test_one_input(const std::uint8_t* data, std::size_t size) {
    need_curses();
    FuzzInput input(data, size);
    const int width = input.takeNumber(1, 80);
    const int mode = input.takeNumber(0, 2);
    const std::string text = c_text(input.takeRest());
    const std::vector<std::string> words = split_words(text.c_str());
    if (words.size() > 1) {
        const BrokenText broken = break_text(text, width, break_between_words);
        require_well_broken(broken, words, width);
        require(broken.line_count == countLines(text.c_str(), width, break_between_words),
                "the lines are as many as were counted");
    }
    if (is_plain(text) && mode != 1)
        require_drawn(text, width, mode);
    else
        draw_anything(text, width, mode);
    return 0;
}
