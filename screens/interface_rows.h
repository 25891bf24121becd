#pragma once

#include <string>
#include <vector>

/// The columns that the longest interface name and the longest address take together.
int interface_text_width();

/// One text for each entry of the interface table, "NAME : ADDRESS" with both parts padded to the
/// longest.
std::vector<std::string> interface_rows();

/// True for the row of a loopback interface: its name begins with "lo".
bool is_loopback_row(const std::string& row);
