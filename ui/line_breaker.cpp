#include "ui/line_breaker.h"

namespace {

int length_of(const std::string& text) { return static_cast<int>(text.size()); }

// Walks over the words; `first` is the first one that no run holds yet, and it will start at
// `startCol` of the current line.
class LineBreaker {
  public:
    LineBreaker(const std::vector<std::string>& all_words, int line_width)
        : words(all_words), width(line_width) {}

    BrokenText run() {
        for (size_t i = 0; i < words.size(); ++i) take(i);
        if (first < words.size()) broken.runs.push_back({line, 0, join(words.size(), 0)});
        broken.line_count = words.empty() ? 0 : line + 1;
        return broken;
    }

  private:
    void take(size_t i) {
        const int length = length_of(words[i]);
        if (length > width) return takeLongWord(i);
        if (col + length > width)
            justify(i);
        else if (col + length == width || line + col == width - 1)
            // A line number has no business beside a column, but this is how the wizard has always
            // laid out its texts: it decides where some lines end early.
            return justify(i + 1);
        col += length;
        // No space is counted after a word that ends one column before the edge: nothing could
        // follow.
        if (col != width - 1) ++col;
    }

    void takeLongWord(size_t i) {
        const std::string text = join(i + 1, 0);
        const int left_over = length_of(text) % width;
        broken.runs.push_back({line, 0, left_over != 0 ? text + ' ' : text});
        line += length_of(text) / width;
        col = left_over != 0 ? left_over + 1 : 0;
        startCol = col;
        first = i + 1;
    }

    // Fills the rest of the line with the words up to, but without, `end`, which starts the next.
    void justify(size_t end) {
        const int spare = width - startCol - length_of(join(end, 0));
        if (end > first) broken.runs.push_back({line, startCol, join(end, spare)});
        ++line;
        col = 0;
        startCol = 0;
        first = end;
    }

    // The words from `first` up to, but without, `end`, a space between them, and `spare` further
    // spaces spread over the gaps, those that can't be spread evenly over the gaps on the left.
    std::string join(size_t end, int spare) const {
        const int gaps = static_cast<int>(end - first) - 1;
        std::string text;
        for (size_t i = first; i < end; ++i) {
            const int gap = static_cast<int>(i - first);
            if (gap > 0) {
                const int spaces = 1 + spare / gaps + (gap <= spare % gaps);
                text.append(static_cast<size_t>(spaces), ' ');
            }
            text += words[i];
        }
        return text;
    }

    const std::vector<std::string>& words;
    const int width;
    int line = 0;
    int col = 0;
    int startCol = 0;
    size_t first = 0;
    BrokenText broken;
};

BrokenText break_everywhere(const std::string& text, int width) {
    BrokenText broken;
    for (size_t at = 0; at < text.size(); at += static_cast<size_t>(width))
        broken.runs.push_back(
            {broken.line_count++, 0, text.substr(at, static_cast<size_t>(width))});
    return broken;
}

}  // namespace

std::vector<std::string> split_words(const std::string& text) {
    static const char separators[] = " \t\n";
    std::vector<std::string> words;
    size_t end = 0;
    for (;;) {
        const size_t start = text.find_first_not_of(separators, end);
        if (start == std::string::npos) return words;
        end = text.find_first_of(separators, start);
        words.push_back(text.substr(start, end - start));
    }
}

BrokenText break_text(const std::string& text, int width, int mode) {
    if (width < 1 || (mode != break_anywhere && mode != break_between_words)) return {};
    const std::vector<std::string> words = split_words(text);
    if (mode == break_anywhere || words.size() == 1) return break_everywhere(text, width);
    return LineBreaker(words, width).run();
}

int countLines(const char* text, int width, int mode) {
    return break_text(text, width, mode).line_count;
}
