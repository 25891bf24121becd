#pragma once

#include <string>

/// Whether terminfo has an entry of this name. (Starting curses on a name that is not known loses
/// memory, so ask first.)
bool terminal_known(const std::string& term);

/// What a terminal sends or understands by its entry in terminfo, "kcuu1" for example; empty where
/// it has nothing of the kind. A terminal that is not known throws std::runtime_error.
std::string terminfo_text(const std::string& term, const std::string& capability);
