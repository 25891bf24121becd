#include "tests/e2e/apply_screen.h"

namespace {

constexpr const char* first_line = "Please wait until the changes are applied!";

// Without the blanks and the border at its end.
std::string line_in_box(const std::string& row) {
    const std::string border = "│";
    const auto stripped = [](const std::string& text) {
        return text.substr(0, text.find_last_not_of(' ') + 1);
    };
    const std::string line = stripped(row);
    const bool bordered = line.size() >= border.size() &&
                          line.compare(line.size() - border.size(), border.size(), border) == 0;
    return bordered ? stripped(line.substr(0, line.size() - border.size())) : line;
}

}  // namespace

std::vector<std::string> progress_lines(const ScreenImage& screen) {
    constexpr int row_count = 8;
    const std::optional<Position> message = screen.find(first_line);
    if (!message)
        return {};
    const ScreenImage list =
        screen.region(message->row + 2, message->col, row_count, screen.cols() - message->col);
    std::vector<std::string> lines;
    for (int row = 0; row < row_count; ++row)
        lines.push_back(line_in_box(list.rowText(row)));
    while (!lines.empty() && lines.back().empty())
        lines.pop_back();
    return lines;
}

std::string running(const std::string& step) {
    return "--> " + step + " ...";
}

std::string done(const std::string& step) {
    return "--> " + step + " ...  ... DONE";
}

void wait_for_progress(WizardRun& wizard, const std::vector<std::string>& lines,
                       const Caller& caller) {
    const auto listed = [&](const ScreenImage& screen) { return progress_lines(screen) == lines; };
    std::string description = "the box listed:";
    for (const std::string& line : lines)
        description += "\n" + line;
    wizard.waitUntil(listed, description, caller);
}
