// Which listeners' screens the chosen services bring, on the way forward and on the way back.

#include <gtest/gtest.h>

#include "tests/e2e/stop_params.h"

namespace {

constexpr Stop service_stops[] = {Stop::pop3, Stop::imap, Stop::webmail};

using Services = std::vector<bool>;  // POP3, IMAP, WebMail

std::string name_of(const testing::TestParamInfo<Services>& info) {
    return choice_name(info.param, {"pop3", "imap", "webmail"});
}

class ServiceChoice : public testing::TestWithParam<Services> {
  protected:
    std::vector<Stop> chosenStops() const {
        std::vector<Stop> chosen;
        for (size_t i = 0; i < GetParam().size(); ++i) {
            if (GetParam()[i])
                chosen.push_back(service_stops[i]);
        }
        return chosen;
    }

    WizardRun wizard;
};

INSTANTIATE_TEST_SUITE_P(Services, ServiceChoice, testing::ValuesIn(every_choice_of_three()),
                         name_of);

TEST_P(ServiceChoice, decides_which_listeners_are_asked_for_forwards_and_back) {
    wizard.walk(Stop::password, Stop::services);
    wizard.answerBoxes(Stop::services, GetParam());
    std::vector<Stop> way = chosenStops();
    for (const Stop stop : way)
        wizard.pressNext(stop);

    wizard.pressBack(Stop::relay);
    for (; !way.empty(); way.pop_back())
        wizard.pressBack(way.back());
    wizard.waitForScreen(Stop::services);
    EXPECT_EQ(wizard.ticks(), GetParam());
    wizard.pressBack(Stop::services);
    wizard.waitForScreen(Stop::smtp);
}

TEST_P(ServiceChoice, leads_from_the_relay_screen_to_the_sendmail_screen_and_back) {
    Answers answers;
    answers.services = GetParam();
    wizard.walk(Stop::password, Stop::sendmail, answers);
    wizard.pressBack(Stop::sendmail);
    wizard.waitForScreen(Stop::relay);
}

TEST(ChangedServices, bring_other_listeners_on_the_next_way_forward) {
    WizardRun wizard;
    Answers answers;
    answers.services = {true, false, true};
    wizard.walk(Stop::password, Stop::relay, answers);
    wizard.pressBack(Stop::relay);
    wizard.pressBack(Stop::webmail);
    wizard.pressBack(Stop::pop3);
    wizard.answerBoxes(Stop::services, {false, true, false});
    wizard.pressNext(Stop::imap);
    wizard.pressBack(Stop::relay);
    wizard.pressBack(Stop::imap);
    wizard.waitForScreen(Stop::services);
}

TEST(ChangedServices, count_only_when_the_screen_is_left_forwards_but_the_boxes_keep_them) {
    WizardRun wizard;
    wizard.walk(Stop::password, Stop::services);
    wizard.answerBoxes(Stop::services, {true, false, false});
    wizard.pressBack(Stop::pop3);
    wizard.waitForScreen(Stop::services);
    wizard.setTicks({false, false, true});
    wizard.pressBack(Stop::services);
    wizard.pressNext(Stop::smtp);
    wizard.waitForScreen(Stop::services);
    EXPECT_EQ(wizard.ticks(), (Services{false, false, true}));
    wizard.pressNext(Stop::services);
    wizard.pressNext(Stop::webmail);
    wizard.waitForScreen(Stop::relay);
}

}  // namespace
