#include "tools/bench/walk.h"

#include "tools/bench/measured_program.h"
#include "tools/bench/peers.h"
#include "tools/bench/table.h"

size_t walk_to_last_screen(MeasuredProgram& wizard) {
    size_t bytes = 0;
    // From the second screen to the last but one: domain, aliases, WebAdmin, SMTP, services, POP3,
    // IMAP, WebMail, relay.
    for (const char* keys : {leave_first_screen, "\t\tp\t\r", "\t\r", "\t\t\r", "\t\t\r", "\t\r",
                             "\t\t\r", "\t\t\r", "\t\t\r", "\t\r"})
        bytes += wizard.type(keys).bytes.size();
    return bytes;
}

void measure_walk(const std::string& wizard) {
    MeasuredProgram program({wizard});
    const size_t bytes = program.firstScreen().bytes.size() + walk_to_last_screen(program);
    print_own("bytes of the walk through all 11 screens", number(static_cast<double>(bytes), 0));
}
