#include "tests/screens/screen_facts.h"

#include <algorithm>
#include <cstdio>

#include "wizard/terminal_session.h"

const std::vector<ScreenFacts>& all_screens() {
    static const std::vector<ControlFacts> password = {
        {"password", 0}, {"validate", 1}, {"next", 2, true}, {"exit", 3, true}};
    static const std::vector<ControlFacts> domain = {
        {"domain", 0}, {"location", 1}, {"postmaster", 4}, {"next", 2, true}, {"back", 3, true}};
    static const std::vector<ControlFacts> choices = {
        {"list", 0}, {"next", 1, true}, {"back", 2, true}};
    static const std::vector<ControlFacts> listener = {
        {"list", 0}, {"port", 1}, {"ok", 2, true}, {"back", 3, true}};
    static const std::vector<ControlFacts> sendmail = {
        {"yes", 0, true}, {"no", 1, true}, {"back", 2, true}};
    static const std::vector<ScreenFacts> screens = {
        {0, 13, 45, 13, password}, {1, 15, 60, 15, domain},   {2, 15, 62, 15, choices},
        {3, 12, 29, 12, listener}, {4, 12, 29, 12, listener}, {5, 15, 60, 15, choices},
        {6, 12, 29, 12, listener}, {7, 12, 29, 12, listener}, {8, 12, 29, 12, listener},
        {9, 14, 60, 15, choices},  {10, 18, 70, 15, sendmail}};
    return screens;
}

std::vector<ScreenView> all_views() {
    std::vector<ScreenView> views;
    for (const ScreenFacts& screen : all_screens()) {
        for (int tabs = 0; tabs < screen.controlCount(); ++tabs) views.push_back({&screen, tabs});
    }
    return views;
}

void enter(const ScreenView& view) {
    std::snprintf(wizard_settings.primary_domain, sizeof wizard_settings.primary_domain,
                  "example.com");
    screen_state = view.screen->state;
    screen_focus(screen_state) = view.control().focus;
}

ScreenImage drawn(const ScreenView& view, const Size& size) {
    WizardRig wizard(view.screen->state, size);
    enter(view);
    wizard.play({});
    return wizard.image();
}

ScreenImage moved(const ScreenImage& picture, const ScreenFacts& screen, const Size& size) {
    const auto place_in = [&screen](const Size& terminal) {
        return Position{(terminal.rows - screen.centring_rows) / 2,
                        (terminal.cols - screen.cols) / 2};
    };
    const Position from = place_in(usual);
    const Position to = place_in(size);
    const ScreenImage part = picture.region(from.row, from.col, screen.rows, screen.cols);
    CursesTerminal terminal(size.rows, size.cols);
    draw_background();
    refresh();
    ScreenImage image = terminal.image();
    for (int row = 0; row < std::min(part.rows(), size.rows - to.row); ++row) {
        for (int col = 0; col < part.cols(); ++col)
            image.cell(to.row + row, to.col + col) = part.cell(row, col);
    }
    const Position& cursor = part.cursor().position;
    image.setCursor({{to.row + cursor.row, to.col + cursor.col}, part.cursor().visible});
    return image;
}

const std::vector<ListenerFacts>& all_listeners() {
    using Settings = WizardSettings;
    static const std::vector<ListenerFacts> listeners = {
        {"WebAdmin", 3, &Settings::webadmin_interface, &Settings::webadmin_port},
        {"SMTP", 4, &Settings::smtp_interface, &Settings::smtp_port},
        {"POP3", 6, &Settings::pop3_interface, &Settings::pop3_port},
        {"IMAP", 7, &Settings::imap_interface, &Settings::imap_port},
        {"WebMail", 8, &Settings::webmail_interface, &Settings::webmail_port},
    };
    return listeners;
}
