#include "tests/screens/listener_rig.h"

#include <algorithm>
#include <iterator>

#include "tests/support/emulator.h"
#include "wizard/base/screen_state.h"

void PrintTo(const ListenerFacts& listener, std::ostream* out) {
    *out << listener.name;
}

const ListenerFacts& webadmin_facts() {
    static const ListenerFacts facts = {"WebAdmin",
                                        state_webadmin,
                                        "Select WebAdmin Interface",
                                        9000,
                                        &WizardSettings::webadmin_interface,
                                        &WizardSettings::webadmin_port,
                                        state_smtp,
                                        state_aliases};
    return facts;
}

std::vector<ListenerFacts> service_facts() {
    return {{"SMTP", state_smtp, "Select SMTP Interface", 25, &WizardSettings::smtp_interface,
             &WizardSettings::smtp_port, state_services, state_webadmin},
            {"POP3", state_pop3, "Select POP3 Interface", 110, &WizardSettings::pop3_interface,
             &WizardSettings::pop3_port, state_imap, state_services},
            {"IMAP", state_imap, "Select IMAP Interface", 143, &WizardSettings::imap_interface,
             &WizardSettings::imap_port, state_webmail, state_pop3},
            {"WebMail", state_webmail, "Select WebMail Interface", 80,
             &WizardSettings::webmail_interface, &WizardSettings::webmail_port, state_relay,
             state_imap}};
}

std::vector<ListenerFacts> all_listeners() {
    std::vector<ListenerFacts> listeners = service_facts();
    listeners.insert(listeners.begin(), webadmin_facts());
    return listeners;
}

ListenerRig::ListenerRig(const ListenerFacts& listener, const RigSetup& setup)
    : WizardRig(listener.state, setup), facts(listener) {
    std::fill(std::begin(wizard_settings.service_enabled),
              std::end(wizard_settings.service_enabled), 1);
}

bool ListenerRig::cursorInPort(int row, int length) {
    const Cursor cursor = image().cursor();
    return cursor.visible && cursor.position == Position{10 + row, 46 + length};
}

std::string ListenerRig::textAt(int row, int col, int cols) {
    return without_blanks_at_end(image().region(10 + row, col, 1, cols).rowText(0));
}

std::vector<Step> answer_listener(int down, const std::string& port) {
    std::vector<Step> steps(static_cast<size_t>(down), Key::down);
    steps.emplace_back("\t\x7f\x7f\x7f\x7f\x7f" + port + "\t");
    steps.emplace_back(Key::enter);
    return steps;
}
