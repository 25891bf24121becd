#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "tests/e2e/wizard_run.h"

/// line_report [BAUD]: walks through the screens on kinds of terminals and prints, for each screen,
/// how many bytes it takes to show it coming from the one before (the notice of the port's check
/// included), and how many seconds they are on a serial line of that speed (9600), with ten bits to
/// a byte. To be run in a sandbox.

namespace {

// A row for each screen, in the order of the walk, becomes longer by the columns of this terminal.
void add_columns(std::vector<std::string>& rows, const std::string& term, int baud) {
    WizardRun wizard(24, 80, term);
    size_t before = 0;
    for (int place = 0; place < stop_count; ++place) {
        const Stop stop = stop_at(place);
        wizard.waitForScreen(stop);
        const size_t bytes = wizard.output().size() - before;
        char columns[64];
        std::snprintf(columns, sizeof(columns), " %zu | %.1f |", bytes,
                      static_cast<double>(bytes) * 10 / baud);
        rows[static_cast<size_t>(place)] += columns;
        wizard.type(facts_of(stop).accepted);
        wizard.waitForKey();
        before = wizard.output().size();
        wizard.type("\r");
    }
}

void print_report(int baud) {
    std::string heading = "| screen |";
    std::string rule = "|---|";
    std::vector<std::string> rows;
    for (int place = 0; place < stop_count; ++place)
        rows.push_back(std::string("| ") + facts_of(stop_at(place)).name + " |");
    for (const std::string term : {"vt220", "linux", "xterm-256color"}) {
        heading += " bytes, " + term + " | s |";
        rule += "---|---|";
        add_columns(rows, term, baud);
    }
    std::printf("%s\n%s\n", heading.c_str(), rule.c_str());
    for (const std::string& row : rows) std::printf("%s\n", row.c_str());
}

}  // namespace

int main(int argument_count, char** arguments) {
    const int baud = argument_count > 1 ? std::atoi(arguments[1]) : 9600;
    if (baud <= 0) {
        std::fprintf(stderr, "usage: line_report [BAUD]\n");
        return 2;
    }
    print_report(baud);
    return 0;
}
