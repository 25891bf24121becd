#include "tools/bench/table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <sstream>
#include <stdexcept>

namespace {

using Words = std::vector<std::string>;

std::string line(const Words& words) {
    std::string text = "|";
    for (const std::string& word : words)
        text += word.empty() ? " |" : " " + word + " |";
    return text + "\n";
}

// The first column is text, the others are figures, but for the words at the end of a target.
std::string heading(const Words& words) {
    std::string rule = "|---|";
    for (size_t i = 1; i < words.size(); ++i)
        rule += words[i].empty() || words[i] == "must be" ? "---|" : "--:|";
    return line(words) + rule + "\n";
}

// As the table shows it.
double rounded(double value, int decimals) {
    const double scale = std::pow(10, decimals);
    return std::round(value * scale) / scale;
}

double figure(const Row& row, const std::string& column, const std::vector<Sample>& samples) {
    const std::vector<double> values = values_of(samples, row.key, column);
    if (values.empty())
        throw std::runtime_error(std::string("no sample of ") + row.key + " for " + column);
    return rounded(median(values), row.decimals);
}

std::string ratio(double value, double base) {
    return base > 0 ? number(value / base, 2) : "-";
}

// What the figure must be at most; nothing if it may be anything.
std::optional<double> limit_of(const Target& target, double better_peer) {
    switch (target.kind) {
        case Target::Kind::better_peer:
            return better_peer;
        case Target::Kind::at_most:
            return target.limit;
        default:
            return std::nullopt;
    }
}

// The two last columns.
Words verdict(const Row& row, double value, double better_peer) {
    const std::optional<double> limit = limit_of(row.target, better_peer);
    if (!limit)
        return {"", ""};
    return {"at most " + number(*limit, row.decimals), value <= *limit ? "reached" : "NOT reached"};
}

void append(Words& words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
}

}  // namespace

std::string comparison_table(const std::vector<Row>& rows, const std::vector<Sample>& samples) {
    std::string table = heading(
        {"", "wizard", "whiptail", "dialog", "floor", "wizard / better peer", "must be", ""});
    for (const Row& row : rows) {
        Words words{row.title};
        for (const char* column : {"wizard", "whiptail", "dialog", "floor"})
            words.push_back(number(figure(row, column, samples), row.decimals));
        const double wizard = figure(row, "wizard", samples);
        const double better_peer =
            std::min(figure(row, "whiptail", samples), figure(row, "dialog", samples));
        words.push_back(ratio(wizard, better_peer));
        append(words, verdict(row, wizard, better_peer));
        table += line(words);
    }
    return table;
}

std::string own_table(const std::vector<Row>& rows, const std::vector<Sample>& samples) {
    std::string table = heading({"", "wizard", "must be", ""});
    for (const Row& row : rows) {
        const double wizard = figure(row, "wizard", samples);
        Words words{row.title, number(wizard, row.decimals)};
        append(words, verdict(row, wizard, wizard));
        table += line(words);
    }
    return table;
}

std::string list_table(const std::vector<Row>& rows, const std::vector<Sample>& samples) {
    std::string table = heading({"", "2 rows", "29 rows", "ratio"});
    for (const Row& row : rows) {
        const double few = figure(row, "2", samples);
        const double many = figure(row, "29", samples);
        table += line(
            {row.title, number(few, row.decimals), number(many, row.decimals), ratio(many, few)});
    }
    return table;
}

std::string column_table(const std::string& row, const std::string& names,
                         const std::string& figures, const std::vector<Sample>& samples) {
    const std::vector<std::string> columns = columns_of(samples, row);
    if (columns.empty())
        throw std::runtime_error("no sample of " + row);
    std::string table = heading({names, figures});
    for (const std::string& column : columns)
        table += line({column, number(median(values_of(samples, row, column)), 0)});
    return table;
}

std::string reached_count(const std::string& tables) {
    std::istringstream lines(tables);
    std::string line;
    int reached = 0;
    int targets = 0;
    while (std::getline(lines, line)) {
        const bool is_reached = line.find("| reached |") != std::string::npos;
        reached += is_reached ? 1 : 0;
        targets += is_reached || line.find("| NOT reached |") != std::string::npos ? 1 : 0;
    }
    return std::to_string(reached) + " of " + std::to_string(targets) + " targets are reached.";
}

std::string number(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", decimals, value);
    return text;
}
