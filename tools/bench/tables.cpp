#include "tools/bench/tables.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <istream>
#include <sstream>
#include <stdexcept>

const std::vector<Row> compared_rows = {
    {"start", "exec to the complete first screen, ms", 2, better_peer},
    {"beyond_floor", "the same beyond the floor's, ms", 2, 1},
    {"screen_bytes", "bytes of the first screen", 0, better_peer},
    {"screen_writes", "writes for the first screen", 0, 2},
    {"password_bytes", "bytes per character, password", 0, 1},
    {"password_writes", "writes per character, password", 0, 1},
    {"password_first", "bytes of the first character, password", 0, anything},
    {"text_bytes", "bytes per character, text", 0, 1},
    {"text_writes", "writes per character, text", 0, 1},
    {"text_first", "bytes of the first character, text", 0, anything},
    {"resize_bytes", "bytes for a resize to 100x34", 0, better_peer},
    {"resize_writes", "writes for a resize to 100x34", 0, better_peer},
    {"memory", "memory (PSS) at the first screen, kB", 0, better_peer},
    {"idle_first", "processor time in 5 idle seconds, ms: first screen", 2, 0},
    {"idle_dialog", "processor time in 5 idle seconds, ms: open dialog", 2, 0},
    {"idle_resized", "processor time in 5 idle seconds, ms: open dialog after a resize", 2, 0},
};

const std::vector<Row> own_rows = {
    {"apply_whole", "an apply run, ms", 0, anything},
    {"apply_asleep", "in it: sleeps that the run has to make, ms", 0, anything},
    {"apply_server", "in it: waiting for the server and its commands, ms", 0, anything},
    {"apply_own", "in it: all the rest, ms", 0, 100},
    {"walk_bytes", "bytes of the walk through all 11 screens", 0, anything},
    {"executable", "size of the executable, bytes", 0, anything},
    {"stripped", "the same without symbols, as in a package", 0, anything},
};

const std::vector<Row> list_rows = {
    {"list_screen_bytes", "bytes of the screen with the list", 0, anything},
    {"list_screen_time", "time until it is complete, ms", 2, anything},
    {"list_key_bytes", "bytes for a cursor key in the list", 0, anything},
    {"list_key_time", "time until its answer is complete, ms", 2, anything},
};

namespace {

using Words = std::vector<std::string>;

const std::string reached = "| reached |";
const std::string not_reached = "| NOT reached |";

std::string line(const Words& words) {
    std::string text = "|";
    for (const std::string& word : words) text += word.empty() ? " |" : " " + word + " |";
    return text + "\n";
}

// The first column is text, the others are figures, but for the words at the end of a target.
std::string heading(const Words& words) {
    std::string rule = "|---|";
    for (size_t i = 1; i < words.size(); ++i)
        rule += words[i].empty() || words[i] == "must be" ? "---|" : "--:|";
    return line(words) + rule + "\n";
}

std::string number(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof(text), "%.*f", decimals, value);
    return text;
}

// The middle one of the values, or of two the mean.
double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

// As the table shows it.
double figure(const Row& row, const std::string& column, const std::vector<Sample>& samples) {
    const std::vector<double> values = values_of(samples, row.key, column);
    if (values.empty())
        throw std::runtime_error(std::string("no sample of ") + row.key + " for " + column);
    const double scale = std::pow(10, row.decimals);
    return std::round(median(values) * scale) / scale;
}

std::string ratio(double value, double base) { return base > 0 ? number(value / base, 2) : "-"; }

// A line with its two last columns.
std::string judged(Words words, const Row& row, double value, double better_peers) {
    const double most = row.most == better_peer ? better_peers : row.most;
    const bool is_target = row.most != anything;
    words.push_back(is_target ? "at most " + number(most, row.decimals) : "");
    words.push_back(is_target ? value <= most ? "reached" : "NOT reached" : "");
    return line(words);
}

int count_of(const std::string& text, const std::string& part) {
    int count = 0;
    for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
    return count;
}

}  // namespace

void print_sample(const std::string& row, const std::string& column, double value) {
    std::printf("%s\t%s\t%.9g\n", row.c_str(), column.c_str(), value);
    std::fflush(stdout);
}

std::vector<Sample> read_samples(std::istream& lines) {
    std::vector<Sample> samples;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream fields(line);
        Sample sample;
        if (!std::getline(fields, sample.row, '\t') || !std::getline(fields, sample.column, '\t') ||
            !(fields >> sample.value))
            throw std::runtime_error("not a sample: " + line);
        samples.push_back(sample);
    }
    return samples;
}

std::vector<double> values_of(const std::vector<Sample>& samples, const std::string& row,
                              const std::string& column) {
    std::vector<double> values;
    for (const Sample& sample : samples) {
        if (sample.row == row && sample.column == column) values.push_back(sample.value);
    }
    return values;
}

std::vector<std::string> columns_of(const std::vector<Sample>& samples, const std::string& row) {
    std::vector<std::string> columns;
    for (const Sample& sample : samples) {
        if (sample.row == row &&
            std::find(columns.begin(), columns.end(), sample.column) == columns.end())
            columns.push_back(sample.column);
    }
    return columns;
}

std::string comparison_table(const std::vector<Row>& rows, const std::vector<Sample>& samples) {
    std::string table = heading(
        {"", "wizard", "whiptail", "dialog", "floor", "wizard / better peer", "must be", ""});
    for (const Row& row : rows) {
        Words words{row.title};
        for (const char* column : {"wizard", "whiptail", "dialog", "floor"})
            words.push_back(number(figure(row, column, samples), row.decimals));
        const double wizard = figure(row, "wizard", samples);
        const double peer =
            std::min(figure(row, "whiptail", samples), figure(row, "dialog", samples));
        words.push_back(ratio(wizard, peer));
        table += judged(words, row, wizard, peer);
    }
    return table;
}

std::string own_table(const std::vector<Row>& rows, const std::vector<Sample>& samples) {
    std::string table = heading({"", "wizard", "must be", ""});
    for (const Row& row : rows) {
        const double wizard = figure(row, "wizard", samples);
        table += judged({row.title, number(wizard, row.decimals)}, row, wizard, wizard);
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

std::string calls_table(const std::vector<Sample>& samples) {
    const Words steps = columns_of(samples, calls_row);
    if (steps.empty()) throw std::runtime_error(std::string("no sample of ") + calls_row);
    std::string table = heading({"step of an apply run", "system calls"});
    for (const std::string& step : steps)
        table += line({step, number(median(values_of(samples, calls_row, step)), 0)});
    return table;
}

std::string all_tables(const std::vector<Sample>& samples) {
    const std::string judgements =
        comparison_table(compared_rows, samples) + "\n" + own_table(own_rows, samples);
    const int count = count_of(judgements, reached);
    return judgements + "\n" + std::to_string(count) + " of " +
           std::to_string(count + count_of(judgements, not_reached)) + " targets are reached.\n\n" +
           list_table(list_rows, samples) + "\n" + calls_table(samples);
}
