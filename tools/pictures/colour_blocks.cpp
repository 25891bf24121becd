#include "tools/pictures/colour_blocks.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <vector>

#include "tools/pictures/grid.h"

namespace {

struct Block {
    std::string colour;
    int row;
    int col;
    int rows;
    int cols;
};

std::string usual_colour(const ScreenImage& image) {
    std::map<std::string, int> cells;
    for (int row = 0; row < image.rows(); ++row) {
        for (int col = 0; col < image.cols(); ++col)
            ++cells[background_of(image.cell(row, col))];
    }
    const auto fewer = [](const auto& left, const auto& right) {
        return left.second < right.second;
    };
    return std::max_element(cells.begin(), cells.end(), fewer)->first;
}

// The stretch of one colour that begins at a cell.
Block stretch_at(const ScreenImage& image, int row, int col) {
    const std::string colour = background_of(image.cell(row, col));
    int end = col;
    while (end < image.cols() && background_of(image.cell(row, end)) == colour)
        ++end;
    return {colour, row, col, 1, end - col};
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

std::string rectangle(const Block& block) {
    std::ostringstream out;
    out << "<rect x=\"" << block.col * cell_width << "\" y=\"" << block.row * cell_height
        << "\" width=\"" << block.cols * cell_width << "\" height=\"" << block.rows * cell_height
        << "\" fill=\"" << block.colour << "\"/>\n";
    return out.str();
}

}  // namespace

std::string colour_blocks(const ScreenImage& image) {
    const std::string usual = usual_colour(image);
    std::vector<Block> blocks{{usual, 0, 0, image.rows(), image.cols()}};
    for (int row = 0; row < image.rows(); ++row) {
        for (int col = 0; col < image.cols();) {
            const Block stretch = stretch_at(image, row, col);
            if (stretch.colour != usual)
                add_stretch(blocks, stretch);
            col += stretch.cols;
        }
    }
    std::string svg;
    for (const Block& block : blocks)
        svg += rectangle(block);
    return svg;
}
