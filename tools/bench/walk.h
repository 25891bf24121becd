#pragma once

#include <cstddef>
#include <string>

class MeasuredProgram;

/// Takes the wizard from its first screen to its last, with nothing typed but passwords. Returns
/// the number of bytes that it writes on the way.
size_t walk_to_last_screen(MeasuredProgram& wizard);

/// Prints how many bytes the wizard writes until its last screen is shown.
void measure_walk(const std::string& wizard);
