#include "tests/screens/wizard_rig.h"

#include <panel.h>

#include <csignal>
#include <cstdlib>
#include <cstring>

#include "apply/apply_sequence.h"
#include "screens/screen.h"
#include "screens/screen_table.h"
#include "tests/support/expect_screen.h"
#include "ui/main_window.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/ending.h"
#include "wizard/terminal_session.h"

ApplyDouble apply_double;

WizardEnd apply_configuration() {
    bool is_shown = false;
    for (PANEL* panel = panel_above(nullptr); panel != nullptr; panel = panel_above(panel))
        is_shown |=
            panel_window(panel) == built_screens[state_sendmail]->getFrame().getCursesWindow();
    apply_double = {apply_double.leads_to,
                    apply_double.end,
                    apply_double.calls + 1,
                    wizard_settings.sendmail_wrapper,
                    screen_state,
                    screen_focus(state_sendmail),
                    !is_shown};
    screen_state = apply_double.leads_to;
    return screen_state == state_end ? WizardEnd::completed : apply_double.end;
}

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
    built_screen(state_password);
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

void WizardRig::takeStep() {
    for (;;) {
        if (script.empty()) throw ScriptOver{};
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
        if (!text.empty()) return;
    }
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

std::string words_on(const ScreenImage& image) {
    std::string words;
    for (int row = 0; row < image.rows(); ++row) {
        for (int col = 0; col < image.cols(); ++col) {
            const std::string& text = image.cell(row, col).text;
            if (text.size() == 1 && text != " ")
                words += text;
            else if (!words.empty() && words.back() != ' ')
                words += ' ';
        }
    }
    return words;
}

void expect_error_box(const ScreenImage& screen, const std::string& message,
                      const std::string& hidden_title, const Caller& caller) {
    const testing::ScopedTrace trace(caller.file, caller.line, message);
    EXPECT_EQ(screen_state, state_message);
    EXPECT_FALSE(screen.shows(hidden_title));
    const int rows = 11;
    const int cols = static_cast<int>(message.size()) + 2;
    const auto row = [&](const std::string& text) {
        const size_t left = (message.size() - text.size()) / 2;
        return "│" + std::string(left, ' ') + text +
               std::string(message.size() - text.size() - left, ' ') + "│\n";
    };
    std::string line;
    for (size_t col = 0; col < message.size(); ++col) line += "─";
    EXPECT_PICTURE(
        screen.region((screen.rows() - rows) / 2, (screen.cols() - cols) / 2, rows, cols),
        "\n┌" + line + "┐\n" + row("Error!") + "├" + line + "┤\n" + row(message) + row("") +
            row("") + row("") + row("  OK  ") + row("") + row("") + "└" + line + "┘\n");
}
