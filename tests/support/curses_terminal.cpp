#include "tests/support/curses_terminal.h"

#include <fcntl.h>
#include <panel.h>
#include <poll.h>
#include <term.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <utility>
#include <vector>

#include "tests/support/wait_until.h"

namespace {

/// Keeps the actions for the signals that curses would handle by itself, and puts them back.
class KeptSignalActions {
  public:
    KeptSignalActions() {
        for (auto& [signal, action] : actions) sigaction(signal, nullptr, &action);
    }
    ~KeptSignalActions() {
        for (const auto& [signal, action] : actions) sigaction(signal, &action, nullptr);
    }

  private:
    std::map<int, struct sigaction> actions{
        {SIGINT, {}}, {SIGTERM, {}}, {SIGTSTP, {}}, {SIGWINCH, {}}};
};

/// Keeps the panel that the panel library puts under the first one, and never frees, from counting
/// as lost when its screen goes, so that the leak checker can be trusted with forgotten panels.
void keep_ground_panel() {
    WINDOW* window = newwin(1, 1, 0, 0);
    PANEL* lowest = new_panel(window);
    bottom_panel(lowest);
    // Never destroyed: the leak checker looks after the destructors of static objects have run.
    static auto& ground_panels = *new std::vector<PANEL*>;
    ground_panels.push_back(lowest->below);
    del_panel(lowest);
    delwin(window);
    // Forgotten panels that were shown hang on it.
    ground_panels.back()->above = nullptr;
}

/// Starting curses on a name that is not known loses memory.
bool terminal_known(const std::string& term) {
    int reason = 0;
    if (setupterm(term.c_str(), STDERR_FILENO, &reason) != OK) return false;
    del_curterm(cur_term);
    return true;
}

std::string change_locale(const std::string& locale) {
    std::string before = std::setlocale(LC_CTYPE, nullptr);
    if (std::setlocale(LC_CTYPE, locale.c_str()) == nullptr)
        throw std::runtime_error("there is no locale " + locale);
    return before;
}

}  // namespace

/// Lets code under test in this process write as much as it likes. The thread lets no signal in:
/// they are for the test's own.
void CursesTerminal::startReader() {
    Pipe pipe = make_pipe();
    readerGoesOn = std::move(pipe.write_end);
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    reader =
        std::async(std::launch::async, [this, end = std::move(pipe.read_end)] { readUntil(end); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void CursesTerminal::readUntil(const Descriptor& end) {
    pollfd waited[] = {{pty.descriptor(), POLLIN, 0}, {end.get(), POLLIN, 0}};
    while (waited[1].revents == 0) {
        poll(waited, 2, -1);
        lockAndAbsorb();
    }
}

std::unique_lock<std::mutex> CursesTerminal::lockAndAbsorb() {
    std::unique_lock<std::mutex> lock(mutex);
    const std::string news = pty.read();
    output += news;
    emulator.feed(news);
    pty.write(emulator.takeReplies());
    return lock;
}

CursesTerminal::CursesTerminal(int rows, int cols, const std::string& term,
                               const std::string& locale)
    : localeBefore(change_locale(locale)),
      pty(rows, cols),
      emulator(rows, cols, term),
      stream(nullptr, std::fclose) {
    startReader();
    unsetenv("LINES");
    unsetenv("COLUMNS");
    startCurses(term);
}

void CursesTerminal::startCurses(const std::string& term) {
    if (!terminal_known(term)) throw std::runtime_error("there is no terminfo entry " + term);
    const KeptSignalActions kept;
    Descriptor program_side = pty.openProgramSide();
    stream.reset(fdopen(program_side.get(), "r+"));
    if (stream == nullptr) throw std::runtime_error("no stream for the terminal");
    program_side.release();
    inputBefore =
        Descriptor(checked(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1), "fcntl"));
    checked(dup2(fileno(stream.get()), STDIN_FILENO), "dup2");
    screen = newterm(term.c_str(), stream.get(), stream.get());
    if (screen == nullptr) throw std::runtime_error("curses cannot use the terminal " + term);
    start_color();
    cbreak();
    noecho();
    keypad(stdscr, TRUE);
    init_pair(1, COLOR_WHITE, COLOR_BLACK);
    init_pair(2, COLOR_WHITE, COLOR_BLUE);
    init_pair(3, COLOR_BLACK, COLOR_RED);
}

CursesTerminal::~CursesTerminal() {
    keep_ground_panel();
    if (!isendwin()) endwin();
    delscreen(screen);
    dup2(inputBefore.get(), STDIN_FILENO);
    std::setlocale(LC_CTYPE, localeBefore.c_str());
}

void CursesTerminal::type(const std::string& bytes) {
    const Deadline deadline;
    for (size_t typed = 0; typed < bytes.size();) {
        typed += pty.write(bytes.substr(typed));
        if (deadline.passed())
            throw std::runtime_error("more was typed ahead than a terminal keeps");
    }
}

void CursesTerminal::press(Key key) {
    const auto lock = lockAndAbsorb();
    type(emulator.keyBytes(key));
}

ScreenImage CursesTerminal::image() {
    const auto lock = lockAndAbsorb();
    return emulator.image();
}

std::string CursesTerminal::outputBytes() {
    const auto lock = lockAndAbsorb();
    return output;
}

bool CursesTerminal::alternateScreen() {
    const auto lock = lockAndAbsorb();
    return emulator.alternateScreen();
}

void CursesTerminal::resize(int rows, int cols) {
    const auto lock = lockAndAbsorb();
    emulator.resize(rows, cols);
    pty.resize(rows, cols);
}
