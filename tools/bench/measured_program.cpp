#include "tools/bench/measured_program.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <ctime>
#include <fstream>
#include <sstream>

#include "tests/support/descriptor.h"
#include "tests/support/environment.h"
#include "tests/support/files.h"

namespace {

// A program that has written nothing for so long is taken to wait. Only bursts are told apart by
// it; it is in no figure.
constexpr int quiet_milliseconds = 300;

// A loaded machine may take so long to start a program.
constexpr int patience_milliseconds = 5000;

double now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

[[noreturn]] void run_in_terminal(int terminal, char** arguments, double& started) {
    setsid();
    ioctl(terminal, TIOCSCTTY, 0);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(terminal, standard);
    started = now();
    execvp(arguments[0], arguments);
    _exit(127);
}

std::string proc_file(pid_t process, const char* name) {
    return "/proc/" + std::to_string(process) + "/" + name;
}

}  // namespace

MeasuredProgram::MeasuredProgram(std::vector<std::string> arguments, int rows, int cols)
    : pty(rows, cols) {
    first_screen = burst(start(arguments));
}

MeasuredProgram::~MeasuredProgram() {
    kill(-child, SIGKILL);
    waitpid(child, nullptr, 0);
}

// Returns the moment of exec, which the child leaves in memory that it shares.
double MeasuredProgram::start(std::vector<std::string>& arguments) {
    const Descriptor terminal = pty.openProgramSide();
    std::vector<char*> pointers = exec_array(arguments);
    void* shared =
        mmap(nullptr, sizeof(double), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto* started = static_cast<double*>(shared);
    checked(shared == MAP_FAILED ? -1 : 0, "mmap");
    *started = 0;
    child = checked(fork(), "fork");
    if (child == 0)
        run_in_terminal(terminal.get(), pointers.data(), *started);
    pollfd output{pty.descriptor(), POLLIN, 0};
    poll(&output, 1, patience_milliseconds);
    const double since = *started;
    munmap(shared, sizeof(double));
    return since;
}

bool MeasuredProgram::takeOutput(Burst& burst, double since, int milliseconds) {
    pollfd output{pty.descriptor(), POLLIN, 0};
    if (poll(&output, 1, milliseconds) <= 0)
        return false;
    const std::string bytes = pty.read();
    burst.bytes += bytes;
    burst.milliseconds = now() - since;
    return !bytes.empty();
}

Burst MeasuredProgram::burst(double since) {
    Burst burst;
    while (takeOutput(burst, since, quiet_milliseconds))
        continue;
    return burst;
}

Burst MeasuredProgram::type(const std::string& bytes) {
    const double since = now();
    pty.write(bytes);
    return burst(since);
}

Burst MeasuredProgram::typeUntil(const std::string& bytes, const std::string& text) {
    constexpr int longest_wait = 30000;
    Burst burst;
    const double since = now();
    pty.write(bytes);
    while (burst.bytes.find(text) == std::string::npos && takeOutput(burst, since, longest_wait))
        continue;
    return burst;
}

Burst MeasuredProgram::resize(int rows, int cols) {
    const double since = now();
    pty.resize(rows, cols);
    return burst(since);
}

long MeasuredProgram::memory() const {
    std::ifstream file(proc_file(child, "smaps_rollup"));
    std::string word;
    long kilobytes = -1;
    while (file >> word && word != "Pss:")
        continue;
    file >> kilobytes;
    return kilobytes;
}

double MeasuredProgram::processorTime() const {
    // proc(5): the first number of schedstat is the time on a processor, in nanoseconds.
    std::ifstream file(proc_file(child, "schedstat"));
    double nanoseconds = 0;
    file >> nanoseconds;
    return nanoseconds / 1e6;
}
