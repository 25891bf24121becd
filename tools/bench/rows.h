#pragma once

#include <vector>

/// What the wizard's figure in a row has to be.
struct Target {
    enum class Kind {
        none,
        better_peer,  ///< no more than that of the better of whiptail and dialog
        at_most,      ///< no more than `limit`
    };
    Kind kind = Kind::none;
    double limit = 0;
};

/// A row of a table.
struct Row {
    const char* key;    ///< what the samples of the row are called
    const char* title;  ///< in the table
    int decimals;       ///< of the figures
    Target target;
};

/// The rows of the tables, in their order. `compared_rows` has samples of the wizard, whiptail,
/// dialog and the floor; `own_rows` of the wizard; `list_rows` of "2" and "29", lists with so many
/// rows.
extern const std::vector<Row> compared_rows;
extern const std::vector<Row> own_rows;
extern const std::vector<Row> list_rows;

/// The samples of this row have a column for each step of an apply run.
constexpr const char* calls_row = "calls";
