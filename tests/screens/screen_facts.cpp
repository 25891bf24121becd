#include "tests/screens/screen_facts.h"

#include <cstdio>

namespace {

const std::vector<ControlFacts> password_controls = {
    {"password", 0}, {"validate", 1}, {"next", 2, true}, {"exit", 3, true}};
const std::vector<ControlFacts> domain_controls = {
    {"domain", 0}, {"location", 1}, {"postmaster", 4}, {"next", 2, true}, {"back", 3, true}};
const std::vector<ControlFacts> choice_controls = {
    {"list", 0}, {"next", 1, true}, {"back", 2, true}};
const std::vector<ControlFacts> listener_controls = {
    {"list", 0}, {"port", 1}, {"ok", 2, true}, {"back", 3, true}};
const std::vector<ControlFacts> sendmail_controls = {
    {"yes", 0, true}, {"no", 1, true}, {"back", 2, true}};

}  // namespace

const std::vector<ScreenFacts>& all_screens() {
    static const std::vector<ScreenFacts> screens = {
        {0, 13, 45, 13, password_controls},  {1, 15, 60, 15, domain_controls},
        {2, 15, 62, 15, choice_controls},    {3, 12, 29, 12, listener_controls},
        {4, 12, 29, 12, listener_controls},  {5, 15, 60, 15, choice_controls},
        {6, 12, 29, 12, listener_controls},  {7, 12, 29, 12, listener_controls},
        {8, 12, 29, 12, listener_controls},  {9, 14, 60, 15, choice_controls},
        {10, 18, 70, 15, sendmail_controls},
    };
    return screens;
}

std::vector<ScreenView> all_views() {
    std::vector<ScreenView> views;
    for (const ScreenFacts& screen : all_screens()) {
        for (int tabs = 0; tabs < screen.controlCount(); ++tabs) views.push_back({&screen, tabs});
    }
    return views;
}

void PrintTo(const ScreenFacts& screen, std::ostream* out) { *out << screen.name; }

void PrintTo(const ScreenView& view, std::ostream* out) { *out << view.name; }

void enter(const ScreenView& view) {
    std::snprintf(wizard_settings.primary_domain, sizeof wizard_settings.primary_domain,
                  "example.com");
    screen_state = view.screen->state;
    screen_focus(screen_state) = view.focus();
}

ScreenImage drawn(const ScreenView& view, const Size& size) {
    WizardRig wizard(view.screen->state, size);
    enter(view);
    wizard.play({});
    return wizard.image();
}

const std::vector<ListenerFacts>& all_listeners() {
    using Settings = WizardSettings;
    static const std::vector<ListenerFacts> listeners = {
        {"WebAdmin", 3, &Settings::webadmin_interface, &Settings::webadmin_port, 4},
        {"SMTP", 4, &Settings::smtp_interface, &Settings::smtp_port, 5},
        {"POP3", 6, &Settings::pop3_interface, &Settings::pop3_port, 7},
        {"IMAP", 7, &Settings::imap_interface, &Settings::imap_port, 8},
        {"WebMail", 8, &Settings::webmail_interface, &Settings::webmail_port, 9},
    };
    return listeners;
}

void PrintTo(const ListenerFacts& listener, std::ostream* out) { *out << listener.name; }
