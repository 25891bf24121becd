#include "tests/screens/screen_views.h"

#include "wizard/base/screen_state.h"

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
        {"password", state_password, 13, 45, 13, password_controls},
        {"domain", state_domain, 15, 60, 15, domain_controls},
        {"aliases", state_aliases, 15, 62, 15, choice_controls},
        {"webadmin", state_webadmin, 12, 29, 12, listener_controls},
        {"smtp", state_smtp, 12, 29, 12, listener_controls},
        {"services", state_services, 15, 60, 15, choice_controls},
        {"pop3", state_pop3, 12, 29, 12, listener_controls},
        {"imap", state_imap, 12, 29, 12, listener_controls},
        {"webmail", state_webmail, 12, 29, 12, listener_controls},
        {"relay", state_relay, 14, 60, 15, choice_controls},
        {"sendmail", state_sendmail, 18, 70, 15, sendmail_controls},
    };
    return screens;
}

std::vector<ScreenView> views_of(const ScreenFacts& screen) {
    std::vector<ScreenView> views;
    for (int tabs = 0; tabs < screen.control_count(); ++tabs)
        views.push_back({&screen, tabs});
    return views;
}

std::vector<ScreenView> all_views() {
    std::vector<ScreenView> views;
    for (const ScreenFacts& screen : all_screens()) {
        for (const ScreenView& view : views_of(screen))
            views.push_back(view);
    }
    return views;
}

std::vector<ScreenView> fresh_views() {
    std::vector<ScreenView> views;
    for (const ScreenFacts& screen : all_screens())
        views.push_back({&screen, 0});
    return views;
}

std::vector<ScreenView> fresh_views_of_different_screens() {
    std::vector<ScreenView> views;
    for (const ScreenView& view : fresh_views()) {
        if (&screen_focus(view.screen->state) != &screen_focus(state_smtp) ||
            view.screen->state == state_smtp)
            views.push_back(view);
    }
    return views;
}

void PrintTo(const ScreenFacts& screen, std::ostream* out) {
    *out << screen.name;
}

void PrintTo(const ScreenView& view, std::ostream* out) {
    *out << view.name();
}

std::string name_of_view(const testing::TestParamInfo<ScreenView>& info) {
    return info.param.name();
}

ScreenImage drawn(const ScreenView& view, const RigSetup& setup) {
    WizardRig wizard(view.screen->state, setup);
    answer_domain("example.com");
    screen_focus(view.screen->state) = view.focus();
    wizard.play({});
    return wizard.image();
}
