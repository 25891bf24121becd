#include "tools/bench/comparison.h"

#include <chrono>
#include <thread>

#include "tools/bench/measured_program.h"
#include "tools/bench/peers.h"
#include "tools/bench/table.h"
#include "tools/bench/write_count.h"

namespace {

constexpr int rounds = 21;
constexpr int typed_characters = 8;

// What a round finds out about one program.
struct Samples {
    std::vector<double> start, memory, screen_bytes, password_bytes, text_bytes, resize_bytes;
};

double bytes_per_character(MeasuredProgram& program) {
    // The first one may find the terminal in another state than those that follow.
    program.type("q");
    std::vector<double> bytes;
    for (int i = 0; i < typed_characters; ++i)
        bytes.push_back(static_cast<double>(program.type("q").bytes.size()));
    return median(bytes);
}

void take_times(const Peer& peer, Samples& samples) {
    const MeasuredProgram program(peer.password_box);
    samples.start.push_back(program.firstScreen().milliseconds);
    samples.memory.push_back(static_cast<double>(program.memory()));
    samples.screen_bytes.push_back(static_cast<double>(program.firstScreen().bytes.size()));
}

void take_bytes(const Peer& peer, Samples& samples) {
    MeasuredProgram password_box(peer.password_box);
    samples.password_bytes.push_back(bytes_per_character(password_box));
    samples.resize_bytes.push_back(static_cast<double>(password_box.resize(34, 100).bytes.size()));
    MeasuredProgram text_box(peer.text_box);
    text_box.type(peer.keys_to_text_box);
    samples.text_bytes.push_back(bytes_per_character(text_box));
}

// Processor time in five seconds in which nothing happens.
double idle_time(const MeasuredProgram& program) {
    const double before = program.processorTime();
    std::this_thread::sleep_for(std::chrono::seconds(5));
    return program.processorTime() - before;
}

// For the peers the box is the whole program.
void compare_idleness(const std::vector<Peer>& peers) {
    Figures first;
    Figures dialog;
    Figures resized;
    for (const Peer& peer : peers) {
        MeasuredProgram program(peer.password_box);
        first.push_back(idle_time(program));
        const bool is_wizard = &peer == &peers.front();
        if (is_wizard)
            program.type("\t\t\r");  // there is no blank password
        dialog.push_back(is_wizard ? idle_time(program) : first.back());
        program.resize(34, 100);
        resized.push_back(idle_time(program));
    }
    print_row("processor time, ms in 5 s, first screen", first, 1);
    print_row("the same, an open dialog", dialog, 1);
    print_row("the same, an open dialog after a resize", resized, 1);
}

Figures medians(const std::vector<Samples>& all, std::vector<double> Samples::*kind) {
    Figures figures;
    for (const Samples& samples : all)
        figures.push_back(median(samples.*kind));
    return figures;
}

Figures counts(const std::vector<WriteCount>& all, double WriteCount::*kind) {
    Figures figures;
    for (const WriteCount& count : all)
        figures.push_back(count.*kind);
    return figures;
}

}  // namespace

void compare(const std::string& wizard, const std::string& floor) {
    const std::vector<Peer> peers = peers_of(wizard, floor);
    std::vector<Samples> all(peers.size());
    for (int round = 0; round < rounds; ++round) {
        for (size_t i = 0; i < peers.size(); ++i)
            take_times(peers[i], all[i]);
    }
    std::vector<WriteCount> writes;
    for (size_t i = 0; i < peers.size(); ++i) {
        take_bytes(peers[i], all[i]);
        writes.push_back(count_writes(peers[i]));
    }

    print_heading();
    print_row("exec to the complete first screen, ms", medians(all, &Samples::start), 2);
    print_row("bytes of the first screen", medians(all, &Samples::screen_bytes), 0);
    print_row("writes for the first screen", counts(writes, &WriteCount::first_screen), 0);
    print_row("bytes per character, password", medians(all, &Samples::password_bytes), 0);
    print_row("writes per character, password", counts(writes, &WriteCount::password_character), 0);
    print_row("bytes per character, text", medians(all, &Samples::text_bytes), 0);
    print_row("writes per character, text", counts(writes, &WriteCount::text_character), 0);
    print_row("bytes for a resize to 100x34", medians(all, &Samples::resize_bytes), 0);
    print_row("writes for a resize to 100x34", counts(writes, &WriteCount::resize), 0);
    print_row("memory (PSS), kB", medians(all, &Samples::memory), 0);
    compare_idleness(peers);
}
