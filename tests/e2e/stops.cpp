#include "tests/e2e/stops.h"

const StopFacts& facts_of(Stop stop) {
    static const StopFacts facts[stop_count] = {
        {"password", "Please enter admin's password", 4, 2, 3, nullptr},
        {"domain", "Domain configuration", 5, 3, 4, nullptr},
        {"aliases", "Alias Configuration", 3, 1, 2, nullptr},
        {"webadmin", "Select WebAdmin Interface", 4, 2, 3, "9000"},
        {"smtp", "Select SMTP Interface", 4, 2, 3, "25"},
        {"services", "Services Selection", 3, 1, 2, nullptr},
        {"pop3", "Select POP3 Interface", 4, 2, 3, "110"},
        {"imap", "Select IMAP Interface", 4, 2, 3, "143"},
        {"webmail", "Select WebMail Interface", 4, 2, 3, "80"},
        {"relay", "Relay Configuration", 3, 1, 2, nullptr},
        {"sendmail", "Sendmail Wrapper Configuration", 3, 0, 2, nullptr},
    };
    return facts[place_of(stop)];
}
