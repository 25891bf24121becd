#include <algorithm>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "tools/bench/parts.h"
#include "tools/bench/tables.h"
#include "tools/bench/trace.h"

namespace {

constexpr int typed_characters = 10;

// What is written does not change from one round to the next as the times do.
constexpr int rounds_of_output = 5;

// A program of the comparison, and how it is brought to each of the two boxes.
struct Peer {
    std::string name;                       // its column
    std::vector<std::string> password_box;  // the command that shows it
    std::vector<std::string> text_box;      // the command that shows it, or what comes before it
    bool is_wizard = false;
};

Peer box_program(const std::string& name) {
    const std::string title = "Please enter admin's password";
    std::vector<std::string> text_box = {find_program(name), "--title", title, "--inputbox",
                                         "Password:",        "13",      "45"};
    std::vector<std::string> password_box = text_box;
    password_box[3] = "--passwordbox";
    if (name == "dialog") password_box.insert(password_box.begin() + 3, "--insecure");
    return {name, password_box, text_box};
}

// The wizard, then those that it is compared with, then the floor. The boxes have the size and the
// texts of the wizard's first screen.
std::vector<Peer> peers_of(const std::string& wizard, const std::string& floor) {
    return {{"wizard", {wizard}, {wizard}, true},
            box_program("whiptail"),
            box_program("dialog"),
            {"floor", {floor}, {floor}}};
}

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
        if (i == 0) print_sample(field + "_first", peer.name, static_cast<double>(burst.bytes));
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
    if (peer.is_wizard) walk(*text_box, Stop::domain);
    sample_characters(peer, "text", text_box);
}

using Programs = std::vector<std::unique_ptr<MeasuredProgram>>;

// All of them are watched at the same time: those that do nothing do not disturb one another.
void sample_idleness(const std::string& row, const std::vector<Peer>& peers,
                     const Programs& programs) {
    std::vector<double> before;
    for (const auto& program : programs) before.push_back(program->processorTime());
    std::this_thread::sleep_for(std::chrono::seconds(5));
    for (size_t i = 0; i < peers.size(); ++i)
        print_sample(row, peers[i].name, programs[i]->processorTime() - before[i]);
}

}  // namespace

void compare(const std::string& wizard, const std::string& floor, int rounds) {
    const std::vector<Peer> peers = peers_of(wizard, floor);
    // The first start finds the program on the disk, the others in memory.
    for (const Peer& peer : peers) const MeasuredProgram started_once(peer.password_box);
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
        for (const Peer& peer : peers) sample_output(peer);
    }
}

void compare_idleness(const std::string& wizard, const std::string& floor) {
    const std::vector<Peer> peers = peers_of(wizard, floor);
    Programs programs;
    for (const Peer& peer : peers)
        programs.push_back(std::make_unique<MeasuredProgram>(peer.password_box));
    sample_idleness("idle_first", peers, programs);
    // The wizard says that there is no blank password; for the others the box is a dialog.
    programs[0]->type("\t\t\r");
    programs[0]->expect("Error!");
    sample_idleness("idle_dialog", peers, programs);
    for (const auto& program : programs) program->resize(34, 100);
    sample_idleness("idle_resized", peers, programs);
}
