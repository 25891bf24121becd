// Whatever a server answers to "list listeners" and to the commands after it, the wizard sends
// what the model sends, ten removals at most, and judges the same.

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apply/cli_sequences.h"
#include "apply/server_session.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/reply_model.h"
#include "fuzz/require.h"
#include "tests/apply/scripted_peer.h"

namespace {

// The addresses in the rows after a line of dashes.
std::vector<std::string> listed_addresses(const std::vector<std::string>& lines) {
    constexpr std::size_t most_addresses = 10;
    std::vector<std::string> addresses;
    bool in_table = false;
    for (const std::string& line : lines) {
        const bool is_row = in_table && line.find('|') != std::string::npos;
        if (is_row && addresses.size() < most_addresses) {
            const std::size_t from = std::min(line.find_first_not_of(' '), line.size());
            addresses.push_back(line.substr(from, line.find(' ', from) - from));
        }
        in_table = is_row || line.find("-----") != std::string::npos;
    }
    return addresses;
}

// Reads the reply to the list; a row is no line in which "+OK:" or the prompt would count.
struct ListReply {
    bool complete = false;
    bool succeeded = false;
    std::vector<std::string> lines = {};
};

ListReply read_list(ReplyModel& model) {
    ListReply reply;
    bool in_table = false;
    while (!reply.complete) {
        const std::optional<std::string> line = model.line();
        if (!line) break;
        reply.lines.push_back(*line);
        const bool is_row = in_table && line->find('|') != std::string::npos;
        in_table = is_row || line->find("-----") != std::string::npos;
        reply.succeeded = reply.succeeded || (!is_row && line->find("+OK:") != std::string::npos);
        reply.complete = !is_row && line->find("> ") != std::string::npos;
    }
    return reply;
}

struct Outcome {
    int result;
    std::string sent;
};

Outcome expected_outcome(ReplyModel& model) {
    std::string sent = "list listeners\r\n";
    const ListReply list = read_list(model);
    if (!list.complete) return {1, sent};
    for (const std::string& address : listed_addresses(list.lines)) {
        sent += "remove listener address " + address + "\r\n";
        if (!model.command()) return {1, sent};
    }
    sent += "commit\r\n";
    const bool committed = model.command();
    return {committed && list.succeeded ? 0 : 1, sent};
}

}  // namespace

extern "C" int llvm_fuzzer_test_one_input(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = FuzzInput(data, size).takeRest();
    ScriptedPeer peer(bytes);
    ReplyModel model(bytes);
    server_session.socket = Descriptor(dup(peer.clientEnd()));
    const int result = cli_reset_listeners("list listeners");
    const Outcome expected = expected_outcome(model);
    require_equal(peer.received(), expected.sent, "the commands are the model's");
    require(result == expected.result, "the result is the model's");
    return 0;
}
