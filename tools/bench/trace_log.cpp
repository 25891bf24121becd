#include "tools/bench/trace_log.h"

#include <cstdlib>
#include <istream>
#include <sstream>

namespace {

bool begins_with(const std::string& text, const char* beginning) {
    return text.rfind(beginning, 0) == 0;
}

double duration_in(const std::string& text) {
    const size_t at = text.rfind('<');
    return at == std::string::npos ? 0 : std::strtod(text.c_str() + at + 1, nullptr);
}

// NAME(ARGUMENTS
TracedCall call_in(int process, double begin, const std::string& text) {
    const size_t bracket = text.find('(');
    TracedCall call;
    call.process = process;
    call.name = text.substr(0, bracket);
    call.arguments = bracket == std::string::npos ? "" : text.substr(bracket + 1);
    call.begin = begin;
    call.seconds = duration_in(text);
    return call;
}

class Reader {
  public:
    // PID TIME TEXT
    void take(const std::string& line) {
        std::istringstream fields(line);
        int process = 0;
        double time = 0;
        std::string text;
        if (!(fields >> process >> time >> std::ws) || !std::getline(fields, text))
            return;
        if (begins_with(text, "+++"))
            trace.ends[process] = time;
        else if (!begins_with(text, "---"))
            takeCall(process, time, text);
    }

    Trace trace;

  private:
    struct Begun {
        double time = 0;
        std::string text;
    };

    void takeCall(int process, double time, const std::string& text) {
        const size_t cut = text.rfind(" <unfinished ...>");
        if (cut != std::string::npos) {
            begun[process] = {time, text.substr(0, cut)};
        } else if (begins_with(text, "<... ")) {
            const Begun& first = begun[process];
            const std::string again = " resumed>";
            const std::string rest = text.substr(text.find(again) + again.size());
            trace.calls.push_back(call_in(process, first.time, first.text + rest));
        } else {
            trace.calls.push_back(call_in(process, time, text));
        }
    }

    std::map<int, Begun> begun;
};

}  // namespace

Trace read_trace(std::istream& log) {
    Reader reader;
    std::string line;
    // The last line may not have been written to its end yet.
    while (std::getline(log, line) && !log.eof())
        reader.take(line);
    return reader.trace;
}

std::string first_text(const TracedCall& call) {
    const std::string& arguments = call.arguments;
    std::string text;
    const size_t quote = arguments.find('"');
    if (quote == std::string::npos)
        return text;
    for (size_t at = quote + 1; arguments.compare(at, 2, "\\x") == 0; at += 4)
        text += static_cast<char>(std::strtol(arguments.substr(at + 2, 2).c_str(), nullptr, 16));
    return text;
}
