#pragma once

#include <termios.h>

#include <csignal>
#include <cstdio>
#include <functional>
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

/// Remembers the terminals and the modes to go back to, once the wizard is in the foreground.
/// Curses sets the modes of one terminal, perhaps not that of the keys, and waits for all output,
/// perhaps for ever, before it gives them back. So the wizard sees to all of them itself.
void remember_terminals();

/// Takes the modes that curses has set for the wizard's own, with echo off and keys one by one
/// wherever curses didn't reach, and sets them.
void keep_modes();

/// False while one of the terminals has somebody else in its foreground.
bool is_in_foreground();

/// Sets the remembered modes without waiting for output, and throws away what has been typed for
/// the wizard and not been read. In the background modes of somebody else's stay, and so does the
/// input. May be called as often as one likes; async-signal-safe.
void give_modes_back();

/// The terminal that tells the size: standard output, else standard error, as curses has it, else
/// standard input; -1 if none of them is a terminal.
int size_terminal();

/// For when curses asks for the size by itself, newterm(3X) and, after endwin(3X), refresh(3X):
/// meanwhile the environment prescribes what the terminal tells, or in place of a size that no
/// terminal has the present one, or 24 by 80. What the user has it prescribe stays, if it can be
/// used, and is removed for good if not.
void with_sound_size(const std::function<void()>& ask);

/// A stream for curses to write to; standard output where nothing can be kept back.
std::FILE* stream_for_curses();

/// From now on what curses says waits for send_output(), where it can.
void keep_output_back();

/// Writes as much of the text as standard output takes within half a second; whether that was all.
/// Async-signal-safe.
bool write_in_time(std::string_view text);

/// Teaches curses what keyboards send beside what the terminal's description has: many a terminal
/// is not quite the one that TERM names, and what it sends would be typed into a field, unseen in
/// one for a password. A cursor key, backspace or Enter of the description stays what it is.
void learn_key_sequences();

/// From now on a crash (a stack that has overflown included) or any other signal that ends a
/// program by default on every system, as SIGQUIT, first leaves the terminal as it was, or gives
/// its modes back at least where it takes no output. Then the signal takes its course; process 1,
/// which the kernel would have go on, ends with status 128 + n. An ignored signal stays so. A child
/// process only ends. The handler is async-signal-safe (signal-safety(7)).
void guard_against_crashes();
