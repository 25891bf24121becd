#include "tests/support/screen_table.h"

namespace {

const StopFacts stops[stop_count] = {
    {"password", "Please enter admin's password", "password_on_password", "secret\tsecret\t", 4, 2,
     3, nullptr},
    {"domain", "Domain configuration", "domain_on_domain", "\t\tsecret\t", 5, 3, 4, nullptr},
    {"aliases", "Alias Configuration", "aliases_on_list", "\t", 3, 1, 2, nullptr},
    {"webadmin", "Select WebAdmin Interface", "webadmin_on_list", "\t\t", 4, 2, 3, "9000"},
    {"smtp", "Select SMTP Interface", "smtp_on_list", "\t\t", 4, 2, 3, "25"},
    {"services", "Services Selection", "services_on_list", "\t", 3, 1, 2, nullptr},
    {"pop3", "Select POP3 Interface", "pop3_on_list", "\t\t", 4, 2, 3, "110"},
    {"imap", "Select IMAP Interface", "imap_on_list", "\t\t", 4, 2, 3, "143"},
    {"webmail", "Select WebMail Interface", "webmail_on_list", "\t\t", 4, 2, 3, "80"},
    {"relay", "Relay Configuration", "relay_on_list", "\t", 3, 1, 2, nullptr},
    {"sendmail", "Sendmail Wrapper Configuration", "sendmail_on_yes", "", 3, 0, 2, nullptr},
};

}  // namespace

bool StopFacts::showsHost() const { return port != nullptr || this == &facts_of(Stop::relay); }

const StopFacts& facts_of(Stop stop) { return stops[place_of(stop)]; }

std::vector<Stop> every_stop() {
    std::vector<Stop> all;
    for (int place = 0; place < stop_count; ++place) all.push_back(stop_at(place));
    return all;
}
