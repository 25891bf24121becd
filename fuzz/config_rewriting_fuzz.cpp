// Whatever the server's configuration file holds, it comes out as it was but for the list of
// services, a last line that is written twice and one that is left out, and the address learned is
// the model's.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "apply/server_config.h"
#include "apply/server_session.h"
#include "fuzz/rewriting.h"
#include "fuzz/target.h"

namespace {

std::string without(const std::string& text, const std::string& unwanted) {
    std::string rest = text;
    rest.erase(std::remove_if(
                   rest.begin(), rest.end(),
                   [&](char character) { return unwanted.find(character) != std::string::npos; }),
               rest.end());
    return rest;
}

struct Key {
    std::string name;
    std::size_t end;  // of what stands before the "="
};

Key key_of(const std::string& piece) {
    const std::string text = c_text(piece);
    const std::size_t end = text.find('=');
    if (end == std::string::npos) return {"", 0};
    return {without(text.substr(0, end), " \t"), end};
}

bool is_comment(const std::string& piece) { return c_text(piece).find('#') != std::string::npos; }

std::string with_cli(const std::string& piece) {
    const std::string list = piece.substr(key_of(piece).end);
    const std::string names = without(list.substr(0, list.find(')')), std::string("\n\0(=\t", 5));
    const std::size_t end = piece.rfind(')');
    if (names.find("cli") != std::string::npos || end == std::string::npos) return piece;
    return piece.substr(0, end) + " cli )\n";
}

struct Outcome {
    std::string content = {};
    std::string host = {};
    std::uint16_t port = 0;
};

void learn_address(Outcome& outcome, const std::string& piece) {
    const std::string setting = c_text(piece).substr(key_of(piece).end);
    const std::string value = without(setting.substr(0, setting.find('#')), " \t=");
    const std::size_t end = value.find_first_of(":\n");
    outcome.host = value.substr(0, end);
    const std::string port = end == std::string::npos ? "" : value.substr(end + 1);
    outcome.port = static_cast<std::uint16_t>(std::atoi(port.c_str()));
}

// The index of the first piece from `at` on that has this key, else the end.
std::size_t find_key(const std::vector<std::string>& pieces, std::size_t at, const std::string& key,
                     bool in_comments_too = true) {
    const auto fits = [&](const std::string& piece) {
        return key_of(piece).name == key && (in_comments_too || !is_comment(piece));
    };
    while (at < pieces.size() && !fits(pieces[at])) ++at;
    return at;
}

std::string joined(const std::vector<std::string>& pieces, std::size_t from, std::size_t end) {
    std::string text;
    for (std::size_t i = from; i < std::min(end, pieces.size()); ++i) text += pieces[i];
    return text;
}

// What stands after the list of services and after the last section with an address.
std::string last_pieces(const std::vector<std::string>& pieces, std::size_t at) {
    const std::string& last = pieces.back();
    const std::string all = joined(pieces, at, pieces.size());
    if (is_comment(last)) return ends_with_whole_piece(pieces) ? all + last : all;
    return ends_with_whole_piece(pieces) ? all : joined(pieces, at, pieces.size() - 1);
}

// All that stands after the list of services.
void copy_sections(Outcome& outcome, const std::vector<std::string>& pieces, std::size_t at) {
    for (;;) {
        const std::size_t section = find_key(pieces, at, "cli", false);
        if (section >= pieces.size()) {
            outcome.content += last_pieces(pieces, at);
            return;
        }
        const std::size_t listeners = find_key(pieces, section + 1, "listeners");
        const std::size_t address = find_key(pieces, listeners + 1, "address");
        outcome.content += joined(pieces, at, address + 1);
        if (address >= pieces.size()) return;
        learn_address(outcome, pieces[address]);
        at = address + 1;
    }
}

Outcome expected_outcome(const std::vector<std::string>& pieces) {
    Outcome outcome;
    const std::size_t services = find_key(pieces, 0, "services", false);
    outcome.content = joined(pieces, 0, services);
    if (services < pieces.size()) {
        outcome.content += with_cli(pieces[services]);
        copy_sections(outcome, pieces, services + 1);
    } else if (ends_with_whole_piece(pieces)) {
        outcome.content += pieces.back();
    }
    return outcome;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string content = FuzzInput(data, size).takeRest();
    server_session = {};
    const std::string actual = rewritten(content, config_rewrite);
    const Outcome expected = expected_outcome(pieces_of(content));
    require_equal(actual, expected.content, "the content is the model's");
    require_equal(server_session.cli_host, expected.host, "the host is the model's");
    require(server_session.cli_port == expected.port, "the port is the model's");
    return 0;
}
