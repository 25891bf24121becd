// Whatever a server answers to "show attr", the services and the path of the filters script are the
// model's.

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
#include "wizard/base/heap_text.h"

namespace {

using Lines = std::vector<std::string>;

// The last of the lines that shows a value of the attribute, which begins with `open`; an empty one
// where it is only named.
std::optional<std::string> line_with(const Lines& lines, const std::string& attribute, char open) {
    std::optional<std::string> found;
    for (const std::string& line : lines) {
        if (line.find(attribute) == std::string::npos) continue;
        if (line.find(open) != std::string::npos)
            found = line;
        else if (!found)
            found = "";
    }
    return found;
}

// What stands between `open` and `close`, which may be missing.
std::string enclosed(const std::string& line, char open, char close) {
    const std::size_t from = line.find(open);
    if (from == std::string::npos) return "";
    const std::string rest = line.substr(from + 1);
    return rest.substr(0, rest.find(close));
}

std::optional<std::string> expected_services(ReplyModel& model) {
    const auto lines = model.linesUpTo(">");
    if (!lines || !any_holds(*lines, "OK:")) return std::nullopt;
    const auto line = line_with(*lines, "services", '(');
    if (!line) return std::nullopt;
    const bool logs = enclosed(*line, '(', ')').find("log") != std::string::npos;
    return std::string(logs ? "log " : "") + "smtpIncoming smtpOutgoing processing webadmin cli";
}

std::optional<std::string> expected_filters_file(ReplyModel& model) {
    const auto lines = model.linesUpTo(">");
    if (!lines) return std::nullopt;
    std::string path = enclosed(line_with(*lines, "smtpFiltersFile", '"').value_or(""), '"', '"');
    path.erase(std::remove(path.begin(), path.end(), ' '), path.end());
    return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const bool services = input.takeNumber(0, 1) == 0;
    const std::string bytes = input.takeRest();
    const ScriptedPeer peer(bytes);
    ReplyModel model(bytes);
    server_session.socket = Descriptor(dup(peer.clientEnd()));
    const HeapText text(services ? cli_read_services("show") : cli_read_filters_file("show"));
    const auto expected = services ? expected_services(model) : expected_filters_file(model);
    require((text != nullptr) == expected.has_value(), "a text is there where the model has one");
    if (text != nullptr) require_equal(text.get(), *expected, "the text is the model's");
    return 0;
}
