#include "wizard/summary.h"

#include <cstdio>

#include "wizard/base/host_facts.h"
#include "wizard/base/wizard_settings.h"

void print_summary() {
    const WizardSettings& settings = wizard_settings;
    std::puts("\nYour first installation steps are now completed. You have created the");
    std::printf("domain named '%s' within TELUMA.\n", settings.primary_domain);
    std::printf("To manage/configure TELUMA, first you must start its service (read the\n");
    std::printf("%s file on how to start the TELUMA service),\n", readme_path);
    std::printf("and then login using the 'admin' username and the password you have\n");
    std::printf("previously set, by accessing one of the following URLs:\n");
    if (settings.webadmin_interface == 0) {
        for (int i = 1; i < interface_count; ++i)
            std::printf("\thttp://%s:%d\n", interface_table[i].address, settings.webadmin_port);
    } else {
        std::printf("\thttp://%s:%d", interface_table[settings.webadmin_interface].address,
                    settings.webadmin_port);
    }
    std::printf("\n");
}
