#include "ui/line_breaker.h"

#include <cstring>

namespace {

int length_of(const std::string& text) {
    return static_cast<int>(text.size());
}

// Walks over the words; `first` is the first one that no run holds yet, and it will start at
// `startCol` of the current line.
class LineBreaker {
  public:
    LineBreaker(const std::vector<std::string>& allWords, int lineWidth)
        : words(allWords), width(lineWidth) {}

    BrokenText run() {
        for (size_t i = 0; i < words.size(); ++i)
            take(i);
        if (first < words.size())
            addRun(0, join(first, words.size(), 1, 0));
        broken.line_count = line + 1;
        return broken;
    }

  private:
    void take(size_t i) {
        const int length = length_of(words[i]);
        if (length > width) {
            takeLongWord(i);
        } else if (col + length > width) {
            justify(i);
            startLine(i);
            advance(length);
        } else if (col + length != width && line + col != width - 1) {
            // A line number has no business beside a column, but this is how the wizard has always
            // laid out its texts: it decides where some lines end early.
            advance(length);
        } else {
            justify(i + 1);
            startLine(i + 1);
        }
    }

    void takeLongWord(size_t i) {
        std::string text = join(first, i, 1, 0);
        if (i > first)
            text += ' ';
        text += words[i];
        const int total = length_of(text);
        const int left_over = total % width;
        if (left_over != 0)
            text += ' ';
        addRun(0, text);
        line += total / width;
        col = left_over != 0 ? left_over + 1 : 0;
        startCol = col;
        first = i + 1;
    }

    void startLine(size_t next) {
        ++line;
        col = 0;
        startCol = 0;
        first = next;
    }

    // Behind a word that ends one column before the edge no blank is counted: nothing could follow.
    void advance(int length) {
        col += length;
        if (col != width - 1)
            ++col;
    }

    // Fills the rest of the line with the words from `first` up to, but without, `end`.
    void justify(size_t end) {
        const int gaps = static_cast<int>(end - first) - 1;
        if (gaps < 0)
            return;
        const int spare = width - startCol - length_of(join(first, end, 1, 0));
        if (gaps > 0)
            addRun(startCol, join(first, end, spare / gaps + 1, spare % gaps));
        else
            addRun(startCol, words[first]);
    }

    // The words from `from` up to, but without, `end`, `blanks` blanks between them, and one more
    // in each of the first `wider` gaps.
    std::string join(size_t from, size_t end, int blanks, int wider) const {
        std::string text;
        for (size_t i = from; i < end; ++i) {
            text += words[i];
            const int gap = wider-- > 0 ? blanks + 1 : blanks;
            if (i + 1 < end)
                text.append(static_cast<size_t>(gap), ' ');
        }
        return text;
    }

    void addRun(int runCol, const std::string& text) {
        broken.runs.push_back({line, runCol, text});
    }

    const std::vector<std::string>& words;
    const int width;
    int line = 0;
    int col = 0;
    int startCol = 0;
    size_t first = 0;
    BrokenText broken{};
};

}  // namespace

std::vector<std::string> split_words(const char* text) {
    static const char separators[] = " \t\n";
    std::vector<std::string> words;
    for (text += std::strspn(text, separators); *text != '\0';
         text += std::strspn(text, separators)) {
        const size_t length = std::strcspn(text, separators);
        words.emplace_back(text, length);
        text += length;
    }
    return words;
}

BrokenText break_words(const std::vector<std::string>& words, int width) {
    return LineBreaker(words, width).run();
}

int countLines(const char* text, int width, int mode) {
    if (width < 1)
        return 0;
    if (mode == break_between_words) {
        const std::vector<std::string> words = split_words(text);
        if (words.empty())
            return 0;
        if (words.size() > 1)
            return break_words(words, width).line_count;
    } else if (mode != break_anywhere) {
        return 0;
    }
    const int length = static_cast<int>(std::strlen(text));
    return (length + width - 1) / width;
}
