#include "tests/support/emulator.h"

#include <vterm.h>

#include <algorithm>
#include <map>
#include <optional>

#include "tests/support/repeat_expander.h"
#include "tests/support/sequence_filter.h"
#include "tests/support/utf8.h"

namespace {

// The Linux console resets its palette on this. It has no end mark, so any other terminal takes all
// that follows for the text of an operating system command.
constexpr char linux_palette_reset[] = "\x1b]R";

int palette_index(const VTermColor& colour) {
    if (VTERM_COLOR_IS_DEFAULT_FG(&colour) || VTERM_COLOR_IS_DEFAULT_BG(&colour))
        return default_colour;
    return VTERM_COLOR_IS_INDEXED(&colour) ? colour.indexed.idx : direct_colour;
}

Cell cell_of(const VTermScreenCell& shown) {
    constexpr uint32_t right_half = UINT32_MAX;
    Cell cell;
    cell.text.clear();
    for (int i = 0; i < VTERM_MAX_CHARS_PER_CELL && shown.chars[i] != 0; ++i) {
        if (shown.chars[i] != right_half)
            cell.text += to_utf8(shown.chars[i]);
    }
    if (shown.chars[0] == 0)
        cell.text = " ";
    cell.foreground = palette_index(shown.fg);
    cell.background = palette_index(shown.bg);
    cell.bold = shown.attrs.bold != 0;
    return cell;
}

VTermKey vterm_key(Key key) {
    static const std::map<Key, VTermKey> keys = {
        {Key::up, VTERM_KEY_UP},          {Key::down, VTERM_KEY_DOWN},
        {Key::left, VTERM_KEY_LEFT},      {Key::right, VTERM_KEY_RIGHT},
        {Key::home, VTERM_KEY_HOME},      {Key::end, VTERM_KEY_END},
        {Key::page_up, VTERM_KEY_PAGEUP}, {Key::page_down, VTERM_KEY_PAGEDOWN},
        {Key::insert, VTERM_KEY_INS},     {Key::del, VTERM_KEY_DEL},
        {Key::enter, VTERM_KEY_ENTER},    {Key::tab, VTERM_KEY_TAB},
        {Key::escape, VTERM_KEY_ESCAPE},  {Key::backspace, VTERM_KEY_BACKSPACE},
    };
    const auto found = keys.find(key);
    return found == keys.end() ? VTERM_KEY_NONE : found->second;
}

}  // namespace

struct Emulator::Terminal {
    VTerm* vterm;
    VTermScreen* screen;
    VTermScreenCallbacks callbacks{};
    std::optional<SequenceFilter> skipped;
    RepeatExpander repeats;
    // libvterm shows a broken character as late as before the next one that is not ASCII.
    BrokenCharacterFilter broken;
    std::string replies;
    bool alternate_screen = false;
    bool cursor_visible = true;

    Terminal(int rows, int cols)
        : vterm(vterm_new(rows, cols)), screen(vterm_obtain_screen(vterm)) {
        vterm_set_utf8(vterm, 1);
        vterm_output_set_callback(vterm, onReply, this);
        callbacks.settermprop = onProperty;
        vterm_screen_set_callbacks(screen, &callbacks, this);
        vterm_screen_enable_altscreen(screen, 1);
        vterm_screen_reset(screen, 1);
    }

    ~Terminal() { vterm_free(vterm); }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    static void onReply(const char* bytes, size_t length, void* self) {
        static_cast<Terminal*>(self)->replies.append(bytes, length);
    }

    static int onProperty(VTermProp property, VTermValue* value, void* self) {
        auto* terminal = static_cast<Terminal*>(self);
        if (property == VTERM_PROP_ALTSCREEN)
            terminal->alternate_screen = value->boolean != 0;
        if (property == VTERM_PROP_CURSORVISIBLE)
            terminal->cursor_visible = value->boolean != 0;
        return 1;
    }

    void write(const std::string& bytes) const {
        vterm_input_write(vterm, bytes.data(), bytes.size());
    }
};

Emulator::Emulator(int rows, int cols, const std::string& term)
    : terminal(std::make_unique<Terminal>(rows, cols)) {
    if (term == "linux")
        terminal->skipped.emplace(linux_palette_reset);
}

Emulator::~Emulator() = default;

void Emulator::feed(const std::string& bytes) {
    std::string output = terminal->repeats.expand(terminal->broken.filter(bytes));
    if (terminal->skipped)
        output = terminal->skipped->filter(output);
    // libvterm takes room on the stack for all that it is given at once.
    constexpr size_t most_at_once = 65536;
    for (size_t at = 0; at < output.size(); at += most_at_once)
        vterm_input_write(terminal->vterm, output.data() + at,
                          std::min(most_at_once, output.size() - at));
}

void Emulator::resize(int rows, int cols) {
    vterm_set_size(terminal->vterm, rows, cols);
}

ScreenImage Emulator::image() const {
    int rows = 0;
    int cols = 0;
    vterm_get_size(terminal->vterm, &rows, &cols);
    ScreenImage image(rows, cols);
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols; ++col) {
            VTermScreenCell shown{};
            vterm_screen_get_cell(terminal->screen, {row, col}, &shown);
            image.cell(row, col) = cell_of(shown);
        }
    }
    VTermPos cursor{};
    vterm_state_get_cursorpos(vterm_obtain_state(terminal->vterm), &cursor);
    image.setCursor({{cursor.row, cursor.col}, terminal->cursor_visible});
    return image;
}

bool Emulator::alternateScreen() const {
    return terminal->alternate_screen;
}

std::string Emulator::keyBytes(Key key) {
    switch (key) {
        case Key::space:
            return " ";
        case Key::backspace_as_8:
            return "\b";
        case Key::ctrl_c:
            return "\x03";
        default:
            break;
    }
    const std::string earlier_replies = takeReplies();
    vterm_keyboard_key(terminal->vterm, vterm_key(key), VTERM_MOD_NONE);
    std::string bytes = takeReplies();
    terminal->replies = earlier_replies;
    return bytes;
}

std::string Emulator::takeReplies() {
    std::string taken;
    taken.swap(terminal->replies);
    return taken;
}
