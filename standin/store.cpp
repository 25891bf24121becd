#include "store.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "files.h"
#include "state_file.h"

namespace standin {

namespace {
const mode_t owner_only = S_IRUSR | S_IWUSR;
}  // namespace

Store::Store(RunPaths files)
    : live(empty_state()), smtp_filters(files.smtp_filters), paths(std::move(files)) {}

std::string Store::load(const State& first) {
    std::string text;
    if (read_file(paths.state, text)) {
        const std::string problem = state_from_text(text, live);
        return problem.empty() ? problem : paths.state + ": " + problem;
    }
    const int reason = errno;
    live = first;
    return reason == ENOENT ? std::string() : paths.state + ": " + std::strerror(reason);
}

bool Store::save() const {
    return write_file(paths.state, state_to_text(live), owner_only);
}

bool Store::setPassword(const std::string& password) const {
    return write_file(paths.password, password, owner_only);
}

bool Store::isPassword(const std::string& text) const {
    std::string password;
    return read_file(paths.password, password) && text == password;
}

}  // namespace standin
