#include "tests/support/curses_image.h"

#include <curses.h>
#include <wchar.h>

#include "tests/support/utf8.h"

namespace {

struct LineCharacter {
    char vt100_letter;
    const char* text;
};

constexpr LineCharacter line_characters[] = {
    {'q', "─"}, {'x', "│"}, {'l', "┌"}, {'k', "┐"}, {'m', "└"}, {'j', "┘"},
    {'t', "├"}, {'u', "┤"}, {'w', "┬"}, {'v', "┴"}, {'n', "┼"},
};

// A line character is kept as the code that the terminal has for it in its alternate set.
std::string text_of(wchar_t character, attr_t attributes) {
    if ((attributes & A_ALTCHARSET) != 0) {
        for (const LineCharacter& line : line_characters) {
            if (static_cast<chtype>(character) == (NCURSES_ACS(line.vt100_letter) & A_CHARTEXT))
                return line.text;
        }
    }
    return to_utf8(static_cast<uint32_t>(character));
}

Cell cell_of(const cchar_t& shown) {
    wchar_t characters[CCHARW_MAX + 1] = {};
    attr_t attributes = 0;
    short pair = 0;
    getcchar(&shown, characters, &attributes, &pair, nullptr);

    Cell cell;
    if (characters[0] != L'\0')
        cell.text.clear();
    for (const wchar_t* character = characters; *character != L'\0'; ++character)
        cell.text += text_of(*character, attributes);
    cell.bold = (attributes & A_BOLD) != 0;
    short foreground = default_colour;
    short background = default_colour;
    if (has_colors())
        pair_content(pair, &foreground, &background);
    cell.foreground = foreground;
    cell.background = background;
    return cell;
}

bool is_wide(const cchar_t& shown) {
    wchar_t characters[CCHARW_MAX + 1] = {};
    attr_t attributes = 0;
    short pair = 0;
    getcchar(&shown, characters, &attributes, &pair, nullptr);
    return wcwidth(characters[0]) == 2;
}

}  // namespace

ScreenImage read_curses_screen() {
    ScreenImage image(getmaxy(curscr), getmaxx(curscr));
    const int cursor_row = getcury(curscr);
    const int cursor_col = getcurx(curscr);
    for (int row = 0; row < image.rows(); ++row) {
        for (int col = 0; col < image.cols(); ++col) {
            cchar_t shown{};
            mvwin_wch(curscr, row, col, &shown);
            image.cell(row, col) = cell_of(shown);
            if (is_wide(shown) && col + 1 < image.cols()) {
                image.cell(row, col + 1) = image.cell(row, col);
                image.cell(row, ++col).text.clear();
            }
        }
    }
    wmove(curscr, cursor_row, cursor_col);
    image.setCursor({{cursor_row, cursor_col}, true});
    return image;
}
