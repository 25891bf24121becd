#include "tests/e2e/apply_screen.h"

namespace {

constexpr const char* first_line = "Please wait until the changes are applied!";

// Without the spaces and the border at its end.
std::string line_in_box(std::string row) {
    const std::string border = "│";
    const auto strip = [&row] { row.erase(row.find_last_not_of(' ') + 1); };
    strip();
    if (row.size() >= border.size() && row.substr(row.size() - border.size()) == border)
        row.erase(row.size() - border.size());
    strip();
    return row;
}

}  // namespace

std::vector<std::string> progress_lines(const ScreenImage& screen) {
    constexpr int row_count = 8;
    const std::optional<Position> message = screen.find(first_line);
    std::vector<std::string> lines;
    for (int row = 0; message && row < row_count; ++row)
        lines.push_back(line_in_box(
            screen.region(message->row + 2 + row, message->col, 1, screen.cols() - message->col)
                .rowText(0)));
    while (!lines.empty() && lines.back().empty()) lines.pop_back();
    return lines;
}

std::string running(const std::string& step) { return "--> " + step + " ..."; }

std::string done(const std::string& step) { return "--> " + step + " ...  ... DONE"; }

void wait_for_progress(WizardRun& wizard, const std::vector<std::string>& lines,
                       const Caller& caller) {
    std::string description = "the box listed:";
    for (const std::string& line : lines) description += "\n" + line;
    wizard.waitUntil([&](const ScreenImage& screen) { return progress_lines(screen) == lines; },
                     description, caller);
}
