#include "wizard/screen_sequence.h"

#include "screens/alias_screen.h"
#include "screens/domain_screen.h"
#include "screens/listener_screen.h"
#include "screens/password_screen.h"
#include "screens/relay_screen.h"
#include "screens/sendmail_screen.h"
#include "screens/services_screen.h"
#include "wizard/base/screen_state.h"

namespace {

void (*const screen_table[screen_count])() = {
    password_screen_entry,  // 0
    domain_screen_entry,    // 1
    alias_screen_entry,     // 2
    listener_screen_entry,  // 3 WebAdmin
    listener_screen_entry,  // 4 SMTP
    services_screen_entry,  // 5
    listener_screen_entry,  // 6 POP3
    listener_screen_entry,  // 7 IMAP
    listener_screen_entry,  // 8 WebMail
    relay_screen_run,       // 9
    sendmail_screen_run,    // 10
};

}  // namespace

WizardEnd run_screens() {
    while (screen_state != state_end)
        screen_table[screen_state]();
    return WizardEnd::completed;
}
