#include <csignal>
#include <initializer_list>

#include "screens/screen_table.h"
#include "ui/terminal/terminal_output.h"
#include "wizard/abort_wizard.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/install_profile.h"
#include "wizard/base/tel_help.h"
#include "wizard/release_screens.h"
#include "wizard/start_up.h"
#include "wizard/summary.h"
#include "wizard/system/private_directory.h"
#include "wizard/system/resource_limits.h"
#include "wizard/system/signal_gate.h"
#include "wizard/terminal_session.h"

int main() {
    fill_standard_descriptors();
    hold_signal(SIGWINCH, on_resize);
    for (const int signal_number : {SIGINT, SIGTERM, SIGHUP})
        hold_signal(signal_number, abort_wizard);
    // Ignored, it was started by somebody who could not make it go on.
    if (!is_ignored(SIGTSTP))
        hold_signal(SIGTSTP, suspend_wizard);
    hold_signal(SIGCONT, continue_wizard);
    // A write fails instead, and with it the step.
    for (const int signal_number : {SIGPIPE, SIGXFSZ})
        ignore_signal(signal_number);
    keep_track_of_children();
    keep_open_files_from_children();
    // The connection to a port that is taken is never closed, however often the port is tried.
    change_limit(RLIMIT_NOFILE, RLIM_INFINITY);
    // It would hold the passwords.
    change_limit(RLIMIT_CORE, 0);
    forbid_core_dumps();
    enter_private_directory();
    discover_networks();
    select_install_profile();
    form_document_paths();
    start_curses();
    silence_standard_error();
    if (!is_superuser())
        return refuse_user();
    create_screens();
    if (run_screens() == WizardEnd::left)
        exit_wizard();
    close_screen();
    print_summary();
    release_screens();
    return 0;
}
