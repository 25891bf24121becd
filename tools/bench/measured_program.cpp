#include "tools/bench/measured_program.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "tests/support/descriptor.h"
#include "tests/support/process.h"
#include "tests/support/screen_text.h"
#include "tests/support/wait_until.h"
#include "tools/bench/key_rest.h"

namespace {

// After so long a silence this process looks whether the program rests. To look more often would
// take a processor from it.
constexpr int silence_milliseconds = 10;

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
    close_range(STDERR_FILENO + 1, ~0U, 0);
    started = now();
    execv(arguments[0], arguments);
    _exit(127);
}

std::string proc_file(pid_t process, const char* name) {
    return "/proc/" + std::to_string(process) + "/" + name;
}

// Memory in which a child leaves a number.
class SharedNumber {
  public:
    SharedNumber()
        : memory(mmap(nullptr, sizeof(double), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                      -1, 0)) {
        checked(memory == MAP_FAILED ? -1 : 0, "mmap");
    }
    ~SharedNumber() { munmap(memory, sizeof(double)); }
    SharedNumber(const SharedNumber&) = delete;
    SharedNumber& operator=(const SharedNumber&) = delete;

    double& operator*() const { return *static_cast<double*>(memory); }

  private:
    void* memory;
};

}  // namespace

MeasuredProgram::MeasuredProgram(std::vector<std::string> arguments, int rows, int cols)
    : name(arguments.at(0)), pty(rows, cols), emulator(rows, cols, "xterm-256color") {
    const Descriptor terminal = pty.openProgramSide();
    std::vector<char*> pointers = exec_array(arguments);
    const SharedNumber started;
    child.pid = checked(fork(), "fork");
    if (child.pid == 0)
        run_in_terminal(terminal.get(), pointers.data(), *started);
    first = watch([this] { return rests_for_key(pid()); }).since(*started);
}

MeasuredProgram::Child::~Child() {
    if (pid <= 0)
        return;
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

// Takes what is written next; false when nothing comes for `milliseconds`.
bool MeasuredProgram::takePiece(std::vector<Piece>& pieces, int milliseconds) {
    pollfd output{pty.descriptor(), POLLIN, 0};
    if (poll(&output, 1, milliseconds) <= 0)
        return false;
    const std::string bytes = pty.read();
    pieces.push_back({bytes, now(), std::nullopt});
    return !bytes.empty();
}

// The terminal is shown the pieces that it has not seen. While a program writes nothing is done but
// to note the time.
void MeasuredProgram::show(std::vector<Piece>& pieces) {
    for (Piece& piece : pieces) {
        if (piece.picture)
            continue;
        emulator.feed(piece.bytes);
        piece.picture = emulator.image();
    }
}

MeasuredProgram::Answer MeasuredProgram::watch(const std::function<bool()>& complete) {
    const Deadline deadline;
    std::vector<Piece> pieces;
    for (bool done = false; !done;) {
        if (deadline.passed())
            fail("was waited for in vain");
        if (takePiece(pieces, silence_milliseconds))
            continue;
        show(pieces);
        if (!process_running(pid()))
            fail("has ended");
        done = complete();
    }
    while (takePiece(pieces, 0))
        continue;
    show(pieces);

    Answer answer;
    for (const Piece& piece : pieces)
        answer.bytes += piece.bytes.size();
    const std::string last = to_text(emulator.image());
    for (auto piece = pieces.rbegin(); piece != pieces.rend(); ++piece) {
        if (to_text(*piece->picture) != last)
            break;
        answer.completed = piece->time;
    }
    return answer;
}

Burst MeasuredProgram::Answer::since(double cause) const {
    return {bytes, bytes == 0 ? 0 : completed - cause};
}

Burst MeasuredProgram::type(const std::string& bytes) {
    const double typed = now();
    pty.write(bytes);
    return watch([this] { return rests_for_key(pid()); }).since(typed);
}

Burst MeasuredProgram::typeUntil(const std::string& bytes, const std::string& text) {
    const double typed = now();
    pty.write(bytes);
    return watch([&] { return emulator.image().shows(text); }).since(typed);
}

Burst MeasuredProgram::resize(int rows, int cols) {
    emulator.resize(rows, cols);
    const double resized = now();
    pty.resize(rows, cols);
    return watch([this] { return rests_for_key(pid()); }).since(resized);
}

void MeasuredProgram::expect(const std::string& text) const {
    if (!emulator.image().shows(text))
        fail("does not show \"" + text + "\"");
}

double MeasuredProgram::memory() const {
    std::ifstream file(proc_file(pid(), "smaps_rollup"));
    std::string word;
    double kilobytes = 0;
    while (file >> word && word != "Pss:")
        continue;
    if (!(file >> kilobytes))
        fail("can't be asked for its memory");
    return kilobytes;
}

double MeasuredProgram::processorTime() const {
    // proc(5): the first number of schedstat is the time on a processor, in nanoseconds.
    std::ifstream file(proc_file(pid(), "schedstat"));
    double nanoseconds = 0;
    if (!(file >> nanoseconds))
        fail("can't be asked for its processor time");
    return nanoseconds / 1e6;
}

void MeasuredProgram::fail(const std::string& what) const {
    throw std::runtime_error(name + " " + what + "; the screen:\n" + emulator.image().text());
}
