#pragma once

#include <string>
#include <vector>

/// The middle one of the values, or of two the mean; 0 of none.
double median(std::vector<double> values);

/// A figure of each peer, as peers_of() lists them.
using Figures = std::vector<double>;

/// Prints the heading of the comparison's table, in Markdown.
void print_heading();

/// Prints a row: the figures with `decimals` places and the wizard's as a multiple of the better
/// of the two peers'.
void print_row(const std::string& name, const Figures& figures, int decimals);

/// Prints a row of the wizard's own table.
void print_own(const std::string& name, const std::string& value);

/// `value` with `decimals` places.
std::string number(double value, int decimals);
