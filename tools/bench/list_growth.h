#pragma once

#include <string>

/// Prints what it costs to draw the WebAdmin screen's list of interfaces and to move its bar, for
/// as many rows as the host has interfaces.
void measure_list(const std::string& wizard, const std::string& rows);
