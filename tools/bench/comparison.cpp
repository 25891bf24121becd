#include "tools/bench/comparison.h"

#include <algorithm>
#include <vector>

#include "tools/bench/measured_program.h"
#include "tools/bench/peers.h"
#include "tools/bench/samples.h"
#include "tools/bench/tracing.h"

namespace {

constexpr int typed_characters = 10;

// What is written does not change from one round to the next as the times do.
constexpr int rounds_of_output = 5;

// Bytes and writes of what a traced program does between two looks.
class WriteMeter {
  public:
    explicit WriteMeter(TracedProgram& watched)
        : program(watched), counted(terminal_writes(watched.trace())) {}

    void print(const std::string& what, const Peer& peer, const Burst& burst) {
        print_sample(what + "_bytes", peer.name, static_cast<double>(burst.bytes));
        const int writes = terminal_writes(program.trace());
        print_sample(what + "_writes", peer.name, writes - counted);
        counted = writes;
    }

  private:
    TracedProgram& program;
    int counted;
};

// Returns the time that it took.
double sample_start(const Peer& peer) {
    const MeasuredProgram program(peer.password_box);
    print_sample("start", peer.name, program.firstScreen().milliseconds);
    print_sample("memory", peer.name, program.memory());
    return program.firstScreen().milliseconds;
}

void sample_characters(const Peer& peer, const std::string& field, TracedProgram& program) {
    WriteMeter meter(program);
    for (int i = 0; i < typed_characters; ++i) {
        const Burst burst = program->type("q");
        meter.print(field, peer, burst);
        if (i == 0)
            print_sample(field + "_first", peer.name, static_cast<double>(burst.bytes));
    }
}

void sample_output(const Peer& peer) {
    TracedProgram password_box(options_for_writes, peer.password_box);
    print_sample("screen_bytes", peer.name, static_cast<double>(password_box->firstScreen().bytes));
    print_sample("screen_writes", peer.name, terminal_writes(password_box.trace()));
    sample_characters(peer, "password", password_box);
    WriteMeter meter(password_box);
    meter.print("resize", peer, password_box->resize(34, 100));

    TracedProgram text_box(options_for_writes, peer.text_box);
    go_to_text_box(peer, *text_box);
    sample_characters(peer, "text", text_box);
}

}  // namespace

void compare(const std::string& wizard, const std::string& floor, int rounds) {
    const std::vector<Peer> peers = peers_of(wizard, floor);
    // The first start finds the program on the disk, the others in memory.
    for (const Peer& peer : peers)
        const MeasuredProgram started_once(peer.password_box);
    for (int round = 0; round < rounds; ++round) {
        std::vector<double> starts(peers.size());
        for (size_t turn = 0; turn < peers.size(); ++turn) {
            // There and back, so that none always follows the same one.
            const size_t i = round % 2 == 0 ? turn : peers.size() - 1 - turn;
            starts[i] = sample_start(peers[i]);
        }
        for (size_t i = 0; i < peers.size(); ++i)
            print_sample("beyond_floor", peers[i].name, starts[i] - starts.back());
    }
    for (int round = 0; round < std::min(rounds, rounds_of_output); ++round) {
        for (const Peer& peer : peers)
            sample_output(peer);
    }
}
