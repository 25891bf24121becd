#include "fuzz/reply_model.h"

#include <algorithm>
#include <utility>

#include "fuzz/target.h"

namespace {

constexpr std::size_t longest_line = 256;

bool holds(const std::string& line, const std::string& part) {
    return line.find(part) != std::string::npos;
}

}  // namespace

ReplyModel::ReplyModel(std::string bytes) : bytes(std::move(bytes)) {}

std::optional<std::string> ReplyModel::line() {
    std::string read;
    while (read.size() < longest_line && at < bytes.size()) {
        const char byte = bytes[at++];
        if (byte != '\r' && byte != '>') {
            read += byte;
            continue;
        }
        const std::string pair = byte + bytes.substr(at, 1);
        at += pair.size() - 1;
        if (pair == "\r\n") return c_text(read);
        if (pair == "> ")
            return read.size() + 1 < longest_line ? std::optional(c_text(read + pair))
                                                  : std::nullopt;
    }
    return std::nullopt;
}

std::optional<std::vector<std::string>> ReplyModel::linesUpTo(const std::string& end) {
    std::vector<std::string> lines;
    while (lines.empty() || !holds(lines.back(), end)) {
        const std::optional<std::string> next = line();
        if (!next) return std::nullopt;
        lines.push_back(*next);
    }
    return lines;
}

bool ReplyModel::command() {
    const auto reply = linesUpTo("> ");
    return reply && any_holds(*reply, "+OK:");
}

bool any_holds(const std::vector<std::string>& lines, const std::string& part) {
    return std::any_of(lines.begin(), lines.end(),
                       [&](const std::string& line) { return holds(line, part); });
}
