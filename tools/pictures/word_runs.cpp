#include "tools/pictures/word_runs.h"

#include <map>
#include <sstream>
#include <utility>

#include "tools/pictures/grid.h"
#include "tools/pictures/line_strokes.h"

namespace {

// From the top of a cell to the line on which letters stand.
constexpr int base_line = 13;

bool is_letter(const Cell& cell) {
    return cell.text != " " && !cell.text.empty() && !is_line(cell);
}

bool looks_like(const Cell& left, const Cell& right) {
    return left.bold == right.bold && foreground_of(left) == foreground_of(right);
}

// The characters from `col` to before the next blank, line or change of look.
std::string word_at(const ScreenImage& image, int row, int col, int& length) {
    const Cell& first = image.cell(row, col);
    std::string word;
    for (length = 0; col + length < image.cols(); ++length) {
        const Cell& cell = image.cell(row, col + length);
        if (!is_letter(cell) || !looks_like(first, cell))
            break;
        word += cell.text;
    }
    return word;
}

std::string text_element(int row, int col, int length, const std::string& word) {
    std::ostringstream out;
    out << "<text x=\"" << col * cell_width << "\" y=\"" << row * cell_height + base_line << "\"";
    if (length > 1)
        out << " textLength=\"" << length * cell_width << "\"";
    out << ">" << escaped(word) << "</text>\n";
    return out.str();
}

}  // namespace

std::string word_runs(const ScreenImage& image) {
    using Look = std::pair<std::string, bool>;
    std::map<Look, std::string> runs;
    for (int row = 0; row < image.rows(); ++row) {
        for (int col = 0; col < image.cols();) {
            const Cell& cell = image.cell(row, col);
            int length = 1;
            if (is_letter(cell)) {
                const std::string word = word_at(image, row, col, length);
                runs[{foreground_of(cell), cell.bold}] += text_element(row, col, length, word);
            }
            col += length;
        }
    }
    std::ostringstream out;
    for (const auto& [look, texts] : runs) {
        out << "<g fill=\"" << look.first << "\"" << (look.second ? " font-weight=\"700\"" : "")
            << ">\n"
            << texts << "</g>\n";
    }
    return out.str();
}
