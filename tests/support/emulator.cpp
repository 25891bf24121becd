#include "tests/support/emulator.h"

#include <vterm.h>

#include <algorithm>
#include <map>
#include <utility>

#include "tests/support/escape_sequences.h"

namespace {

int palette_index(const VTermColor& colour) {
    if (VTERM_COLOR_IS_DEFAULT_FG(&colour) || VTERM_COLOR_IS_DEFAULT_BG(&colour))
        return default_colour;
    return VTERM_COLOR_IS_INDEXED(&colour) ? colour.indexed.idx : direct_colour;
}

Cell cell_at(const VTermScreen* screen, VTermPos place) {
    VTermScreenCell shown{};
    vterm_screen_get_cell(screen, place, &shown);
    Cell cell{" ", palette_index(shown.fg), palette_index(shown.bg), shown.attrs.bold != 0};
    if (shown.chars[0] != 0) {
        char text[VTERM_MAX_CHARS_PER_CELL * 6];
        const VTermRect alone{place.row, place.row + 1, place.col, place.col + 1};
        cell.text.assign(text, vterm_screen_get_text(screen, text, sizeof text, alone));
    }
    return cell;
}

const std::map<Key, const char*> plain_keys = {
    {Key::space, " "}, {Key::backspace_as_8, "\b"}, {Key::ctrl_c, "\x03"}};

const std::map<Key, VTermKey> special_keys = {
    {Key::up, VTERM_KEY_UP},          {Key::down, VTERM_KEY_DOWN},
    {Key::left, VTERM_KEY_LEFT},      {Key::right, VTERM_KEY_RIGHT},
    {Key::home, VTERM_KEY_HOME},      {Key::end, VTERM_KEY_END},
    {Key::page_up, VTERM_KEY_PAGEUP}, {Key::page_down, VTERM_KEY_PAGEDOWN},
    {Key::insert, VTERM_KEY_INS},     {Key::del, VTERM_KEY_DEL},
    {Key::enter, VTERM_KEY_ENTER},    {Key::tab, VTERM_KEY_TAB},
    {Key::escape, VTERM_KEY_ESCAPE},  {Key::backspace, VTERM_KEY_BACKSPACE},
};

}  // namespace

struct Emulator::Terminal {
    VTerm* vterm;
    VTermScreen* screen;
    VTermScreenCallbacks callbacks{};
    OutputFilter filter;
    std::string replies;
    bool alternate_screen = false;
    bool cursor_visible = true;

    Terminal(int rows, int cols, const std::string& term)
        : vterm(vterm_new(rows, cols)),
          screen(vterm_obtain_screen(vterm)),
          filter(term == "linux") {
        vterm_set_utf8(vterm, 1);
        vterm_output_set_callback(vterm, onReply, this);
        callbacks.settermprop = onProperty;
        vterm_screen_set_callbacks(screen, &callbacks, this);
        vterm_screen_enable_altscreen(screen, 1);
        vterm_screen_reset(screen, 1);
    }

    ~Terminal() { vterm_free(vterm); }

    static void onReply(const char* bytes, size_t length, void* self) {
        static_cast<Terminal*>(self)->replies.append(bytes, length);
    }

    static int onProperty(VTermProp property, VTermValue* value, void* self) {
        auto* terminal = static_cast<Terminal*>(self);
        if (property == VTERM_PROP_ALTSCREEN) terminal->alternate_screen = value->boolean != 0;
        if (property == VTERM_PROP_CURSORVISIBLE) terminal->cursor_visible = value->boolean != 0;
        return 1;
    }
};

Emulator::Emulator(int rows, int cols, const std::string& term)
    : terminal(std::make_unique<Terminal>(rows, cols, term)) {}

Emulator::~Emulator() = default;

void Emulator::feed(const std::string& bytes) {
    const std::string output = terminal->filter.filter(bytes);
    // libvterm takes room on the stack for all that it is given at once.
    constexpr size_t most_at_once = 65536;
    for (size_t at = 0; at < output.size(); at += most_at_once)
        vterm_input_write(terminal->vterm, output.data() + at,
                          std::min(most_at_once, output.size() - at));
}

void Emulator::resize(int rows, int cols) { vterm_set_size(terminal->vterm, rows, cols); }

ScreenImage Emulator::image() const {
    int rows = 0;
    int cols = 0;
    vterm_get_size(terminal->vterm, &rows, &cols);
    ScreenImage image(rows, cols);
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols; ++col)
            image.cell(row, col) = cell_at(terminal->screen, {row, col});
    }
    VTermPos cursor{};
    vterm_state_get_cursorpos(vterm_obtain_state(terminal->vterm), &cursor);
    image.setCursor({{cursor.row, cursor.col}, terminal->cursor_visible});
    return image;
}

bool Emulator::alternateScreen() const { return terminal->alternate_screen; }

std::string Emulator::keyBytes(Key key) {
    const auto plain = plain_keys.find(key);
    if (plain != plain_keys.end()) return plain->second;
    const std::string earlier_replies = takeReplies();
    vterm_keyboard_key(terminal->vterm, special_keys.at(key), VTERM_MOD_NONE);
    return std::exchange(terminal->replies, earlier_replies);
}

std::string Emulator::takeReplies() { return std::exchange(terminal->replies, {}); }
