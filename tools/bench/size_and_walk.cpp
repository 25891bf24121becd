#include "tests/support/files.h"
#include "tools/bench/measured_program.h"
#include "tools/bench/samples.h"
#include "tools/bench/walk.h"
#include "tools/bench/wizard_alone.h"

void measure_size_and_walk(const std::string& wizard) {
    print_sample("executable", "wizard", static_cast<double>(file_facts(wizard).size));
    MeasuredProgram program({wizard});
    const size_t bytes = program.firstScreen().bytes + walk(program, Stop::sendmail);
    print_sample("walk_bytes", "wizard", static_cast<double>(bytes));
}
