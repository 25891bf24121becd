// Nothing that can be done to the wizard by keys, resizes and signals breaks it or garbles its
// screen.
//
// Each case plays 1,000 events. For a longer run: TELUMA_MONKEY_EVENTS=100000, events a case, and
// TELUMA_MONKEY_SEED=7 for other ones than usual; with a TIMEOUT of its own, as in
//
//     TELUMA_MONKEY_EVENTS=50000 ctest --preset asan -j4 --timeout 7200 -R Monkey
//
// A failure tells its seed and the number of its event.

#include "tests/reliability/monkey/monkey.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

int number_from(const char* variable, int otherwise) {
    const char* value = std::getenv(variable);
    return value == nullptr ? otherwise : std::stoi(value);
}

class MonkeyBusiness : public testing::TestWithParam<int> {};

TEST_P(MonkeyBusiness, leaves_a_wizard_whose_screen_is_as_freshly_drawn) {
    constexpr int usual_events = 1000;
    const int seed = number_from("TELUMA_MONKEY_SEED", 1) * 1000 + GetParam();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Monkey monkey(stop_at(GetParam() % stop_count), static_cast<std::uint32_t>(seed));
    monkey.play(number_from("TELUMA_MONKEY_EVENTS", usual_events));
    RecordProperty("restarts", monkey.restarts());
}

INSTANTIATE_TEST_SUITE_P(Cases, MonkeyBusiness, testing::Range(0, 20), [](const auto& case_info) {
    return std::string(facts_of(stop_at(case_info.param % stop_count)).name) + "_" +
           std::to_string(case_info.param);
});

}  // namespace
