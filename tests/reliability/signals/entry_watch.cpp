// Preloaded into the wizard: every call of curses, of its panels and of the allocator looks whether
// a signal whose handler draws or ends the program could come in now. Such a signal has a handler
// and is not blocked. When the program ends, it writes what it found into the file
// TELUMA_ENTRY_WATCH: a line for each such call (the first hundred), then the number of calls that
// it looked at. At the call that TELUMA_ENTRY_CRASH names, it has the program crash.
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
#include <cstring>
#include <initializer_list>

namespace {

// Those of a crash are let in everywhere; their handler is safe everywhere.
constexpr int watched_signals[] = {SIGHUP, SIGINT, SIGTERM, SIGTSTP, SIGCONT, SIGCHLD, SIGWINCH};

const char* crash_at = nullptr;
int report = -1;
unsigned long calls = 0;
int violations = 0;

void write_line(const char* text, int length) {
    if (report != -1 && write(report, text, static_cast<std::size_t>(length)) < 0) report = -1;
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
    if (crash_at != nullptr && std::strcmp(crash_at, function) == 0) raise(SIGQUIT);
    sigset_t blocked;
    sigprocmask(SIG_BLOCK, nullptr, &blocked);
    for (const int signal_number : watched_signals) {
        if (can_come_in(signal_number, blocked)) note(function, signal_number);
    }
}

__attribute__((constructor)) void start_watch() {
    const char* path = std::getenv("TELUMA_ENTRY_WATCH");
    if (path != nullptr) report = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    crash_at = std::getenv("TELUMA_ENTRY_CRASH");
    // The wizard's children are no concern of this.
    unsetenv("LD_PRELOAD");
    unsetenv("TELUMA_ENTRY_WATCH");
}

__attribute__((destructor)) void end_watch() {
    char line[64];
    write_line(line, std::snprintf(line, sizeof line, "%lu calls\n", calls));
}

// What is called in the place of a function.
template <class Function, const char* name>
struct Watched;

template <class Result, class... Arguments, const char* name>
struct Watched<Result(Arguments...), name> {
    static Result call(Arguments... arguments) {
        static const auto next = reinterpret_cast<Result (*)(Arguments...)>(dlsym(RTLD_NEXT, name));
        look(name);
        return next(arguments...);
    }
};

}  // namespace

#define WATCH(name)                                           \
    constexpr char name##_text[] = #name;                     \
    extern "C" decltype(&::name) watched_##name() {           \
        return &Watched<decltype(::name), name##_text>::call; \
    }                                                         \
    extern "C" decltype(::name) name __attribute__((ifunc("watched_" #name)))

// clang-format off
WATCH(box); WATCH(cbreak); WATCH(clear); WATCH(clearok); WATCH(curs_set); WATCH(def_prog_mode);
WATCH(define_key); WATCH(del_panel); WATCH(delscreen); WATCH(delwin); WATCH(doupdate);
WATCH(endwin); WATCH(hide_panel); WATCH(idcok); WATCH(init_pair); WATCH(is_term_resized);
WATCH(keypad); WATCH(move_panel); WATCH(new_panel); WATCH(newwin); WATCH(newterm); WATCH(nodelay);
WATCH(noecho); WATCH(noqiflush); WATCH(refresh); WATCH(replace_panel); WATCH(resizeterm);
WATCH(set_escdelay); WATCH(show_panel); WATCH(start_color); WATCH(ungetch); WATCH(update_panels);
WATCH(waddch); WATCH(waddnstr); WATCH(wattr_off); WATCH(wattr_on); WATCH(wattr_set); WATCH(wbkgd); WATCH(wborder);
WATCH(werase); WATCH(wgetch); WATCH(whline); WATCH(wmove); WATCH(wrefresh); WATCH(wresize);
WATCH(wtimeout); WATCH(wtouchln);
// clang-format on

extern "C" int mvwprintw(WINDOW* window, int row, int col, const char* format, ...) {
    look("mvwprintw");
    if (wmove(window, row, col) == ERR) return ERR;
    va_list arguments;
    va_start(arguments, format);
    const int result = vw_printw(window, format, arguments);
    va_end(arguments);
    return result;
}

// The sanitizers' allocator, which is part of the program, calls these.
extern "C" void sanitizer_malloc_hook(const volatile void* /*memory*/, std::size_t /*size*/) {
    look("malloc");
}

extern "C" void sanitizer_free_hook(const volatile void* /*memory*/) { look("free"); }
