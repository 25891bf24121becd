#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "tools/bench/comparison.h"
#include "tools/bench/measured_program.h"
#include "tools/bench/peers.h"
#include "tools/bench/samples.h"

namespace {

using Programs = std::vector<std::unique_ptr<MeasuredProgram>>;

// All of them are watched at the same time: those that do nothing do not disturb one another.
void sample_idleness(const std::string& row, const std::vector<Peer>& peers,
                     const Programs& programs) {
    std::vector<double> before;
    for (const auto& program : programs)
        before.push_back(program->processorTime());
    std::this_thread::sleep_for(std::chrono::seconds(5));
    for (size_t i = 0; i < peers.size(); ++i)
        print_sample(row, peers[i].name, programs[i]->processorTime() - before[i]);
}

}  // namespace

void compare_idleness(const std::string& wizard, const std::string& floor) {
    const std::vector<Peer> peers = peers_of(wizard, floor);
    Programs programs;
    for (const Peer& peer : peers)
        programs.push_back(std::make_unique<MeasuredProgram>(peer.password_box));
    sample_idleness("idle_first", peers, programs);
    for (size_t i = 0; i < peers.size(); ++i)
        go_to_dialog(peers[i], *programs[i]);
    sample_idleness("idle_dialog", peers, programs);
    for (const auto& program : programs)
        program->resize(34, 100);
    sample_idleness("idle_resized", peers, programs);
}
