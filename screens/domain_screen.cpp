#include <algorithm>
#include <cstdio>
#include <cstring>

#include "screens/screen.h"
#include "screens/screen_table.h"
#include "ui/text_field.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/tel_help.h"
#include "wizard/base/wizard_settings.h"
#include "wizard/system/secret.h"

namespace {

// The postmaster field came last but stands before the buttons in TAB order.
enum Focus { focus_domain, focus_location, focus_next, focus_back, focus_postmaster };

constexpr int rows = 15;
constexpr int cols = 60;
constexpr int max_domain = 50;
constexpr int max_location = 252;
constexpr int max_password = 50;

// Whether a host's domain can be offered. A network may have set it, to anything: what is not
// printable would be an order to the terminal, or end the server's command.
bool is_domain(const char* name) {
    const std::size_t length = std::strlen(name);
    return length > 0 && length <= max_domain && std::strcmp(name, "(none)") != 0 &&
           std::all_of(name, name + length, [](char c) { return c >= ' ' && c <= '~'; });
}

class DomainScreen : public Screen {
  public:
    explicit DomainScreen(int state) : Screen(state, rows, cols, rows) {
        addButton(focus_next, 9, cols - 11, "Next");
        addButton(focus_back, 9, 3, "Back");
        char host_domain[201];
        host_domain_name(host_domain, sizeof(host_domain));
        domain.setText(is_domain(host_domain) ? host_domain : "localdomain");
    }

  private:
    // Until the user has typed into it, the location follows the domain: its directory below the
    // server's directory of domains.
    void prepare() override {
        if (locationEdited) return;
        const HeapText directory(profile_domains_dir());
        const HeapText name(domain.getText());
        std::snprintf(wizard_settings.primary_domain, sizeof(wizard_settings.primary_domain),
                      "%s%s/", directory.get(), name.get());
        location.setText(wizard_settings.primary_domain);
    }

    void takeKey(const Control& control, int key) override {
        if (control.focus == focus_location) locationEdited = true;
        Screen::takeKey(control, key);
    }

    WizardEnd press(int button) override {
        if (button == focus_back) return goBack();
        const HeapText name(domain.getText());
        const HeapText directory(location.getText());
        const SecretText password(postmaster.getText());
        if (name.get()[0] == '\0') return refuse("A blank domain is not allowed!", focus_domain);
        if (directory.get()[0] == '\0')
            return refuse("A blank domain location is not allowed!", focus_location);
        if (password.get()[0] == '\0')
            return refuse("A blank password is not allowed!", focus_postmaster);
        WizardSettings& settings = wizard_settings;
        std::snprintf(settings.primary_domain, sizeof(settings.primary_domain), "%s", name.get());
        std::snprintf(settings.domain_location, sizeof(settings.domain_location), "%s",
                      directory.get());
        std::snprintf(settings.postmaster_password, sizeof(settings.postmaster_password), "%s",
                      password.get());
        return goOn();
    }

    TextField& domain = addField<TextField>(focus_domain, 3, "Primary Domain:", max_domain);
    TextField& location = addField<TextField>(focus_location, 5, "Domain Location:", max_location);
    PassTextField& postmaster =
        addField<PassTextField>(focus_postmaster, 7, "Postmaster account password:", max_password);

    // Set by the first key into the location field; from then on the location is the user's.
    bool locationEdited = false;
};

}  // namespace

std::unique_ptr<Screen> domain_screen_build(int state) {
    return std::make_unique<DomainScreen>(state);
}
