#include "tools/bench/table.h"

#include <algorithm>
#include <cstdio>

double median(std::vector<double> values) {
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::string number(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", decimals, value);
    return text;
}

void print_heading() {
    std::puts("| | wizard | whiptail | dialog | floor | wizard / better peer |");
    std::puts("|---|---|---|---|---|---|");
}

void print_row(const std::string& name, const Figures& figures, int decimals) {
    std::string line = "| " + name + " |";
    for (const double figure : figures)
        line += " " + number(figure, decimals) + " |";
    const double better = std::min(figures[1], figures[2]);
    line += " " + (better > 0 ? number(figures[0] / better, 2) : std::string("-")) + " |";
    std::puts(line.c_str());
    std::fflush(stdout);
}

void print_own(const std::string& name, const std::string& value) {
    std::printf("| %s | %s |\n", name.c_str(), value.c_str());
    std::fflush(stdout);
}
