#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "tests/support/pty.h"

/// What a program has written in answer to something.
struct Burst {
    std::string bytes;
    double milliseconds = 0;  ///< from the cause until the last byte came
};

/// A program in a terminal of 24 lines and 80 columns (TERM and the locale are this process's own),
/// which is watched from outside. It is killed when the object goes.
class MeasuredProgram {
  public:
    /// Starts the program, found by PATH. Throws std::system_error.
    explicit MeasuredProgram(std::vector<std::string> arguments, int rows = 24, int cols = 80);
    ~MeasuredProgram();
    MeasuredProgram(const MeasuredProgram&) = delete;
    MeasuredProgram& operator=(const MeasuredProgram&) = delete;

    /// The first screen, from exec on.
    const Burst& firstScreen() const { return first_screen; }

    Burst type(const std::string& bytes);

    /// The same, but waits until `text` has been written, for at most half a minute.
    Burst typeUntil(const std::string& bytes, const std::string& text);

    Burst resize(int rows, int cols);

    /// Proportional set size in kB, of the program itself.
    long memory() const;

    /// Processor time in milliseconds that the program has used so far.
    double processorTime() const;

    pid_t pid() const { return child; }

  private:
    /// Takes what is written next; false when nothing comes for `milliseconds`.
    bool takeOutput(Burst& burst, double since, int milliseconds);

    double start(std::vector<std::string>& arguments);
    Burst burst(double since);

    Pty pty;
    pid_t child = -1;
    Burst first_screen;
};
