#include "tools/pictures/svg.h"

#include <sstream>

#include "tools/pictures/colour_blocks.h"
#include "tools/pictures/grid.h"
#include "tools/pictures/line_strokes.h"
#include "tools/pictures/word_runs.h"

namespace {

// The window around the screen.
constexpr int margin = 10;
constexpr int title_bar = 24;
constexpr int corner = 8;

std::string window(int width, int height) {
    std::ostringstream out;
    out << "<rect width=\"" << width << "\" height=\"" << height << "\" rx=\"" << corner
        << "\" fill=\"#2b303b\"/>\n";
    int x = margin + 6;
    for (const char* colour : {"#bf616a", "#ebcb8b", "#a3be8c"}) {
        out << "<circle cx=\"" << x << "\" cy=\"" << title_bar / 2 + 1 << "\" r=\"5\" fill=\""
            << colour << "\"/>\n";
        x += 17;
    }
    return out.str();
}

std::string cursor_block(const Cursor& cursor) {
    if (!cursor.visible)
        return "";
    std::ostringstream out;
    out << "<rect x=\"" << cursor.position.col * cell_width << "\" y=\""
        << cursor.position.row * cell_height << "\" width=\"" << cell_width << "\" height=\""
        << cell_height << "\" fill=\"" << foreground_of({}) << "\" opacity=\".8\"/>\n";
    return out.str();
}

}  // namespace

std::string svg_of(const ScreenImage& image, const std::string& title) {
    const int width = image.cols() * cell_width + 2 * margin;
    const int height = image.rows() * cell_height + title_bar + margin;
    std::ostringstream out;
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" viewBox=\"0 0 " << width << " "
        << height << "\" width=\"" << width << "\" height=\"" << height
        << "\" font-family=\"'DejaVu Sans Mono','Liberation Mono',Menlo,Consolas,monospace\""
        << " font-size=\"13.3\">\n<title>" << escaped(title) << "</title>\n"
        << window(width, height) << "<g transform=\"translate(" << margin << " " << title_bar
        << ")\">\n"
        << colour_blocks(image) << line_strokes(image) << word_runs(image)
        << cursor_block(image.cursor()) << "</g>\n</svg>\n";
    return out.str();
}
