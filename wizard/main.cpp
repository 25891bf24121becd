#include "screens/screen_table.h"
#include "wizard/base/host_facts.h"
#include "wizard/ending.h"
#include "wizard/start_up.h"
#include "wizard/system/private_directory.h"
#include "wizard/terminal_session.h"

int main() {
    fill_standard_descriptors();
    hold_signals();
    prepare_process();
    enter_private_directory();
    discover_host();
    if (!start_curses()) return 1;
    if (!check_terminal_size()) return refuse_terminal();
    make_main_window();
    silence_standard_error();
    if (!is_superuser()) return refuse_user();
    return end_wizard(run_screens());
}
