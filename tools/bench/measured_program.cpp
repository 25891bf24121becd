#include "tools/bench/measured_program.h"

#include <linux/close_range.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "tests/e2e/key_wait.h"
#include "tests/support/descriptor.h"
#include "tests/support/process.h"
#include "tests/support/screen_text.h"
#include "tests/support/wait_until.h"

namespace {

// After so long a silence this process looks whether the program rests. To look more often would
// take a processor from it.
constexpr int silence_milliseconds = 10;

// A piece of output.
struct Piece {
    std::string bytes;
    double time;               // milliseconds, at which it was here
    std::string picture = {};  // once it has been shown to the terminal
};

double now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// Says when on `start`, which exec closes.
[[noreturn]] void run_in_terminal(int terminal, char** arguments, int start) {
    setsid();
    ioctl(terminal, TIOCSCTTY, 0);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(terminal, standard);
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    const double started = now();
    if (write(start, &started, sizeof(started)) == sizeof(started)) execv(arguments[0], arguments);
    _exit(127);
}

std::string proc_file(pid_t process, const std::string& name) {
    return "/proc/" + std::to_string(process) + "/" + name;
}

// Takes what is written next; false when nothing comes for `milliseconds`.
bool take_piece(Pty& pty, std::vector<Piece>& pieces, int milliseconds) {
    pollfd output{pty.descriptor(), POLLIN, 0};
    if (poll(&output, 1, milliseconds) <= 0) return false;
    const std::string bytes = pty.read();
    pieces.push_back({bytes, now()});
    return !bytes.empty();
}

// The terminal is shown the pieces that it has not seen. While a program writes nothing is done but
// to note the time.
void show(Emulator& emulator, std::vector<Piece>& pieces) {
    for (Piece& piece : pieces) {
        if (!piece.picture.empty()) continue;
        emulator.feed(piece.bytes);
        piece.picture = to_text(emulator.image());
    }
}

// The number of the system call in which a process is, then its arguments, as proc(5) has them in
// `syscall`; nothing while it runs.
std::vector<unsigned long> call_of(pid_t process) {
    std::ifstream file(proc_file(process, "syscall"));
    std::vector<unsigned long> numbers;
    std::string word;
    while (file >> word && word != "running" && word[0] != '-')
        numbers.push_back(std::stoul(word, nullptr, 0));
    return numbers;
}

bool is_terminal(pid_t process, unsigned long descriptor) {
    std::error_code ignored;
    const std::string path = std::filesystem::read_symlink(
        proc_file(process, "fd/" + std::to_string(descriptor)), ignored);
    return path.rfind("/dev/pts/", 0) == 0 || path == "/dev/tty";
}

bool waits_without_end(pid_t process) {
    const std::vector<unsigned long> call = call_of(process);
    if (call.size() < 6) return false;
    switch (call[0]) {
        case SYS_read:
            return is_terminal(process, call[1]);
#ifdef SYS_poll
        case SYS_poll:
            return static_cast<int>(call[3]) < 0;
#endif
#ifdef SYS_select
        case SYS_select:
#endif
        case SYS_pselect6:
            return call[5] == 0;
        case SYS_ppoll:
            return call[3] == 0;
        default:
            return false;
    }
}

}  // namespace

MeasuredProgram::MeasuredProgram(std::vector<std::string> arguments, int rows, int cols)
    : name(arguments.at(0)), pty(rows, cols), emulator(rows, cols, "xterm-256color") {
    const Descriptor terminal = pty.openProgramSide();
    std::vector<char*> pointers = exec_array(arguments);
    const Pipe start = make_pipe();
    child.pid = checked(fork(), "fork");
    if (child.pid == 0) run_in_terminal(terminal.get(), pointers.data(), start.write_end.get());
    double started = 0;
    checked(static_cast<int>(read(start.read_end.get(), &started, sizeof(started))), "read");
    first = watchUntilRest(started);
}

MeasuredProgram::Child::~Child() {
    if (pid <= 0) return;
    // The group is there once the child has come to make it. A wizard that is asked to end removes
    // what it has made on the host.
    kill(-pid, SIGTERM);
    kill(pid, SIGTERM);
    const Deadline deadline;
    while (waitpid(pid, nullptr, WNOHANG) == 0) {
        if (deadline.passed()) {
            kill(-pid, SIGKILL);
            kill(pid, SIGKILL);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

Burst MeasuredProgram::watch(double cause, const std::function<bool()>& complete) {
    const Deadline deadline;
    std::vector<Piece> pieces;
    for (bool done = false; !done;) {
        if (deadline.passed()) fail("was waited for in vain");
        if (take_piece(pty, pieces, silence_milliseconds)) continue;
        show(emulator, pieces);
        if (!process_running(pid())) fail("has ended");
        done = complete();
    }
    while (take_piece(pty, pieces, 0)) continue;
    show(emulator, pieces);

    Burst burst;
    for (const Piece& piece : pieces) burst.bytes += piece.bytes.size();
    for (auto piece = pieces.rbegin(); burst.bytes > 0 && piece != pieces.rend(); ++piece) {
        if (piece->picture != pieces.back().picture) break;
        burst.milliseconds = piece->time - cause;
    }
    return burst;
}

Burst MeasuredProgram::watchUntilRest(double cause) {
    return watch(cause, [this] { return rests_for_key(pid()); });
}

Burst MeasuredProgram::type(const std::string& bytes) {
    const double typed = now();
    pty.write(bytes);
    return watchUntilRest(typed);
}

Burst MeasuredProgram::typeUntil(const std::string& bytes, const std::string& text) {
    const double typed = now();
    pty.write(bytes);
    return watch(typed, [&] { return emulator.image().shows(text); });
}

Burst MeasuredProgram::resize(int rows, int cols) {
    emulator.resize(rows, cols);
    const double resized = now();
    pty.resize(rows, cols);
    return watchUntilRest(resized);
}

void MeasuredProgram::expect(const std::string& text) const {
    if (!emulator.image().shows(text)) fail("does not show \"" + text + "\"");
}

double MeasuredProgram::memory() const {
    std::ifstream file(proc_file(pid(), "smaps_rollup"));
    std::string word;
    double kilobytes = 0;
    while (file >> word && word != "Pss:") continue;
    if (!(file >> kilobytes)) fail("can't be asked for its memory");
    return kilobytes;
}

double MeasuredProgram::processorTime() const {
    // proc(5): the first number of schedstat is the time on a processor, in nanoseconds.
    std::ifstream file(proc_file(pid(), "schedstat"));
    double nanoseconds = 0;
    if (!(file >> nanoseconds)) fail("can't be asked for its processor time");
    return nanoseconds / 1e6;
}

void MeasuredProgram::fail(const std::string& what) const {
    throw std::runtime_error(name + " " + what + "; the screen:\n" + emulator.image().text());
}

bool rests_for_key(pid_t program) { return waits_without_end(program) && waits_for_key(program); }

std::string find_program(const std::string& name) {
    std::string path = run_command({"sh", "-c", "command -v " + name}).out;
    if (path.empty()) throw std::runtime_error(name + " is not installed");
    path.pop_back();
    return path;
}
