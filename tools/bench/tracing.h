#pragma once

#include <string>
#include <vector>

#include "tests/support/files.h"
#include "tools/bench/measured_program.h"
#include "tools/bench/trace_log.h"

/// A program under strace, started in a terminal of 24 lines and 80 columns.
class TracedProgram {
  public:
    /// `options` are strace's that choose what it writes down and how.
    TracedProgram(const std::vector<std::string>& options, const std::vector<std::string>& command);

    MeasuredProgram& operator*() { return program; }
    MeasuredProgram* operator->() { return &program; }

    /// The log so far. A call of a program that rests is in it if it has ended.
    Trace trace() const;

  private:
    std::string log() const { return directory / "calls"; }

    TempDir directory;
    MeasuredProgram program;
};

/// What strace needs to be told so that terminal_writes() can count.
extern const std::vector<std::string> options_for_writes;

/// How many of the calls, of a log with what descriptors are open on, put bytes on a terminal.
int terminal_writes(const Trace& trace);
