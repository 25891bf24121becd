#include "tests/e2e/apply_decoy.h"

#include <cstdlib>

#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

constexpr const char* record = "/run/scratch/decoy";

// Says that it is ready by its first line, its pid; each signal is a line more.
constexpr const char* script =
    "(trap 'echo TERM >>/run/scratch/decoy' TERM\n"
    " sh -c 'echo $PPID' >/run/scratch/decoy.new\n"
    " mv /run/scratch/decoy.new /run/scratch/decoy\n"
    " while :; do sleep 1000 & wait; done) </dev/null >/dev/null 2>&1 &";

}  // namespace

Decoy::Decoy() {
    run_command({"sh", "-c", script});
    wait_until([] { return exists(record); }, "the decoy ran");
    process = std::atoi(read_file(record).c_str());
}

int Decoy::signals() const {
    int count = -1;
    for (const char character : read_file(record))
        count += character == '\n' ? 1 : 0;
    return count;
}

void Decoy::waitForSignals(int count) const {
    wait_until([&] { return signals() >= count; }, "the decoy had got its signals");
}
