#include <algorithm>
#include <utility>
#include <vector>

#include "ui/terminal/terminal.h"
#include "ui/terminal/terminal_record.h"

namespace {

// After ESC: the cursor keys in both of their modes; the keypad of a VT100, in the mode that curses
// puts it into.
constexpr std::pair<const char*, int> sequences[] = {
    {"[A", KEY_UP},    {"OA", KEY_UP},   {"[B", KEY_DOWN}, {"OB", KEY_DOWN}, {"[C", KEY_RIGHT},
    {"OC", KEY_RIGHT}, {"[D", KEY_LEFT}, {"OD", KEY_LEFT}, {"Op", '0'},      {"Oq", '1'},
    {"Or", '2'},       {"Os", '3'},      {"Ot", '4'},      {"Ou", '5'},      {"Ov", '6'},
    {"Ow", '7'},       {"Ox", '8'},      {"Oy", '9'},      {"On", '.'},      {"OM", KEY_ENTER}};

// A key that does something on some screen.
bool is_known(int key) {
    return key == KEY_UP || key == KEY_DOWN || key == KEY_BACKSPACE || key == KEY_ENTER;
}

// Whether what has been read after ESC is the beginning of a control sequence, and not the whole.
// A Linux console sends ESC [ [ and a letter for its first function keys.
bool goes_on(const std::vector<int>& bytes) {
    constexpr size_t longest = 32;
    const int last = bytes.back();
    if (bytes.size() == 1) return last == '[' || last == 'O';
    if (bytes.size() == 2 && bytes.front() == '[' && last == '[') return true;
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
    for (const auto& [bytes, key] : sequences) {
        const std::string sequence = std::string("\033") + bytes;
        if (!is_known(key_defined(sequence.c_str()))) define_key(sequence.c_str(), key);
    }
}

bool skip_control_sequence(WINDOW* window) {
    std::vector<int> bytes;
    do {
        bytes.push_back(wgetch(window));
        wtimeout(window, ESCDELAY);
    } while (goes_on(bytes));
    if (is_whole(bytes)) return true;
    if (bytes.back() == ERR) bytes.pop_back();
    std::for_each(bytes.rbegin(), bytes.rend(), ungetch);
    return false;
}
