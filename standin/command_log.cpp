#include "command_log.h"

#include <utility>

#include "files.h"

namespace standin {

CommandLog::CommandLog(std::string log_path) : path(std::move(log_path)) {}

void CommandLog::command(const std::string& line) const {
    append_to_file(path, line + "\n");
}

void CommandLog::note(const std::string& text) const {
    command("# " + text);
}

}  // namespace standin
