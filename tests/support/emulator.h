#pragma once

#include <memory>
#include <string>

#include "tests/support/screen_image.h"

/// A key of a terminal's keyboard; what some send follows the mode that the program has set.
enum class Key {
    tab,
    enter,
    space,
    escape,
    up,
    down,
    left,
    right,
    home,
    end,
    page_up,
    page_down,
    insert,
    del,
    backspace,       // sends 127, as most terminals do
    backspace_as_8,  // sends 8, as the others do
    ctrl_c,
};

/// A terminal without a window, played by libvterm: UTF-8, alternate screen and line drawing
/// included; bold does not make a colour bright.
class Emulator {
  public:
    /// `term`, a TERM value, matters where kinds of terminal give one sequence different meanings.
    Emulator(int rows, int cols, const std::string& term);
    ~Emulator();

    /// Interprets output; a sequence may be cut anywhere between two calls.
    void feed(const std::string& bytes);

    void resize(int rows, int cols);

    ScreenImage image() const;

    /// Whether the program shows the alternate screen instead of the normal one.
    bool alternateScreen() const;

    /// What a key sends in the modes that are set now.
    std::string keyBytes(Key key);

    /// What the terminal has answered since the last call; to be sent to the program as if typed.
    std::string takeReplies();

  private:
    struct Terminal;
    std::unique_ptr<Terminal> terminal;
};
