#include <curses.h>
#include <term.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

#include "ui/terminal/terminal_record.h"
#include "wizard/system/signal_gate.h"

namespace {

void on_crash(int signal_number) {
    if (getpid() == wizard_terminal.guarded_process) {
        write_in_time({wizard_terminal.farewell, wizard_terminal.farewell_length});
        give_modes_back();
    }
    // The first process of a container is not ended by a signal that takes its default course.
    if (getpid() == 1) _exit(128 + signal_number);
    // Raised again, it is delivered when this handler has returned, to whoever had it before.
    sigaction(signal_number, &wizard_terminal.actions_before[signal_number], nullptr);
    raise(signal_number);
}

}  // namespace

void guard_against_crashes() {
    Terminal& terminal = wizard_terminal;
    terminal.guarded_process = getpid();
    // A stack that has overflown has no room for a handler.
    stack_t stack{};
    stack.ss_sp = terminal.handler_stack;
    stack.ss_size = sizeof(terminal.handler_stack);
    sigaltstack(&stack, nullptr);
    struct sigaction action {};
    action.sa_handler = on_crash;
    action.sa_flags = SA_ONSTACK;
    sigfillset(&action.sa_mask);
    // Those that end a program by default on every system and that the wizard neither holds nor
    // ignores. What SIGPOLL, SIGPWR and the like do differs.
    for (const int deadly : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGQUIT, SIGSYS, SIGTRAP,
                             SIGXCPU, SIGUSR1, SIGUSR2, SIGVTALRM, SIGPROF, SIGALRM}) {
        // Ignored, it would leave a wizard that goes on without its screen.
        if (!is_ignored(deadly)) sigaction(deadly, &action, &terminal.actions_before[deadly]);
    }
}

void prepare_farewell() {
    // The keypad as it was, the original colours, plain text, a visible cursor, the normal screen.
    // Asked for them by name, tigetstr(3), curses would make an index of all names and keep it.
    std::string farewell;
    for (const char* capability :
         {keypad_local, orig_pair, exit_attribute_mode, cursor_normal, exit_ca_mode})
        farewell += description(capability);
    Terminal& terminal = wizard_terminal;
    terminal.farewell_length = farewell.copy(terminal.farewell, sizeof(terminal.farewell));
}
