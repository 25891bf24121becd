#include "ui/terminal/terminal.h"

#include <curses.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <term.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <utility>

#include "ui/terminal/colours.h"
#include "ui/terminal/terminal_record.h"
#include "wizard/base/tel_help.h"

Terminal wizard_terminal;

namespace {

constexpr int most_cells = 4096;

// Where curses looks for the size, and standard input; standard output if none is a terminal.
int size_terminal() {
    for (const int standard : {STDOUT_FILENO, STDERR_FILENO, STDIN_FILENO}) {
        if (wizard_terminal.standard[standard].descriptor != no_descriptor)
            return wizard_terminal.standard[standard].descriptor;
    }
    return STDOUT_FILENO;
}

// The rows or columns that the environment prescribes; 0 for none.
int prescribed(const char* variable) {
    const char* text = std::getenv(variable);
    char* end = nullptr;
    const long value = text != nullptr ? std::strtol(text, &end, 10) : 0;
    return value > 0 && value <= most_cells && *end == '\0' ? static_cast<int>(value) : 0;
}

// Has it prescribe what the terminal tells or, in place of more than any has, what is now. False if
// it does so already, or nobody tells.
bool prescribe(const char* variable, int told, int present) {
    if (prescribed(variable) != 0) return false;
    unsetenv(variable);
    const int size = told > most_cells ? present : told;
    return size != 0 && setenv(variable, std::to_string(size).c_str(), 1) == 0;
}

// For when curses asks for the size by itself, newterm(3X) and, after endwin(3X), refresh(3X). What
// the user prescribes stays, unless it can't be used.
void with_sound_size(const std::function<void()>& ask) {
    winsize told{};
    ioctl(size_terminal(), TIOCGWINSZ, &told);
    const bool is_open = stdscr != nullptr;
    const bool ours[] = {prescribe("LINES", told.ws_row, is_open ? getmaxy(stdscr) : 24),
                         prescribe("COLUMNS", told.ws_col, is_open ? getmaxx(stdscr) : 80)};
    const int rows = prescribed("LINES");
    const int cols = prescribed("COLUMNS");
    // Before endwin(3X), which goes to the last line.
    if (wizard_terminal.stream != nullptr && is_term_resized(rows, cols)) resizeterm(rows, cols);
    ask();
    if (ours[0]) unsetenv("LINES");
    if (ours[1]) unsetenv("COLUMNS");
}

// A stream for curses to write to; standard output where nothing can be kept back.
std::FILE* stream_for_curses() {
    // A limit on the size of files (ulimit -f) holds for nameless ones too.
    rlimit files{};
    const bool may_grow = getrlimit(RLIMIT_FSIZE, &files) == 0 && files.rlim_cur == RLIM_INFINITY;
    Descriptor store(may_grow ? nameless_file() : no_descriptor);
    Descriptor copy(fcntl(size_terminal(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    std::FILE* stream = store.isOpen() && copy.isOpen() ? fdopen(copy.get(), "w") : nullptr;
    if (stream == nullptr) return stdout;
    copy.release();
    wizard_terminal.store = std::move(store);
    wizard_terminal.stream.reset(stream);
    return stream;
}

void keep_output_back() {
    if (wizard_terminal.stream == nullptr) return;
    const int descriptor = fileno(wizard_terminal.stream.get());
    dup2(wizard_terminal.store.get(), descriptor);
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

// On others, such as "dumb", all frames would stand below one another.
bool can_move_cursor() {
    return cursor_address != nullptr || cursor_up != nullptr || cursor_home != nullptr;
}

bool speaks_ecma_48() {
    const char* move = cursor_address != nullptr ? tgoto(cursor_address, 1, 1) : nullptr;
    return move != nullptr && std::strncmp(move, "\033[", 2) == 0;
}

bool repeats_as_in_ecma_48() {
    const char* repetition = repeat_char != nullptr ? tparm(repeat_char, 'x', 5) : nullptr;
    return repetition != nullptr && std::strcmp(repetition, "x\033[4b") == 0;
}

// Whether curses has the terminal now.
bool start_curses() {
    // In UTF-8 lines are characters; many terminals have no other set of characters then, whatever
    // their description says. A value of the user's stays, and other programs don't get ours.
    constexpr char line_characters[] = "NCURSES_NO_UTF8_ACS";
    const bool is_users = std::getenv(line_characters) != nullptr;
    setenv(line_characters, "1", 0);
    // Without the locale's character set curses draws lines as letters on UTF-8 terminals.
    std::setlocale(LC_CTYPE, "");
    SCREEN* screen = nullptr;
    with_sound_size([&] { screen = newterm(nullptr, stream_for_curses(), stdin); });
    if (!is_users) unsetenv(line_characters);
    if (screen != nullptr && can_move_cursor()) return true;
    if (screen != nullptr) {
        endwin();
        delscreen(screen);
    }
    wizard_terminal.stream.reset();
    return false;
}

void set_modes() {
    start_color();
    cbreak();
    noecho();
    // An interrupt key that threw away the key before it would leave curses reading a key that is
    // not there, deaf to the interrupt.
    noqiflush();
    // Some terminals leave black after deleted characters, whatever their description says.
    idcok(stdscr, FALSE);
    // Curses can't change these modes any more.
    keep_modes();
    keep_output_back();
    // After an Escape curses waits for the rest of a key, deaf to the interrupt; by itself for a
    // second.
    if (std::getenv("ESCDELAY") == nullptr) set_escdelay(200);
    keypad(stdscr, TRUE);
    learn_key_sequences();
}

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

}  // namespace

std::string description(const char* capability) {
    wizard_terminal.description.clear();
    if (capability != nullptr)
        tputs(capability, 1, [](int character) {
            wizard_terminal.description += static_cast<char>(character);
            return character;
        });
    return wizard_terminal.description;
}

void learn_key_sequences() {
    // Curses would take the introducer for the whole: a mouse is reported in a control sequence,
    // where an earlier program has left that on.
    define_key(nullptr, KEY_MOUSE);
    for (const auto& [bytes, key] : sequences) {
        const std::string sequence = std::string("\033") + bytes;
        if (!is_known(key_defined(sequence.c_str()))) define_key(sequence.c_str(), key);
    }
}

bool open_terminal() {
    remember_terminals();
    // Curses sets modes at once, but says nothing before it draws.
    guard_against_crashes();
    if (!start_curses()) return false;
    std::atexit(close_terminal);
    def_prog_mode();
    prepare_farewell();
    wizard_terminal.thins = isatty(STDOUT_FILENO) != 0 && speaks_ecma_48();
    wizard_terminal.thinner = OutputThinner(repeats_as_in_ecma_48());
    set_modes();
    return true;
}

void define_colours() {
    init_pair(pair_focus, COLOR_WHITE, COLOR_BLACK);
    init_pair(pair_screen, COLOR_WHITE, COLOR_BLUE);
    init_pair(pair_button, COLOR_BLACK, COLOR_RED);
}

void redraw_terminal() {
    retake_terminal();
    wizard_terminal.thinner.forget();
    // Coming back to the terminal curses says all modes again.
    endwin();
    clearok(curscr, TRUE);
    doupdate();
    send_output();
}

bool renew_terminal() {
    if (!retake_terminal()) return false;
    wizard_terminal.thinner.forget();
    with_sound_size([] {
        clear();
        // Left twice, a terminal would go back to where it was when it was left the first time.
        if (!isendwin()) endwin();
        refresh();
    });
    // Curses has not seen that it came back to a terminal.
    if (wizard_terminal.stream != nullptr) keypad(stdscr, TRUE);
    return true;
}
