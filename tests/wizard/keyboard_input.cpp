#include "tests/wizard/keyboard_input.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace {

bool is_program_side(int descriptor) {
    return isatty(descriptor) == 1 && ptsname(descriptor) == nullptr;
}

// Curses keeps the terminal open, but does not tell where; the process has no other one above its
// standard descriptors.
int terminal_of_curses() {
    constexpr int more_than_a_test_opens = 1024;
    for (int descriptor = STDERR_FILENO + 1; descriptor < more_than_a_test_opens; ++descriptor) {
        if (is_program_side(descriptor))
            return descriptor;
    }
    throw std::runtime_error("curses has no terminal open");
}

}  // namespace

KeyboardInput::KeyboardInput() {
    const int terminal = terminal_of_curses();
    input_before =
        Descriptor(checked(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1), "fcntl"));
    checked(dup2(terminal, STDIN_FILENO), "dup2");
}

KeyboardInput::~KeyboardInput() {
    dup2(input_before.get(), STDIN_FILENO);
}
