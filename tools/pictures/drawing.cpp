#include "tools/pictures/drawing.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace {

// From the top of a cell to the line on which letters stand, in pixels.
constexpr int base_line = 13;

// Soft shades of the usual colours, in the order of their numbers.
std::string shade(int colour, const char* unchosen) {
    static const char* const shades[] = {"#15181e", "#c0453a", "#6f9e4b", "#d0a040",
                                         "#1f3f8a", "#8f5aa8", "#3f98a8", "#e6e9ef"};
    if (colour == default_colour) return unchosen;
    if (colour < 0 || colour >= 8)
        throw std::invalid_argument("there is no shade for colour " + std::to_string(colour));
    return shades[colour];
}

std::string foreground_of(const Cell& cell) { return shade(cell.foreground, "#d8dbe2"); }

std::string background_of(const Cell& cell) { return shade(cell.background, "#15181e"); }

struct Block {
    std::string colour;
    int row;
    int col;
    int rows;
    int cols;
};

std::string rectangle(const Block& block, const std::string& attributes = "") {
    std::ostringstream out;
    out << "<rect x=\"" << block.col * cell_width << "\" y=\"" << block.row * cell_height
        << "\" width=\"" << block.cols * cell_width << "\" height=\"" << block.rows * cell_height
        << "\" fill=\"" << block.colour << "\"" << attributes << "/>\n";
    return out.str();
}

std::string usual_colour(const ScreenImage& image) {
    std::map<std::string, int> cells;
    for (int i = 0; i < image.rows() * image.cols(); ++i)
        ++cells[background_of(image.cell(i / image.cols(), i % image.cols()))];
    const auto fewer = [](const auto& left, const auto& right) {
        return left.second < right.second;
    };
    return std::max_element(cells.begin(), cells.end(), fewer)->first;
}

// Makes a block that ends right above the stretch, and is as wide, one row higher, or adds one.
void add_stretch(std::vector<Block>& blocks, const Block& stretch) {
    const auto continues = [&](const Block& block) {
        return block.colour == stretch.colour && block.col == stretch.col &&
               block.cols == stretch.cols && block.row + block.rows == stretch.row;
    };
    const auto above = std::find_if(blocks.begin(), blocks.end(), continues);
    if (above == blocks.end())
        blocks.push_back(stretch);
    else
        ++above->rows;
}

// The backgrounds: one rectangle of the colour that most cells have, and on it as few as possible
// for the others.
void draw_backgrounds(const ScreenImage& image, Drawing& drawing) {
    const std::string usual = usual_colour(image);
    drawing[{Layer::ground, ""}] = {rectangle({usual, 0, 0, image.rows(), image.cols()})};
    std::vector<Block> blocks;
    for (int row = 0; row < image.rows(); ++row) {
        for (int col = 0, end = 0; col < image.cols(); col = end) {
            const std::string colour = background_of(image.cell(row, col));
            while (end < image.cols() && background_of(image.cell(row, end)) == colour) ++end;
            if (colour != usual) add_stretch(blocks, {colour, row, col, 1, end - col});
        }
    }
    for (const Block& block : blocks) drawing[{Layer::blocks, ""}].push_back(rectangle(block));
}

// In which directions a line goes from the middle of a cell.
enum Arms : unsigned { left = 1, right = 2, up = 4, down = 8 };

unsigned arms_of(const Cell& cell) {
    static const std::map<std::string, unsigned> arms = {
        {"─", left | right}, {"│", up | down}, {"┌", right | down},      {"┐", left | down},
        {"└", right | up},   {"┘", left | up}, {"├", right | up | down}, {"┤", left | up | down},
    };
    const auto found = arms.find(cell.text);
    return found == arms.end() ? 0 : found->second;
}

// A way along which strokes go.
struct Way {
    unsigned back;
    unsigned forward;
    int rows;
    int cols;
    int size;  // of a cell along it
    char command;
};

constexpr Way across = {left, right, 0, 1, cell_width, 'H'};
constexpr Way downwards = {up, down, 1, 0, cell_height, 'V'};

// Whether a line of one colour goes on from a cell to the next one.
bool joins(const ScreenImage& image, int row, int col, const Way& way) {
    const int next_row = row + way.rows;
    const int next_col = col + way.cols;
    if (row < 0 || col < 0 || next_row >= image.rows() || next_col >= image.cols()) return false;
    const Cell& cell = image.cell(row, col);
    const Cell& next = image.cell(next_row, next_col);
    return (arms_of(cell) & way.forward) != 0 && (arms_of(next) & way.back) != 0 &&
           foreground_of(cell) == foreground_of(next);
}

// The stroke that begins in this cell, from end to end; empty if none does.
std::string stroke_from(const ScreenImage& image, int row, int col, const Way& way) {
    const unsigned arms = arms_of(image.cell(row, col));
    if ((arms & (way.back | way.forward)) == 0 || joins(image, row - way.rows, col - way.cols, way))
        return "";
    int last = 0;
    while (joins(image, row + last * way.rows, col + last * way.cols, way)) ++last;
    const unsigned end = arms_of(image.cell(row + last * way.rows, col + last * way.cols));
    const int begin = (way.cols != 0 ? col : row) * way.size;
    const int from = begin + ((arms & way.back) != 0 ? 0 : way.size / 2);
    const int to = begin + last * way.size + ((end & way.forward) != 0 ? way.size : way.size / 2);
    std::ostringstream stroke;
    stroke << "M" << (way.cols != 0 ? from : col * cell_width + cell_width / 2) << " "
           << (way.cols != 0 ? row * cell_height + cell_height / 2 : from) << way.command << to;
    return stroke.str();
}

void draw_lines(const ScreenImage& image, Drawing& drawing) {
    std::map<std::string, std::string> paths;
    for (int row = 0; row < image.rows(); ++row) {
        for (int col = 0; col < image.cols(); ++col) {
            const std::string strokes =
                stroke_from(image, row, col, across) + stroke_from(image, row, col, downwards);
            if (!strokes.empty()) paths[foreground_of(image.cell(row, col))] += strokes;
        }
    }
    // Half a pixel further a stroke of one pixel covers exactly one.
    const Place lines = {Layer::lines,
                         " transform=\"translate(.5 .5)\" fill=\"none\" "
                         "stroke-linecap=\"square\""};
    for (const auto& [colour, path] : paths) {
        std::ostringstream out;
        out << "<path stroke=\"" << colour << "\" d=\"" << path << "\"/>\n";
        drawing[lines].push_back(out.str());
    }
}

// The characters from a cell to before the next space, line or change of look.
std::vector<std::string> word_at(const ScreenImage& image, int row, int col) {
    const Cell& first = image.cell(row, col);
    std::vector<std::string> word;
    for (; col < image.cols(); ++col) {
        const Cell& cell = image.cell(row, col);
        if (cell.text == " " || cell.text.empty() || arms_of(cell) != 0 ||
            cell.bold != first.bold || foreground_of(cell) != foreground_of(first))
            break;
        word.push_back(cell.text);
    }
    return word;
}

std::string text_element(int row, int col, const std::vector<std::string>& word) {
    std::ostringstream out;
    out << "<text x=\"" << col * cell_width << "\" y=\"" << row * cell_height + base_line << "\"";
    if (word.size() > 1)
        out << " textLength=\"" << static_cast<int>(word.size()) * cell_width << "\"";
    out << ">";
    for (const std::string& character : word) out << escaped(character);
    out << "</text>\n";
    return out.str();
}

Place place_of_words(const Cell& look) {
    return {Layer::words,
            " fill=\"" + foreground_of(look) + "\"" + (look.bold ? " font-weight=\"700\"" : "")};
}

// Each word begins in its column, whatever the font, and is stretched to as many columns as it has
// characters.
void draw_words(const ScreenImage& image, Drawing& drawing) {
    for (int row = 0; row < image.rows(); ++row) {
        for (int col = 0; col < image.cols(); ++col) {
            const std::vector<std::string> word = word_at(image, row, col);
            if (word.empty()) continue;
            drawing[place_of_words(image.cell(row, col))].push_back(text_element(row, col, word));
            col += static_cast<int>(word.size()) - 1;
        }
    }
}

void draw_cursor(const Cursor& cursor, Drawing& drawing) {
    const Position& at = cursor.position;
    if (cursor.visible)
        drawing[{Layer::cursor, ""}] = {
            rectangle({foreground_of({}), at.row, at.col, 1, 1}, " opacity=\".8\"")};
}

}  // namespace

std::string escaped(const std::string& text) {
    static const std::map<char, std::string> codes = {
        {'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}};
    std::string result;
    for (const char character : text) {
        const auto code = codes.find(character);
        result += code == codes.end() ? std::string(1, character) : code->second;
    }
    return result;
}

Drawing drawing_of(const ScreenImage& image) {
    Drawing drawing;
    draw_backgrounds(image, drawing);
    draw_lines(image, drawing);
    draw_words(image, drawing);
    draw_cursor(image.cursor(), drawing);
    return drawing;
}
