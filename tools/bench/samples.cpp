#include "tools/bench/samples.h"

#include <algorithm>
#include <cstdio>
#include <istream>
#include <sstream>
#include <stdexcept>

void print_sample(const std::string& row, const std::string& column, double value) {
    std::printf("%s\t%s\t%.9g\n", row.c_str(), column.c_str(), value);
    std::fflush(stdout);
}

std::vector<Sample> read_samples(std::istream& lines) {
    std::vector<Sample> samples;
    std::string line;
    while (std::getline(lines, line)) {
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
        if (sample.row == row && sample.column == column)
            values.push_back(sample.value);
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

double median(std::vector<double> values) {
    if (values.empty())
        throw std::invalid_argument("there is no median of nothing");
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}
