#pragma once

#include "tools/bench/peers.h"

/// How many times a program calls write(2) on its terminal, for each thing that it is told.
struct WriteCount {
    double first_screen;
    double password_character;
    double text_character;
    double resize;
};

/// Counts with strace(1). Throws std::system_error.
WriteCount count_writes(const Peer& peer);
