#pragma once

#include <cstddef>

#include "tests/support/screen_table.h"

class MeasuredProgram;

/// Takes the wizard from its first screen to another one, with nothing typed but passwords. Returns
/// the number of bytes that it writes on the way. Throws std::runtime_error if it does not get
/// there.
size_t walk(MeasuredProgram& wizard, Stop end);
