#pragma once

#include <vector>

#include "tests/support/curses_terminal.h"
#include "tests/support/waits.h"

struct Size {
    int rows;
    int cols;
};

/// The wizard after start-up: curses on a terminal of its own, a
/// host with four interfaces, and the screens that exist from the start, hidden. There can be only
/// one at a time; when it goes, everything that the process remembers is as before start-up. A test
/// that waits for a key that nobody types ends when patience() is over, by SIGALRM.
class ScreenSession {
  public:
    explicit ScreenSession(Size size = {24, 80});
    ~ScreenSession();
    ScreenSession(const ScreenSession&) = delete;
    ScreenSession& operator=(const ScreenSession&) = delete;

    /// Gives the terminal a new size and calls the handler that the signal would call.
    void resize(Size size);

    /// Reads the keys that curses or the terminal still holds, without showing anything.
    static std::vector<int> takeUnreadKeys();

    CursesTerminal terminal;
    KeyWaits waits;
};
