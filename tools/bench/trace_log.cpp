#include "tools/bench/trace_log.h"

#include <cstdlib>
#include <fstream>
#include <map>

namespace {

const char* const cut_short = " <unfinished ...>";

bool begins_with(const std::string& text, const char* beginning) {
    return text.rfind(beginning, 0) == 0;
}

double duration_in(const std::string& text) {
    const size_t at = text.rfind('<');
    return at == std::string::npos ? 0 : std::strtod(text.c_str() + at + 1, nullptr);
}

}  // namespace

std::vector<TracedCall> read_trace(const std::string& path) {
    std::ifstream file(path);
    std::vector<TracedCall> calls;
    std::map<int, std::string> begun;
    TracedCall call;
    while (file >> call.process >> std::ws && std::getline(file, call.text)) {
        if (begins_with(call.text, "---") || begins_with(call.text, "+++"))
            continue;
        const size_t cut = call.text.find(cut_short);
        if (cut != std::string::npos) {
            begun[call.process] = call.text.substr(0, cut);
            continue;
        }
        if (begins_with(call.text, "<..."))
            call.text.insert(0, begun[call.process]);
        call.seconds = duration_in(call.text);
        calls.push_back(call);
    }
    return calls;
}
