#pragma once

#include <string>
#include <vector>

#include "tools/bench/rows.h"
#include "tools/bench/samples.h"

/// Markdown tables of medians, a line each for the heading, the rule below it and each row. A row
/// or column without samples throws std::runtime_error that names it.

/// The wizard beside whiptail, dialog and the floor, with the wizard's figure as a multiple of the
/// better one of whiptail's and dialog's ("-" if that is 0), what it must reach and whether it
/// does. Figures are compared as they are printed.
std::string comparison_table(const std::vector<Row>& rows, const std::vector<Sample>& samples);

/// The wizard alone, with what it must reach and whether it does.
std::string own_table(const std::vector<Row>& rows, const std::vector<Sample>& samples);

/// How a figure grows from a list of 2 rows to one of 29.
std::string list_table(const std::vector<Row>& rows, const std::vector<Sample>& samples);

/// The columns of a row's samples one below the other, with a heading for both sides.
std::string column_table(const std::string& row, const std::string& names,
                         const std::string& figures, const std::vector<Sample>& samples);

/// A sentence on how many of the rows of tables reach what they must.
std::string reached_count(const std::string& tables);

/// `value` with `decimals` places.
std::string number(double value, int decimals);
