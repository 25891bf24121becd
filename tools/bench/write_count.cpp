#include "tools/bench/write_count.h"

#include <fstream>

#include "tests/support/temp_dir.h"
#include "tools/bench/measured_program.h"

namespace {

constexpr int typed_characters = 8;

// A program under strace, which writes down each write with what the descriptor is open on.
class TracedProgram {
  public:
    explicit TracedProgram(const std::vector<std::string>& command)
        : program(traced(command, log())) {}

    // Writes on the terminal since the last call.
    int news() {
        std::ifstream file(log());
        std::string line;
        int writes = 0;
        while (std::getline(file, line)) {
            const bool on_terminal = line.find("</dev/pts/") != std::string::npos ||
                                     line.find("</dev/tty>") != std::string::npos;
            writes += on_terminal ? 1 : 0;
        }
        const int since = writes - counted;
        counted = writes;
        return since;
    }

    double perCharacter() {
        program.type("q");
        news();
        for (int i = 0; i < typed_characters; ++i)
            program.type("q");
        return static_cast<double>(news()) / typed_characters;
    }

    MeasuredProgram& operator*() { return program; }

  private:
    static std::vector<std::string> traced(const std::vector<std::string>& command,
                                           const std::string& log) {
        std::vector<std::string> arguments{"strace", "-qq", "-y", "-e", "trace=write,writev",
                                           "-o",     log,   "--"};
        arguments.insert(arguments.end(), command.begin(), command.end());
        return arguments;
    }

    std::string log() const { return directory.path() + "/writes"; }

    TempDir directory;
    MeasuredProgram program;
    int counted = 0;
};

}  // namespace

WriteCount count_writes(const Peer& peer) {
    WriteCount count{};
    TracedProgram password_box(peer.password_box);
    count.first_screen = password_box.news();
    count.password_character = password_box.perCharacter();
    (*password_box).resize(34, 100);
    count.resize = password_box.news();

    TracedProgram text_box(peer.text_box);
    (*text_box).type(peer.keys_to_text_box);
    count.text_character = text_box.perCharacter();
    return count;
}
