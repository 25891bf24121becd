#pragma once

#include "tests/support/descriptor.h"

/// While it lives, standard input is the terminal that curses was last started on, so that the
/// program waits for the keys that are typed there.
class KeyboardInput {
  public:
    KeyboardInput();
    ~KeyboardInput();
    KeyboardInput(const KeyboardInput&) = delete;
    KeyboardInput& operator=(const KeyboardInput&) = delete;

  private:
    Descriptor input_before;
};
