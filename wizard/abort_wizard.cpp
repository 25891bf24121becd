#include "wizard/abort_wizard.h"

#include <cstdio>
#include <cstdlib>

#include "apply/server_process.h"
#include "ui/terminal/terminal.h"
#include "wizard/release_screens.h"

void abort_wizard(int /*signal_number*/) {
    release_screens();
    server_stop();
    close_terminal_in_time("\nTELUMA Configuration Wizard Aborted!\n");
    std::exit(1);
}

void exit_wizard() {
    server_stop();
    release_screens();
    close_terminal();
    std::puts("\nTELUMA Configuration Wizard Aborted!");
    std::exit(0);
}
