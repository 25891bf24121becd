// Whatever a server answers to "list listeners" and to the commands after it, the wizard sends
// what the model sends, ten removals at most, and judges the same.

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apply/cli_sequences.h"
#include "apply/server_session.h"
#include "fuzz/reply_model.h"
#include "fuzz/target.h"
#include "tests/apply/scripted_peer.h"

namespace {

// Reads the reply to the list, with the addresses in the rows after a line of dashes. A row is no
// line in which "+OK:" or the prompt would count.
struct ListReply {
    bool complete = false;
    bool succeeded = false;
    std::vector<std::string> addresses = {};

    explicit ListReply(ReplyModel& model) {
        bool in_table = false;
        for (auto line = model.line(); line; line = complete ? std::nullopt : model.line()) {
            const auto holds = [&](const char* part) { return any_holds({*line}, part); };
            const bool is_row = in_table && holds("|");
            if (is_row) addAddress(*line);
            in_table = is_row || holds("-----");
            succeeded = succeeded || (!is_row && holds("+OK:"));
            complete = !is_row && holds("> ");
        }
    }

    void addAddress(const std::string& row) {
        constexpr std::size_t most_addresses = 10;
        const std::size_t from = std::min(row.find_first_not_of(' '), row.size());
        if (addresses.size() < most_addresses)
            addresses.push_back(row.substr(from, row.find(' ', from) - from));
    }
};

struct Outcome {
    int result;
    std::string sent;
};

Outcome expected_outcome(ReplyModel& model) {
    std::string sent = "list listeners\r\n";
    const ListReply list(model);
    if (!list.complete) return {1, sent};
    for (const std::string& address : list.addresses) {
        sent += "remove listener address " + address + "\r\n";
        if (!model.command()) return {1, sent};
    }
    sent += "commit\r\n";
    const bool committed = model.command();
    return {committed && list.succeeded ? 0 : 1, sent};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
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
