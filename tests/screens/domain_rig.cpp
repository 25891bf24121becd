#include "tests/screens/domain_rig.h"

#include "wizard/base/screen_state.h"

namespace {

constexpr int frame_row = 4;
constexpr int frame_col = 10;
constexpr int frame_cols = 60;

}  // namespace

DomainRig::DomainRig() : WizardRig(state_domain) {}

std::string DomainRig::fieldText(int row, int col) {
    const int cols = frame_cols - 1 - col;
    return without_blanks_at_end(
        image().region(frame_row + row, frame_col + col, 1, cols).rowText(0));
}

std::string backspaces(size_t count) {
    return std::string(count, '\x7f');
}

std::string retyped(const std::string& text) {
    constexpr size_t longest_text = 300;
    return backspaces(longest_text) + text;
}
