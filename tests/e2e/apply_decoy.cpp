#include "tests/e2e/apply_decoy.h"

#include <algorithm>
#include <string>

#include "tests/support/files.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"

namespace {

constexpr const char* record = "/run/scratch/decoy";

constexpr const char* script =
    "(trap 'echo TERM >>/run/scratch/decoy' TERM\n"
    " sh -c 'echo $PPID' >/run/scratch/decoy.new\n"
    " mv /run/scratch/decoy.new /run/scratch/decoy\n"
    " while :; do sleep 1000 & wait; done) </dev/null >/dev/null 2>&1 &";

}  // namespace

Decoy::Decoy() {
    run_command({"sh", "-c", script});
    wait_until([] { return exists(record); }, "the decoy ran");
}

pid_t Decoy::pid() const { return std::stoi(read_file(record)); }

void Decoy::waitForSignals(int count) const {
    const auto has_got_them = [count] {
        const std::string lines = read_file(record);
        return std::count(lines.begin(), lines.end(), '\n') > count;
    };
    wait_until(has_got_them, "the decoy had got its signals");
}
