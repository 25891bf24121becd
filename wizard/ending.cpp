#include "wizard/ending.h"

#include <cstdio>
#include <cstdlib>

#include "apply/progress_list.h"
#include "apply/server_process.h"
#include "screens/screen_table.h"
#include "ui/main_window.h"
#include "ui/message_dialogs.h"
#include "ui/terminal/terminal.h"
#include "ui/window.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/wizard_settings.h"

int end_wizard(WizardEnd end) {
    if (end == WizardEnd::completed) {
        close_terminal();
        print_summary();
        release_screens();
        return 0;
    }
    if (end == WizardEnd::out_of_memory) {
        close_terminal();
        return 0;
    }
    server_stop();
    release_screens();
    close_terminal();
    if (end == WizardEnd::without_login) return 1;
    std::puts("\nTELUMA Configuration Wizard Aborted!");
    return 0;
}

int refuse_terminal() {
    close_terminal();
    std::puts("Please enlarge your window so it will have at least 72 columns and 20 lines!");
    release_screens();
    return 0;
}

void abort_wizard(int /*signal_number*/) {
    release_screens();
    server_stop();
    close_terminal_in_time("\nTELUMA Configuration Wizard Aborted!\n");
    std::exit(1);
}

void print_summary() {
    const WizardSettings& settings = wizard_settings;
    std::puts("\nYour first installation steps are now completed. You have created the");
    std::printf("domain named '%s' within TELUMA.\n", settings.primary_domain);
    std::puts("To manage/configure TELUMA, first you must start its service (read the");
    std::printf("%s file on how to start the TELUMA service),\n", readme_path);
    std::puts("and then login using the 'admin' username and the password you have");
    std::puts("previously set, by accessing one of the following URLs:");
    const int chosen = settings.webadmin_interface;
    for (int i = 1; i < interface_count; ++i) {
        if (chosen == 0 || chosen == i)
            std::printf("\thttp://%s:%d\n", interface_table[i].address, settings.webadmin_port);
    }
    if (chosen == 0) std::puts("");
}

void release_screens() {
    progress_hide_all();
    closePending();
    destroy_screens();
    release_networks();
    delete main_window;
    main_window = nullptr;
}
