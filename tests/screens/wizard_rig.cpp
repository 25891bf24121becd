#include "tests/screens/wizard_rig.h"

#include <panel.h>

#include <csignal>
#include <cstdlib>
#include <cstring>

#include "apply/apply_sequence.h"
#include "screens/screen.h"
#include "screens/screen_table.h"
#include "tests/support/frame.h"
#include "ui/main_window.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/ending.h"
#include "wizard/terminal_session.h"

ApplyDouble apply_double;

WizardEnd apply_configuration() {
    ++apply_double.calls;
    apply_double.sendmail_wrapper = wizard_settings.sendmail_wrapper;
    apply_double.state = screen_state;
    apply_double.shows_nothing = panel_above(nullptr) == nullptr;
    screen_state = apply_double.leads_to;
    if (screen_state == state_end) return WizardEnd::completed;
    screen_focus(screen_state == state_aliases ? state_domain : screen_state) = 0;
    return apply_double.end;
}

namespace {

/// Thrown out of the wizard when the script is over.
struct ScriptOver {};

void fill_interface_table(const TextPairs& interfaces) {
    interface_table =
        static_cast<interf_addr*>(std::calloc(interface_table_size, sizeof(interf_addr)));
    interface_count = 0;
    for (const auto& [name, address] : interfaces) {
        interf_addr& record = interface_table[interface_count++];
        name.copy(record.name, sizeof record.name - 1);
        address.copy(record.address, sizeof record.address - 1);
    }
}

void fill_relay_networks(const TextPairs& networks) {
    relay_network_list =
        static_cast<relay_network*>(std::calloc(relay_list_size, sizeof(relay_network)));
    relay_network_count = 0;
    for (const auto& [network, netmask] : networks) {
        relay_network& record = relay_network_list[relay_network_count++];
        record.network = strdup(network.c_str());
        record.netmask = strdup(netmask.c_str());
    }
}

}  // namespace

WizardRig::WizardRig(int state, const RigSetup& setup)
    : terminal(setup.size.rows, setup.size.cols) {
    wizard_settings = {};
    screen_place = {};
    screen_state = state;
    apply_double = {};
    discover_host();
    release_networks();
    fill_interface_table(setup.interfaces);
    fill_relay_networks(setup.networks);
    check_terminal_size();
    draw_background();
    main_window = new Window(stdscr, nullptr);
    built_screens[state_password] = password_screen_build(state_password);
    built_screens[state_password]->hide();
}

WizardRig::~WizardRig() { release_screens(); }

WizardEnd WizardRig::play(const std::vector<Step>& steps, const Caller& caller) {
    WizardEnd end = WizardEnd::not_yet;
    playWith([&end] { end = run_screens(); }, steps, caller);
    if (end == WizardEnd::not_yet && built_screens[screen_state] != nullptr)
        built_screens[screen_state]->hide();
    // It is built on each visit, and this one did not come to its end.
    built_screens[state_aliases].reset();
    return end;
}

void WizardRig::playWith(const std::function<void()>& work, const std::vector<Step>& steps,
                         const Caller& caller) {
    script.assign(steps.begin(), steps.end());
    waits.atKey = [this] { takeStep(); };
    try {
        work();
    } catch (const ScriptOver&) {
    }
    if (!script.empty()) stop_test(caller, "the screens have ended before the last step");
}

void WizardRig::resize(const Size& size) {
    terminal.resize(size.rows, size.cols);
    on_resize(SIGWINCH);
}

std::string WizardRig::words() { return words_in_frame(image()) + " "; }

void WizardRig::takeStep() {
    if (script.empty()) throw ScriptOver{};
    const Step step = script.front();
    script.pop_front();
    if (const auto* call = std::get_if<std::function<void()>>(&step))
        (*call)();
    else if (const auto* key = std::get_if<Key>(&step))
        terminal.press(*key);
    else
        terminal.type(std::get<std::string>(step));
}

std::vector<Step> operator+(std::vector<Step> first, const std::vector<Step>& then) {
    first.insert(first.end(), then.begin(), then.end());
    return first;
}

std::string retyped(const std::string& text) {
    constexpr size_t longest_text = 300;
    return std::string(longest_text, '\x7f') + text;
}

std::vector<Step> answer_listener(int down, const std::string& port) {
    return std::vector<Step>(static_cast<size_t>(down), Key::down) +
           std::vector<Step>{"\t\x7f\x7f\x7f\x7f\x7f" + port + "\t", Key::enter};
}
