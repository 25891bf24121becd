// Hosts with more interfaces than a screen has room for: what does not fit is cut off, and the keys
// work all the same. The interfaces are lan1, lan2 ... with the addresses 10.1.0.1, 10.2.0.1 ... in
// a network each.

#include <gtest/gtest.h>

#include <map>

#include "tests/e2e/endings.h"
#include "tests/e2e/sizes.h"
#include "tests/e2e/stop_params.h"
#include "tests/e2e/wizard_run.h"
#include "tests/support/expect_screen.h"

namespace {

// More than any list has rows, so that the bar ends up on the last.
constexpr int far = 50;

constexpr Size large = {60, 200};

std::string size_name(const testing::TestParamInfo<Size>& info) {
    return std::to_string(info.param.cols) + "_columns";
}

// The buttons may be out of sight, so nobody can tell from the screen where the focus is. WebAdmin,
// left by its "OK", has it there; the others begin afresh.
int tabs_to_back(Stop stop) {
    return stop == Stop::webadmin ? 1 : facts_of(stop).back;
}

class HostWith29Interfaces : public testing::TestWithParam<Size> {
  protected:
    WizardRun wizard{GetParam().rows, GetParam().cols};
};

INSTANTIATE_TEST_SUITE_P(Sizes, HostWith29Interfaces, testing::ValuesIn(terminal_sizes), size_name);

TEST_P(HostWith29Interfaces, is_walked_through_forwards_and_back) {
    wizard.walk(Stop::password, Stop::sendmail);
    for (int place = place_of(Stop::sendmail); place > 0; --place) {
        wizard.waitForScreen(stop_at(place));
        wizard.pressTimes(Key::tab, tabs_to_back(stop_at(place)));
        wizard.press(Key::enter);
    }
    wizard.waitForScreen(Stop::password);
}

TEST_P(HostWith29Interfaces, lets_the_last_of_them_be_chosen_out_of_sight_with_a_port_of_its_own) {
    wizard.walk(Stop::password, Stop::webadmin);
    wizard.pressTimes(Key::down, far);
    wizard.press(Key::tab);
    wizard.retype(5, "1234");
    wizard.waitForKey();
    wizard.resize(large.rows, large.cols);
    wizard.waitForKey();
    EXPECT_TRUE(wizard.image().shows("│  lan27 : 10.27.0.1  9000   │"));
    EXPECT_TRUE(wizard.image().shows("│$ lan28 : 10.28.0.1  1234   │"));
    wizard.pressNext(Stop::webadmin);
    wizard.waitForScreen(Stop::smtp);
}

TEST_P(HostWith29Interfaces, lets_the_last_network_be_unticked_out_of_sight) {
    wizard.walk(Stop::password, Stop::relay);
    wizard.pressTimes(Key::down, far);
    wizard.press(Key::space);
    wizard.waitForKey();
    wizard.resize(large.rows, large.cols);
    wizard.waitForKey();
    EXPECT_TRUE(wizard.image().shows("[x] 10.27.0.0/255.255.0.0"));
    EXPECT_TRUE(wizard.image().shows("[ ] 10.28.0.0/255.255.0.0"));
}

TEST_P(HostWith29Interfaces, is_interrupted_with_the_terminal_left_usable) {
    wizard.walk(Stop::password, Stop::relay);
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
}

class ScreensOfHostWith29Interfaces : public testing::TestWithParam<Stop> {};

INSTANTIATE_TEST_SUITE_P(Screens, ScreensOfHostWith29Interfaces,
                         testing::Values(Stop::webadmin, Stop::smtp, Stop::relay), stop_name);

TEST_P(ScreensOfHostWith29Interfaces,
       look_after_resizes_as_in_a_terminal_that_always_had_the_size) {
    std::map<int, WizardRun> fresh;  // by columns
    for (const Size& size : terminal_sizes)
        fresh.try_emplace(size.cols, size.rows, size.cols)
            .first->second.walk(Stop::password, GetParam());
    WizardRun resized;
    resized.walk(Stop::password, GetParam());
    for (int control = 0; control < facts_of(GetParam()).controls; ++control) {
        for (const Size& size : resize_round) {
            resized.resize(size.rows, size.cols);
            resized.waitForKey();
            EXPECT_SAME_LOOK(fresh.at(size.cols).image(), resized.image());
        }
        resized.press(Key::tab);
        for (auto& [cols, wizard] : fresh) {
            wizard.press(Key::tab);
            wizard.waitForKey();
        }
    }
}

TEST(HostWith40Interfaces, offers_the_first_29_of_them) {
    WizardRun wizard(large.rows, large.cols);
    wizard.walk(Stop::password, Stop::webadmin);
    EXPECT_TRUE(wizard.image().shows("│  lan28 : 10.28.0.1"));
    EXPECT_FALSE(wizard.image().shows("lan29"));
    wizard.walk(Stop::webadmin, Stop::relay);
    EXPECT_TRUE(wizard.image().shows("[x] 10.28.0.0/255.255.0.0"));
    EXPECT_FALSE(wizard.image().shows("10.29.0.0"));
}

}  // namespace
