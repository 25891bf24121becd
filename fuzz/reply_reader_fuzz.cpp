// Whatever a server sends is cut into the same lines as by the model, and nothing is read that does
// not belong to the line.

#include <cstdint>
#include <string>

#include "apply/cli_session.h"
#include "fuzz/reply_model.h"
#include "fuzz/target.h"
#include "tests/apply/scripted_peer.h"
#include "wizard/base/heap_text.h"

namespace {

void require_same_line(const HeapText& line, const std::optional<std::string>& expected) {
    require((line != nullptr) == expected.has_value(), "a line is there where the model has one");
    if (line != nullptr) require_equal(line.get(), *expected, "the line is the model's");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = FuzzInput(data, size).takeRest();
    const ScriptedPeer peer(bytes);
    ReplyModel model(bytes);
    // The wizard goes on with the same connection after a line that could not be read.
    bool at_end = false;
    while (!at_end) {
        at_end = model.position() == bytes.size();
        require_same_line(HeapText(cli_read_line(peer.clientEnd())), model.line());
        const std::string unread = peer.unread();
        require_equal(unread, bytes.substr(model.position(), unread.size()),
                      "what follows the line has not been read");
        require(unread.empty() == (model.position() == bytes.size()), "nothing is left out");
    }
    return 0;
}
