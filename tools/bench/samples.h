#pragma once

#include <iosfwd>
#include <string>
#include <vector>

/// One figure that was measured, of which the tables hold the medians. Samples pass between the
/// programs of ./bench as lines of text, ROW TAB COLUMN TAB VALUE.
struct Sample {
    std::string row;     ///< what was measured: a key of rows.h
    std::string column;  ///< of what: a program, or whatever the row's table has columns of
    double value = 0;
};

/// Prints a sample on standard output at once.
void print_sample(const std::string& row, const std::string& column, double value);

/// Reads samples up to the end. Throws std::runtime_error with the line that is none.
std::vector<Sample> read_samples(std::istream& lines);

/// The values of a row and column, in the order in which they came; maybe none.
std::vector<double> values_of(const std::vector<Sample>& samples, const std::string& row,
                              const std::string& column);

/// The columns of which a row has samples, in the order in which they came first.
std::vector<std::string> columns_of(const std::vector<Sample>& samples, const std::string& row);

/// The middle one of the values, or of two the mean. Throws std::invalid_argument if there is none.
double median(std::vector<double> values);
