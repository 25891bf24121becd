#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/emulator.h"
#include "tests/support/pty.h"

/// What a program has written in answer to something.
struct Burst {
    size_t bytes = 0;         ///< all of them
    double milliseconds = 0;  ///< from the cause to the byte that made the picture complete
};

/// A program in a terminal (TERM and the locale are this process's own), which is watched from
/// outside. It is killed when the object goes.
///
/// Every wait is for the program to rest, waiting for a key, and what it shows then is the complete
/// picture. A wait in vain for patience(), or for a program that has ended, throws
/// std::runtime_error with what the terminal shows.
class MeasuredProgram {
  public:
    /// Starts the program, a path, and waits for its first screen. A program that starts another
    /// one in its place, as strace -D, is measured from its own exec on. Throws std::system_error.
    explicit MeasuredProgram(std::vector<std::string> arguments, int rows = 24, int cols = 80);

    /// The first screen, from exec on.
    const Burst& firstScreen() const { return first; }

    Burst type(const std::string& bytes);

    /// The same, but waits until `text` is shown.
    Burst typeUntil(const std::string& bytes, const std::string& text);

    Burst resize(int rows, int cols);

    /// Throws std::runtime_error unless the terminal shows `text`.
    void expect(const std::string& text) const;

    /// Proportional set size in kB, of the program itself.
    double memory() const;

    /// Processor time in milliseconds that the program has used so far.
    double processorTime() const;

    pid_t pid() const { return child.pid; }

  private:
    /// Asked to end with its group, killed if it does not, and waited for.
    struct Child {
        Child() = default;
        ~Child();
        Child(const Child&) = delete;
        Child& operator=(const Child&) = delete;

        pid_t pid = -1;
    };

    Burst watch(double cause, const std::function<bool()>& complete);
    Burst watchUntilRest(double cause);
    [[noreturn]] void fail(const std::string& what) const;

    std::string name;
    Pty pty;
    Emulator emulator;
    Child child;
    Burst first;
};

/// Whether a program has done all that it had to and waits, for as long as it may take, for a key:
/// no signal or key is still to be answered, and what it has written is on its way to the terminal.
/// One that looks now and then whether something else is to do does not rest. proc(5) tells it, so
/// the program is not disturbed.
bool rests_for_key(pid_t program);

/// The path of a program, as a shell finds it by PATH. Throws std::runtime_error if it does not.
std::string find_program(const std::string& name);
