// Preloaded into the wizard: every call of curses, of its panels and of the allocator looks whether
// a signal whose handler draws or ends the program could come in now. Such a signal has a handler
// and is not blocked. When the program ends, it writes what it found into the file
// TELUMA_ENTRY_WATCH: a line for each such call (the first hundred), then the number of calls that
// it looked at.
//
// A handler may do anything that is safe where signals are let in, and all are blocked again while
// it runs; so this holds inside of handlers too.

#define NCURSES_NOMACROS
#include <curses.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <panel.h>
#include <unistd.h>

#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

namespace {

// Those of a crash are let in everywhere; their handler is safe everywhere.
constexpr int watched_signals[] = {SIGHUP, SIGINT, SIGTERM, SIGTSTP, SIGCONT, SIGCHLD, SIGWINCH};

int report = -1;
unsigned long calls = 0;
int violations = 0;

void write_line(const char* text, int length) {
    if (report != -1 && write(report, text, static_cast<std::size_t>(length)) < 0)
        report = -1;
}

void note(const char* function, int signal_number) {
    constexpr int most = 100;
    char line[128];
    if (++violations <= most)
        write_line(line, std::snprintf(line, sizeof line, "%s: signal %d can come in\n", function,
                                       signal_number));
}

bool can_come_in(int signal_number, const sigset_t& blocked) {
    struct sigaction action {};
    sigaction(signal_number, nullptr, &action);
    return action.sa_handler != SIG_DFL && action.sa_handler != SIG_IGN &&
           sigismember(&blocked, signal_number) == 0;
}

void look(const char* function) {
    ++calls;
    sigset_t blocked;
    sigprocmask(SIG_BLOCK, nullptr, &blocked);
    for (const int signal_number : watched_signals) {
        if (can_come_in(signal_number, blocked))
            note(function, signal_number);
    }
}

__attribute__((constructor)) void start_watch() {
    const char* path = std::getenv("TELUMA_ENTRY_WATCH");
    if (path != nullptr)
        report = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    // The wizard's children are no concern of this.
    unsetenv("LD_PRELOAD");
    unsetenv("TELUMA_ENTRY_WATCH");
}

__attribute__((destructor)) void end_watch() {
    char line[64];
    write_line(line, std::snprintf(line, sizeof line, "%lu calls\n", calls));
}

}  // namespace

#define WATCHED(result, name, parameters, arguments)                                         \
    extern "C" result name parameters {                                                      \
        static const auto next = reinterpret_cast<decltype(&name)>(dlsym(RTLD_NEXT, #name)); \
        look(#name);                                                                         \
        return next arguments;                                                               \
    }

WATCHED(int, box, (WINDOW * w, chtype v, chtype h), (w, v, h))
WATCHED(int, cbreak, (), ())
WATCHED(int, clear, (), ())
WATCHED(int, clearok, (WINDOW * w, bool on), (w, on))
WATCHED(int, curs_set, (int visibility), (visibility))
WATCHED(int, def_prog_mode, (), ())
WATCHED(int, define_key, (const char* definition, int code), (definition, code))
WATCHED(int, del_panel, (PANEL * p), (p))
WATCHED(void, delscreen, (SCREEN * s), (s))
WATCHED(int, delwin, (WINDOW * w), (w))
WATCHED(int, doupdate, (), ())
WATCHED(int, endwin, (), ())
WATCHED(int, hide_panel, (PANEL * p), (p))
WATCHED(void, idcok, (WINDOW * w, bool on), (w, on))
WATCHED(int, init_pair, (short pair, short fore, short back), (pair, fore, back))
WATCHED(bool, is_term_resized, (int rows, int cols), (rows, cols))
WATCHED(int, keypad, (WINDOW * w, bool on), (w, on))
WATCHED(int, move_panel, (PANEL * p, int row, int col), (p, row, col))
WATCHED(PANEL*, new_panel, (WINDOW * w), (w))
WATCHED(WINDOW*, newwin, (int rows, int cols, int row, int col), (rows, cols, row, col))
WATCHED(SCREEN*, newterm, (const char* type, FILE* out, FILE* in), (type, out, in))
WATCHED(int, nodelay, (WINDOW * w, bool on), (w, on))
WATCHED(int, noecho, (), ())
WATCHED(void, noqiflush, (), ())
WATCHED(int, refresh, (), ())
WATCHED(int, replace_panel, (PANEL * p, WINDOW* w), (p, w))
WATCHED(int, resizeterm, (int rows, int cols), (rows, cols))
WATCHED(int, set_escdelay, (int milliseconds), (milliseconds))
WATCHED(int, show_panel, (PANEL * p), (p))
WATCHED(int, start_color, (), ())
WATCHED(int, ungetch, (int key), (key))
WATCHED(void, update_panels, (), ())
WATCHED(int, waddch, (WINDOW * w, const chtype c), (w, c))
WATCHED(int, wattr_off, (WINDOW * w, attr_t attributes, void* options), (w, attributes, options))
WATCHED(int, wattr_on, (WINDOW * w, attr_t attributes, void* options), (w, attributes, options))
WATCHED(int, wattr_set, (WINDOW * w, attr_t attributes, short pair, void* options),
        (w, attributes, pair, options))
WATCHED(int, wbkgd, (WINDOW * w, chtype c), (w, c))
WATCHED(int, wborder,
        (WINDOW * w, chtype ls, chtype rs, chtype ts, chtype bs, chtype tl, chtype tr, chtype bl,
         chtype br),
        (w, ls, rs, ts, bs, tl, tr, bl, br))
WATCHED(int, werase, (WINDOW * w), (w))
WATCHED(int, wgetch, (WINDOW * w), (w))
WATCHED(int, whline, (WINDOW * w, chtype c, int count), (w, c, count))
WATCHED(int, wmove, (WINDOW * w, int row, int col), (w, row, col))
WATCHED(int, wrefresh, (WINDOW * w), (w))
WATCHED(int, wresize, (WINDOW * w, int rows, int cols), (w, rows, cols))
WATCHED(void, wtimeout, (WINDOW * w, int delay), (w, delay))
WATCHED(int, wtouchln, (WINDOW * w, int row, int count, int changed), (w, row, count, changed))

extern "C" int mvwprintw(WINDOW* window, int row, int col, const char* format, ...) {
    look("mvwprintw");
    if (wmove(window, row, col) == ERR)
        return ERR;
    va_list arguments;
    va_start(arguments, format);
    const int result = vw_printw(window, format, arguments);
    va_end(arguments);
    return result;
}

// The sanitizers' allocator, which is part of the program, calls these.
extern "C" void __sanitizer_malloc_hook(const volatile void* /*memory*/, std::size_t /*size*/) {
    look("malloc");
}

extern "C" void __sanitizer_free_hook(const volatile void* /*memory*/) {
    look("free");
}
