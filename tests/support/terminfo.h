#pragma once

#include <string>

/// Whether terminfo has an entry of this name. (Starting curses on a name that is not known loses
/// memory, so ask first.)
bool terminal_known(const std::string& term);
