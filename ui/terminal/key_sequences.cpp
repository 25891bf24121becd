#include "ui/terminal/key_sequences.h"

#include <algorithm>
#include <vector>

namespace {

struct KeySequence {
    const char* bytes;
    int key;
};

constexpr KeySequence sequences[] = {
    // The cursor keys in both of their modes.
    {"\033[A", KEY_UP},
    {"\033OA", KEY_UP},
    {"\033[B", KEY_DOWN},
    {"\033OB", KEY_DOWN},
    {"\033[C", KEY_RIGHT},
    {"\033OC", KEY_RIGHT},
    {"\033[D", KEY_LEFT},
    {"\033OD", KEY_LEFT},
    // The keys above them, as xterm, the VT220, rxvt and the consoles send them.
    {"\033[H", KEY_HOME},
    {"\033OH", KEY_HOME},
    {"\033[1~", KEY_HOME},
    {"\033[7~", KEY_HOME},
    {"\033[F", KEY_END},
    {"\033OF", KEY_END},
    {"\033[4~", KEY_END},
    {"\033[8~", KEY_END},
    {"\033[2~", KEY_IC},
    {"\033[3~", KEY_DC},
    {"\033[5~", KEY_PPAGE},
    {"\033[6~", KEY_NPAGE},
    // The keypad of a VT100, which curses puts into the mode in which it sends these.
    {"\033Op", '0'},
    {"\033Oq", '1'},
    {"\033Or", '2'},
    {"\033Os", '3'},
    {"\033Ot", '4'},
    {"\033Ou", '5'},
    {"\033Ov", '6'},
    {"\033Ow", '7'},
    {"\033Ox", '8'},
    {"\033Oy", '9'},
    {"\033On", '.'},
    {"\033OM", KEY_ENTER},
};

// A key that does something on some screen.
bool is_known(int key) {
    return key == KEY_UP || key == KEY_DOWN || key == KEY_BACKSPACE || key == KEY_ENTER;
}

// Whether what has been read behind ESC is the beginning of a control sequence, and not the whole.
// A Linux console sends ESC [ [ and a letter for its first function keys.
bool goes_on(const std::vector<int>& bytes) {
    constexpr size_t longest = 32;
    const int last = bytes.back();
    if (bytes.size() == 1)
        return last == '[' || last == 'O';
    if (bytes.size() == 2 && bytes.front() == '[' && last == '[')
        return true;
    return last >= ' ' && last <= '?' && last != '$' && bytes.size() < longest;
}

// The last byte is that of ECMA-48, or $, with which rxvt tells of Shift.
bool is_whole(const std::vector<int>& bytes) {
    const int last = bytes.back();
    return bytes.size() > 1 && ((last >= '@' && last <= '~') || last == '$');
}

}  // namespace

void learn_key_sequences() {
    // Curses would take the introducer for the whole: a mouse is reported in a control sequence,
    // where an earlier program has left that on.
    define_key(nullptr, KEY_MOUSE);
    for (const KeySequence& sequence : sequences) {
        if (!is_known(key_defined(sequence.bytes)))
            define_key(sequence.bytes, sequence.key);
    }
}

bool skip_control_sequence(WINDOW* window) {
    std::vector<int> bytes;
    // Curses itself has waited for the first one.
    nodelay(window, TRUE);
    do {
        bytes.push_back(wgetch(window));
        wtimeout(window, ESCDELAY);
    } while (goes_on(bytes));
    if (is_whole(bytes))
        return true;
    bytes.erase(std::remove(bytes.begin(), bytes.end(), ERR), bytes.end());
    std::for_each(bytes.rbegin(), bytes.rend(), ungetch);
    return false;
}
