#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tools/bench/measured_program.h"
#include "tools/bench/samples.h"
#include "tools/bench/walk.h"
#include "tools/bench/wizard_alone.h"

namespace {

void sample_size(const std::string& row, const std::string& path) {
    print_sample(row, "wizard", static_cast<double>(file_facts(path).size));
}

}  // namespace

void measure_size_and_walk(const std::string& wizard) {
    const TempDir directory;
    const std::string stripped = directory / "stripped";
    run_command({"strip", "-o", stripped, wizard});
    sample_size("executable", wizard);
    sample_size("stripped", stripped);

    MeasuredProgram program({wizard});
    const size_t bytes = program.firstScreen().bytes + walk(program, Stop::sendmail);
    print_sample("walk_bytes", "wizard", static_cast<double>(bytes));
}
