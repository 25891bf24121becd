#include "tests/apply/apply_case.h"

#include <algorithm>
#include <cstdio>

#include "apply/apply_sequence.h"
#include "standin/text.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/screen_state.h"

namespace {

template <size_t size>
void answer(char (&field)[size], const char* text) {
    std::snprintf(field, size, "%s", text);
}

}  // namespace

ApplyCase::ApplyCase() {
    wizard_settings = WizardSettings();
    answer(wizard_settings.admin_password, password);
    answer(wizard_settings.primary_domain, "example.com");
    answer(wizard_settings.domain_location, "/var/opt/teluma/domains/example.com/");
    answer(wizard_settings.postmaster_password, "P0stmaster");
    wizard_settings.webadmin_port = 9000;
    enable(true, true, true);
    screen_state = state_sendmail;
}

ApplyCase::~ApplyCase() {
    wizard_settings = WizardSettings();
}

void ApplyCase::chooseAll() {
    std::fill_n(wizard_settings.relay_ticks, relay_network_count, static_cast<unsigned char>(1));
    wizard_settings.sendmail_wrapper = 1;
}

std::vector<ScreenImage> ApplyCase::apply() {
    std::vector<ScreenImage> shown;
    waits.atKey = [&] {
        shown.push_back(screen.terminal.terminalImage());
        screen.terminal.type("\n");
    };
    apply_configuration();
    return shown;
}

void ApplyCase::enable(bool pop3, bool imap, bool webmail) {
    wizard_settings.service_enabled[service_pop3] = pop3;
    wizard_settings.service_enabled[service_imap] = imap;
    wizard_settings.service_enabled[service_webmail] = webmail;
}

std::vector<std::string> boxed_lines(const ScreenImage& image) {
    const std::string side = "│";
    std::vector<std::string> lines;
    for (int row = 0; row < image.rows(); ++row) {
        const std::string text = image.rowText(row);
        const size_t left = text.find(side);
        if (left == std::string::npos)
            continue;
        // A line of progress may be so long that it hides the right side.
        const size_t right = text.rfind(side);
        const size_t from = left + side.size();
        const std::string line =
            trimmed(right > left ? text.substr(from, right - from) : text.substr(from));
        if (!line.empty())
            lines.push_back(line);
    }
    return lines;
}

std::string boxed_text(const ScreenImage& image) {
    return joined(split_words(joined(boxed_lines(image))));
}
