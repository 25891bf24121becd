#pragma once

#include <vector>

/// The calls of relay_write_filter() in this process so far: how many networks each was about.
const std::vector<int>& relay_write_filter_calls();
