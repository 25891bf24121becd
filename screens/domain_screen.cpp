#include "screens/domain_screen.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "ui/label.h"
#include "ui/pass_text_field.h"
#include "wizard/base/install_profile.h"
#include "wizard/base/screen_moves.h"
#include "wizard/base/screen_state.h"
#include "wizard/base/tel_help.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/system/secret.h"

Screen domain_screen{state_domain};

namespace {

// The postmaster field came last but stands before the buttons in TAB order.
enum Focus { focus_domain, focus_location, focus_next, focus_back, focus_postmaster };

constexpr int rows = 15;
constexpr int cols = 60;
constexpr int max_domain = 50;
constexpr int max_location = 252;
constexpr int max_password = 50;

TextField* domain_field;
TextField* location_field;
PassTextField* postmaster_field;

// Set by the first key into the location field; from then on the location is the user's.
bool location_edited;

// The domain's directory below the server's directory of domains.
void rebuild_location() {
    if (location_edited)
        return;
    const HeapText directory(profile_domains_dir());
    const HeapText domain(domain_field->getText());
    std::snprintf(wizard_settings.primary_domain, sizeof(wizard_settings.primary_domain), "%s%s/",
                  directory.get(), domain.get());
    location_field->setText(wizard_settings.primary_domain);
}

void key_to_location(Window* /*widget*/, int key) {
    location_edited = true;
    location_field->onKey(key);
}

template <class Field>
Field* add_row(int focus, int row, const char* text, int max_length, void (*left)()) {
    constexpr int margin = 2;
    constexpr int room = 54;
    const int label_length = static_cast<int>(std::strlen(text));
    Window* frame = domain_screen.frame.get();
    auto* label = screen_add(domain_screen, new Label(frame, row, margin, text));
    auto* field = screen_add(domain_screen, new Field(frame, row, margin + label_length, max_length,
                                                      room - label_length, 1));
    add_field_control(domain_screen, focus, label, field, left);
    return field;
}

// Whether a host's domain can be offered. A network may have set it, to anything: what is not
// printable would be an order to the terminal, or end the server's command.
bool is_domain(const char* name) {
    const std::size_t length = std::strlen(name);
    return length > 0 && length <= max_domain && std::strcmp(name, "(none)") != 0 &&
           std::all_of(name, name + length, [](char c) { return c >= ' ' && c <= '~'; });
}

void set_default_answers() {
    char domain[201];
    host_domain_name(domain, sizeof(domain));
    domain_field->setText(is_domain(domain) ? domain : "localdomain");
    const HeapText directory(profile_domains_dir());
    location_field->setText(directory.get());
    location_edited = false;
}

void store_answers(const char* domain, const char* location, const char* password) {
    WizardSettings& settings = wizard_settings;
    std::snprintf(settings.primary_domain, sizeof(settings.primary_domain), "%s", domain);
    std::snprintf(settings.domain_location, sizeof(settings.domain_location), "%s", location);
    std::snprintf(settings.postmaster_password, sizeof(settings.postmaster_password), "%s",
                  password);
}

void go_next() {
    const HeapText domain(domain_field->getText());
    const HeapText location(location_field->getText());
    const SecretText password(postmaster_field->getText());
    if (domain.get()[0] == '\0') {
        screen_error(domain_screen, "A blank domain is not allowed!", focus_domain);
    } else if (location.get()[0] == '\0') {
        screen_error(domain_screen, "A blank domain location is not allowed!", focus_location);
    } else if (password.get()[0] == '\0') {
        screen_error(domain_screen, "A blank password is not allowed!", focus_postmaster);
    } else {
        screen_leave(next_screen_state(state_domain));
        store_answers(domain.get(), location.get(), password.get());
    }
}

void go_back() {
    screen_leave(previous_screen_state(state_domain));
}

}  // namespace

void domain_screen_create() {
    screen_open(domain_screen, rows, cols, rows, "Domain configuration");
    domain_field =
        add_row<TextField>(focus_domain, 3, "Primary Domain:", max_domain, rebuild_location);
    location_field =
        add_row<TextField>(focus_location, 5, "Domain Location:", max_location, nullptr);
    domain_screen.controls.back().take_key = key_to_location;
    postmaster_field = add_row<PassTextField>(
        focus_postmaster, 7, "Postmaster account password:", max_password, nullptr);
    screen_add_button(domain_screen, focus_next, 9, cols - 11, "Next", go_next);
    screen_add_button(domain_screen, focus_back, 9, 3, "Back", go_back);
    set_default_answers();
    screen_hide(domain_screen);
}

void domain_screen_entry() {
    rebuild_location();
    screen_draw(domain_screen);
    screen_run(domain_screen);
    screen_hide(domain_screen);
}
