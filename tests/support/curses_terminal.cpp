#include "tests/support/curses_terminal.h"

#include <fcntl.h>
#include <panel.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <iterator>
#include <stdexcept>
#include <vector>

#include "tests/support/curses_image.h"
#include "tests/support/deadline.h"
#include "tests/support/terminfo.h"

namespace {

/// Keeps the actions for the signals that curses would handle by itself, and puts them back.
class KeptSignalActions {
  public:
    KeptSignalActions() {
        for (size_t i = 0; i < std::size(signals); ++i)
            sigaction(signals[i], nullptr, &actions[i]);
    }
    ~KeptSignalActions() {
        for (size_t i = 0; i < std::size(signals); ++i)
            sigaction(signals[i], &actions[i], nullptr);
    }
    KeptSignalActions(const KeptSignalActions&) = delete;
    KeptSignalActions& operator=(const KeptSignalActions&) = delete;

  private:
    static constexpr int signals[] = {SIGINT, SIGTERM, SIGTSTP, SIGWINCH};
    struct sigaction actions[std::size(signals)];
};

/// The panel that the panel library puts under the first panel of each screen, for the standard
/// screen. The library never frees it.
PANEL* ground_panel_of_screen() {
    WINDOW* window = newwin(1, 1, 0, 0);
    PANEL* lowest = new_panel(window);
    bottom_panel(lowest);
    PANEL* ground = lowest->below;
    del_panel(lowest);
    delwin(window);
    return ground;
}

/// Keeps the ground panel of a screen that is gone from counting as lost, so that the leak checker
/// can be trusted with the panels that the code under test forgets.
void keep_ground_panel(PANEL* ground) {
    // Never destroyed: the leak checker looks after the destructors of static objects have run.
    static auto& ground_panels = *new std::vector<PANEL*>;
    ground_panels.push_back(ground);
    // Forgotten panels that were shown hang on it.
    ground->above = nullptr;
}

std::string change_locale(const std::string& locale) {
    std::string before = std::setlocale(LC_CTYPE, nullptr);
    if (std::setlocale(LC_CTYPE, locale.c_str()) == nullptr)
        throw std::runtime_error("there is no locale " + locale);
    return before;
}

}  // namespace

CursesTerminal::CursesTerminal(int rows, int cols, const std::string& term,
                               const std::string& locale)
    : locale_before(change_locale(locale)),
      pty(rows, cols),
      reader(pty, rows, cols, term),
      stream(nullptr, std::fclose) {
    unsetenv("LINES");
    unsetenv("COLUMNS");
    startCurses(term);
}

void CursesTerminal::startCurses(const std::string& term) {
    if (!terminal_known(term))
        throw std::runtime_error("there is no terminfo entry " + term);
    const KeptSignalActions kept;
    Descriptor program_side = pty.openProgramSide();
    stream.reset(fdopen(program_side.get(), "r+"));
    if (stream == nullptr)
        throw std::runtime_error("no stream for the terminal");
    program_side.release();
    input_before =
        Descriptor(checked(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1), "fcntl"));
    checked(dup2(fileno(stream.get()), STDIN_FILENO), "dup2");
    screen = newterm(term.c_str(), stream.get(), stream.get());
    if (screen == nullptr)
        throw std::runtime_error("curses cannot use the terminal " + term);
    start_color();
    cbreak();
    noecho();
    keypad(stdscr, TRUE);
    init_pair(1, COLOR_WHITE, COLOR_BLACK);
    init_pair(2, COLOR_WHITE, COLOR_BLUE);
    init_pair(3, COLOR_BLACK, COLOR_RED);
}

CursesTerminal::~CursesTerminal() {
    PANEL* ground = ground_panel_of_screen();
    if (!isendwin())
        endwin();
    delscreen(screen);
    keep_ground_panel(ground);
    dup2(input_before.get(), STDIN_FILENO);
    std::setlocale(LC_CTYPE, locale_before.c_str());
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
    type(reader.keyBytes(key));
}

ScreenImage CursesTerminal::image() {
    ScreenImage image = read_curses_screen();
    image.setCursor({image.cursor().position, reader.image().cursor().visible});
    return image;
}
