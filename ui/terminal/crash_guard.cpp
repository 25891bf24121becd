#include "ui/terminal/crash_guard.h"

#include <curses.h>
#include <term.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <initializer_list>
#include <iterator>

#include "ui/terminal/terminal_output.h"
#include "ui/terminal/terminals.h"
#include "wizard/system/signal_gate.h"

namespace {

// Those that end a program by default on every system and that the wizard neither holds nor
// ignores. What SIGPOLL, SIGPWR and the like do differs.
const int deadly_signals[] = {SIGSEGV, SIGBUS,  SIGILL,  SIGFPE,  SIGABRT,   SIGQUIT, SIGSYS,
                              SIGTRAP, SIGXCPU, SIGUSR1, SIGUSR2, SIGVTALRM, SIGPROF, SIGALRM};

// What undoes curses' changes of the screen, put together in advance.
char farewell[256];
std::size_t farewell_length = 0;

// The process that has the terminal in curses' hands; its children have not.
pid_t guarded_process = 0;

// A stack that has overflown has no room for a handler.
alignas(16) char stack_for_handler[64 * 1024];

// In the order of `deadly_signals`.
struct sigaction actions_before[std::size(deadly_signals)];

int add_to_farewell(int character) {
    if (farewell_length < sizeof(farewell))
        farewell[farewell_length++] = static_cast<char>(character);
    return character;
}

void on_crash(int signal_number) {
    if (getpid() == guarded_process) {
        write_in_time(farewell, farewell_length);
        give_terminals_back();
    }
    // The first process of a container is not ended by a signal that takes its default course.
    if (getpid() == 1)
        _exit(128 + signal_number);
    // Raised again, it is delivered when this handler has returned, to whoever had it before.
    for (std::size_t i = 0; i < std::size(deadly_signals); ++i) {
        if (deadly_signals[i] == signal_number)
            sigaction(signal_number, &actions_before[i], nullptr);
    }
    raise(signal_number);
}

}  // namespace

void guard_terminal_against_crashes() {
    // The keypad as it was, the original colours, plain text, a visible cursor, the normal screen.
    // Asked for them by name, tigetstr(3), curses would make an index of all names and keep it.
    for (const char* sequence :
         {keypad_local, orig_pair, exit_attribute_mode, cursor_normal, exit_ca_mode}) {
        if (sequence != nullptr)
            tputs(sequence, 1, add_to_farewell);
    }
    guarded_process = getpid();
    stack_t stack{};
    stack.ss_sp = stack_for_handler;
    stack.ss_size = sizeof(stack_for_handler);
    sigaltstack(&stack, nullptr);
    struct sigaction action {};
    action.sa_handler = on_crash;
    action.sa_flags = SA_ONSTACK;
    sigfillset(&action.sa_mask);
    for (std::size_t i = 0; i < std::size(deadly_signals); ++i) {
        // Ignored, it would leave a wizard that goes on without its screen.
        if (!is_ignored(deadly_signals[i]))
            sigaction(deadly_signals[i], &action, &actions_before[i]);
    }
}
