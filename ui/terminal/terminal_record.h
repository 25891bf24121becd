#pragma once

#include <termios.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "ui/terminal/output_thinner.h"
#include "wizard/base/descriptor.h"

/// What only the files of this folder know: the record of the terminal, and their parts of the
/// work.

constexpr int no_descriptor = -1;
constexpr int flags_unchanged = -1;

/// One of the terminals that the wizard was started on.
struct StandardTerminal {
    int descriptor = no_descriptor;  ///< `copy`, or the standard one where there is no room for it
    Descriptor copy;                 ///< anything may become of the standard one
    termios before{};                ///< its modes when the wizard came
    termios kept{};                  ///< and while the wizard is there
};

/// All that is remembered of the terminal; `wizard_terminal = {}` forgets it.
struct Terminal {
    StandardTerminal standard[3];  ///< by their standard descriptors
    bool keeps_modes = false;

    /// Curses' own, which leads to the store; none where curses writes by itself.
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream{nullptr, std::fclose};
    Descriptor store;
    bool thins = false;
    OutputThinner thinner{};

    std::string frame;                                          ///< what is being written
    std::size_t frame_written = 0;                              ///< how much of that has been
    bool is_in_write = false;                                   ///< nobody knows how much now
    volatile std::sig_atomic_t flags_before = flags_unchanged;  ///< of standard output

    std::string description;    ///< what description() is collecting
    pid_t guarded_process = 0;  ///< whose crash gives the terminal back
    char farewell[256] = {};    ///< what it says then
    std::size_t farewell_length = 0;
    struct sigaction actions_before[32];  ///< by signal
    alignas(16) char handler_stack[64 * 1024];
};

extern Terminal wizard_terminal;

/// What the terminal's description has for a capability, ready to be written; empty for null.
std::string description(const char* capability);

/// Once the wizard is in the foreground, remembers the terminals and the modes to go back to.
/// Curses knows one terminal only, and would give its modes back when all output has been taken.
void remember_terminals();

/// Takes what curses has set for the wizard's own modes, and sets those, with echo off and keys one
/// by one, on all of the terminals.
void keep_modes();

/// False while one of the terminals has somebody else in its foreground.
bool is_in_foreground();

/// Sets the remembered modes without waiting for output, and throws away what was typed for the
/// wizard. In the background others' modes and the input stay. Async-signal-safe.
void give_modes_back();

/// Writes as much of the text as standard output takes within half a second; whether that was all.
/// Async-signal-safe.
bool write_in_time(std::string_view text);

/// Teaches curses what keyboards send beside what the terminal's description has, and what would be
/// typed into a field, unseen in one for a password: many a terminal is not quite what TERM says. A
/// cursor key, backspace or Enter of the description stays what it is.
void learn_key_sequences();

/// From now on a crash, stack overflow included, or any other signal that ends a program by default
/// on every system, as SIGQUIT, first leaves the terminal as it was; at least its modes, where it
/// takes no output. Then the signal takes its course; process 1, which the kernel would have go on,
/// ends with status 128 + n. Ignored signals stay so; a child process only ends. The handler is
/// async-signal-safe. To be called once the terminals are remembered.
void guard_against_crashes();

/// Teaches the guard what to say to leave the screen. To be called when curses has started, before
/// anything is drawn.
void prepare_farewell();
