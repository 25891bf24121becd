#pragma once

#include <iosfwd>
#include <string>
#include <vector>

/// One figure that was measured, of which the tables hold the medians. Samples pass between the
/// programs of ./bench as lines of text, ROW TAB COLUMN TAB VALUE.
struct Sample {
    std::string row;     ///< what was measured: the key of a row
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

/// What the wizard's figure in a row must be at most: a limit, or one of these.
constexpr double anything = -1;
constexpr double better_peer = -2;  ///< the figure of the better one of whiptail and dialog

/// A row of a table.
struct Row {
    const char* key;    ///< what the samples of the row are called
    const char* title;  ///< in the table
    int decimals;       ///< of the figures
    double most;
};

/// The rows of the tables, in their order. `compared_rows` has samples of the wizard, whiptail,
/// dialog and the floor; `own_rows` of the wizard; `list_rows` of "2" and "29", lists with so many
/// rows.
extern const std::vector<Row> compared_rows;
extern const std::vector<Row> own_rows;
extern const std::vector<Row> list_rows;

/// The samples of this row have a column for each step of an apply run.
constexpr const char* calls_row = "calls";

/// Markdown tables of medians, a line each for the heading, the rule below it and each row. Figures
/// are compared as they are printed. A row or column without samples throws std::runtime_error that
/// names it.

/// The wizard beside whiptail, dialog and the floor, with the wizard's figure as a multiple of the
/// better one of whiptail's and dialog's ("-" if that is 0), what it must reach and whether it
/// does.
std::string comparison_table(const std::vector<Row>& rows, const std::vector<Sample>& samples);

/// The wizard alone, with what it must reach and whether it does.
std::string own_table(const std::vector<Row>& rows, const std::vector<Sample>& samples);

/// How a figure grows from a list of 2 rows to one of 29.
std::string list_table(const std::vector<Row>& rows, const std::vector<Sample>& samples);

/// The steps of an apply run with their system calls, one below the other.
std::string calls_table(const std::vector<Sample>& samples);

/// All of them, with a sentence on how many targets are reached.
std::string all_tables(const std::vector<Sample>& samples);
