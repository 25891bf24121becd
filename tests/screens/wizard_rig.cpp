#include "tests/screens/wizard_rig.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "screens/screen.h"
#include "screens/screen_table.h"
#include "tests/screens/apply_double.h"
#include "ui/main_window.h"
#include "ui/window.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/install_profile.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/ending.h"
#include "wizard/terminal_session.h"

namespace {

/// Thrown out of the wizard when the script is over.
struct ScriptOver {};

void copy_text(char (&field)[256], const std::string& text) {
    std::strncpy(field, text.c_str(), sizeof field - 1);
}

void fill_interface_table(const std::vector<InterfaceFacts>& interfaces) {
    interface_table =
        static_cast<interf_addr*>(std::calloc(interface_table_size, sizeof(interf_addr)));
    interface_count = 0;
    for (const InterfaceFacts& facts : interfaces) {
        copy_text(interface_table[interface_count].name, facts.name);
        copy_text(interface_table[interface_count].address, facts.address);
        ++interface_count;
    }
}

void fill_relay_networks(const std::vector<NetworkFacts>& networks) {
    relay_network_list =
        static_cast<relay_network*>(std::calloc(relay_list_size, sizeof(relay_network)));
    relay_network_count = 0;
    for (const NetworkFacts& facts : networks) {
        relay_network& record = relay_network_list[relay_network_count++];
        record.network = strdup(facts.network.c_str());
        record.netmask = strdup(facts.netmask.c_str());
    }
}

void start_from_the_beginning(int state) {
    wizard_settings = WizardSettings{};
    screen_state = state;
    for (int each = 0; each < screen_count; ++each)
        screen_focus(each) = 0;
    apply_double = ApplyDouble{};
    select_install_profile();
    form_document_paths();
}

}  // namespace

WizardRig::WizardRig(int state, const RigSetup& setup) : terminal(setup.rows, setup.cols) {
    start_from_the_beginning(state);
    fill_interface_table(setup.interfaces);
    fill_relay_networks(setup.networks);
    check_terminal_size();
    draw_background();
    main_window = new Window(stdscr, nullptr);
    create_screens();
}

WizardRig::~WizardRig() {
    release_screens();
}

WizardEnd WizardRig::play(std::vector<Step> steps, const Caller& caller) {
    script.assign(steps.begin(), steps.end());
    waits.atKey = [this] { takeStep(); };
    WizardEnd end = WizardEnd::not_yet;
    try {
        end = run_screens();
    } catch (const ScriptOver&) {
        built_screens[screen_state]->hide();
        // It is built on each visit, and this one did not come to its end.
        built_screens[state_aliases].reset();
    }
    if (!script.empty())
        stop_test(caller, "the screens have ended before the last step");
    return end;
}

void WizardRig::resize(int rows, int cols) {
    terminal.resize(rows, cols);
    on_resize(SIGWINCH);
}

void WizardRig::takeStep() {
    for (;;) {
        if (script.empty())
            throw ScriptOver{};
        const Step step = script.front();
        script.pop_front();
        if (const auto* call = std::get_if<std::function<void()>>(&step)) {
            (*call)();
            continue;
        }
        if (const auto* key = std::get_if<Key>(&step)) {
            terminal.press(*key);
            return;
        }
        const auto& text = std::get<std::string>(step);
        terminal.type(text);
        if (!text.empty())
            return;
    }
}

void answer_domain(const std::string& domain) {
    std::snprintf(wizard_settings.primary_domain, sizeof wizard_settings.primary_domain, "%s",
                  domain.c_str());
}

std::vector<Step> operator+(std::vector<Step> first, const std::vector<Step>& then) {
    first.insert(first.end(), then.begin(), then.end());
    return first;
}

std::string without_blanks_at_end(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}
