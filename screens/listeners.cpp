#include "screens/listeners.h"

#include "wizard/base/screen_state.h"

const Listener listeners[listener_count] = {
    {state_webadmin, "Select WebAdmin Interface", "9000",
     "Selecting 127.0.0.1 will enable access to WebAdmin interface \tonly from this machine and "
     "not remotely from other machines. Are you sure?",
     &WizardSettings::webadmin_interface, &WizardSettings::webadmin_port, true},
    {state_smtp, "Select SMTP Interface", "25",
     "Selecting 127.0.0.1 will enable access to SMTP service \tonly from this machine and not "
     "remotely from other machines. Are you sure?",
     &WizardSettings::smtp_interface, &WizardSettings::smtp_port, false},
    {state_pop3, "Select POP3 Interface", "110",
     "Selecting 127.0.0.1 will enable access to POP3 service\tonly from this machine and not "
     "remotely from other machines. Are you sure?",
     &WizardSettings::pop3_interface, &WizardSettings::pop3_port, false},
    {state_imap, "Select IMAP Interface", "143",
     "Selecting 127.0.0.1 will enable access to IMAP service \tonly from this machine and not "
     "remotely from other machines. Are you sure?",
     &WizardSettings::imap_interface, &WizardSettings::imap_port, false},
    {state_webmail, "Select WebMail Interface", "80",
     "Selecting 127.0.0.1 will enable access to WebMail service \tonly from this machine and not "
     "remotely from other machines. Are you sure?",
     &WizardSettings::webmail_interface, &WizardSettings::webmail_port, false},
};

int listener_index(int state) {
    int index = 0;
    while (index < listener_count - 1 && listeners[index].state != state)
        ++index;
    return index;
}
