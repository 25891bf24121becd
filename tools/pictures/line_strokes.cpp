#include "tools/pictures/line_strokes.h"

#include <map>
#include <sstream>

#include "tools/pictures/grid.h"

namespace {

// In which directions a line goes from the middle of a cell.
struct Arms {
    bool left;
    bool right;
    bool up;
    bool down;
};

Arms arms_of(const Cell& cell) {
    static const std::map<std::string, Arms> arms = {
        {"─", {true, true, false, false}}, {"│", {false, false, true, true}},
        {"┌", {false, true, false, true}}, {"┐", {true, false, false, true}},
        {"└", {false, true, true, false}}, {"┘", {true, false, true, false}},
        {"├", {false, true, true, true}},  {"┤", {true, false, true, true}},
    };
    const auto found = arms.find(cell.text);
    return found == arms.end() ? Arms{} : found->second;
}

// Collects the strokes of each colour as path data.
class Strokes {
  public:
    explicit Strokes(const ScreenImage& screen) : image(screen) {
        for (int row = 0; row < image.rows(); ++row) {
            for (int col = 0; col < image.cols(); ++col) {
                addAcross(row, col);
                addDown(row, col);
            }
        }
    }

    std::string svg() const {
        std::ostringstream out;
        for (const auto& [colour, path] : paths)
            out << "<path stroke=\"" << colour << "\" d=\"" << path << "\"/>\n";
        return out.str();
    }

  private:
    // Whether a line of one colour goes on from a cell to its right neighbour, or the one below.
    bool joins(int row, int col, int next_row, int next_col) const {
        if (next_row >= image.rows() || next_col >= image.cols())
            return false;
        const Cell& cell = image.cell(row, col);
        const Cell& next = image.cell(next_row, next_col);
        const bool meet = next_row == row ? arms_of(cell).right && arms_of(next).left
                                          : arms_of(cell).down && arms_of(next).up;
        return meet && foreground_of(cell) == foreground_of(next);
    }

    // Adds the stroke that begins in this cell and goes to the right, if one does.
    void addAcross(int row, int col) {
        const Arms arms = arms_of(image.cell(row, col));
        const bool begins = col == 0 || !joins(row, col - 1, row, col);
        if (!begins || !(arms.left || arms.right))
            return;
        int last = col;
        while (joins(row, last, row, last + 1))
            ++last;
        const int from = col * cell_width + (arms.left ? 0 : cell_width / 2);
        const bool to_edge = arms_of(image.cell(row, last)).right;
        const int to = last * cell_width + (to_edge ? cell_width : cell_width / 2);
        add(row, col, from, row * cell_height + cell_height / 2, 'H', to);
    }

    // The same downwards.
    void addDown(int row, int col) {
        const Arms arms = arms_of(image.cell(row, col));
        const bool begins = row == 0 || !joins(row - 1, col, row, col);
        if (!begins || !(arms.up || arms.down))
            return;
        int last = row;
        while (joins(last, col, last + 1, col))
            ++last;
        const int from = row * cell_height + (arms.up ? 0 : cell_height / 2);
        const bool to_edge = arms_of(image.cell(last, col)).down;
        const int to = last * cell_height + (to_edge ? cell_height : cell_height / 2);
        add(row, col, col * cell_width + cell_width / 2, from, 'V', to);
    }

    void add(int row, int col, int x, int y, char direction, int to) {
        std::ostringstream stroke;
        stroke << "M" << x << " " << y << direction << to;
        paths[foreground_of(image.cell(row, col))] += stroke.str();
    }

    const ScreenImage& image;
    std::map<std::string, std::string> paths;
};

}  // namespace

bool is_line(const Cell& cell) {
    const Arms arms = arms_of(cell);
    return arms.left || arms.right || arms.up || arms.down;
}

std::string line_strokes(const ScreenImage& image) {
    const std::string strokes = Strokes(image).svg();
    if (strokes.empty())
        return "";
    // Half a pixel further a stroke of one pixel covers exactly one.
    return "<g transform=\"translate(.5 .5)\" fill=\"none\" stroke-linecap=\"square\">\n" +
           strokes + "</g>\n";
}
