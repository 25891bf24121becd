#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "tests/e2e/wizard_run.h"

/// line_report [BAUD]: walks through the screens on kinds of terminals and prints, for each screen,
/// how many bytes it takes to show it coming from the one before (the notice of the port's check
/// included), and how many seconds they are on a serial line of that speed (9600), with ten bits to
/// a byte. To be run in a sandbox.

namespace {

const std::vector<std::string> terms = {"vt220", "linux", "xterm-256color"};

// What fills a screen in and brings the focus to the button that goes on.
std::string answers_on(Stop stop) {
    if (stop == Stop::password)
        return "secret\tsecret\t";
    if (stop == Stop::domain)
        return "\t\tsecret\t";
    return std::string(static_cast<size_t>(facts_of(stop).next), '\t');
}

// The bytes that each screen takes, in the order of the walk.
std::vector<size_t> bytes_on(const std::string& term) {
    WizardRun wizard(24, 80, term);
    std::vector<size_t> bytes;
    size_t before = 0;
    for (int place = 0; place < stop_count; ++place) {
        const Stop stop = stop_at(place);
        wizard.waitForScreen(stop);
        bytes.push_back(wizard.output().size() - before);
        wizard.type(answers_on(stop));
        wizard.waitForKey();
        before = wizard.output().size();
        wizard.type("\r");
    }
    return bytes;
}

void print_row(const std::string& name, const std::vector<size_t>& bytes, int baud) {
    std::printf("| %s |", name.c_str());
    for (const size_t count : bytes)
        std::printf(" %zu | %.1f |", count, static_cast<double>(count) * 10 / baud);
    std::printf("\n");
}

void print_report(int baud) {
    std::vector<std::vector<size_t>> columns;
    std::printf("| screen |");
    for (const std::string& term : terms) {
        std::printf(" bytes, %s | s |", term.c_str());
        columns.push_back(bytes_on(term));
    }
    std::printf("\n|---|");
    for (size_t i = 0; i < terms.size(); ++i)
        std::printf("---|---|");
    std::printf("\n");
    for (int place = 0; place < stop_count; ++place) {
        std::vector<size_t> row;
        for (const std::vector<size_t>& column : columns)
            row.push_back(column[static_cast<size_t>(place)]);
        print_row(facts_of(stop_at(place)).name, row, baud);
    }
}

}  // namespace

int main(int argument_count, char** arguments) {
    const int baud = argument_count > 1 ? std::atoi(arguments[1]) : 9600;
    if (baud <= 0) {
        std::fprintf(stderr, "usage: line_report [BAUD]\n");
        return 2;
    }
    try {
        print_report(baud);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "line_report: %s\n", failure.what());
        return 1;
    }
}
