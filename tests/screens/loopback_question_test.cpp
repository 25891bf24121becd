// The question that a loopback interface raises on each of the listener screens.

#include <gtest/gtest.h>

#include <string>

#include "tests/screens/dialog_region.h"
#include "tests/screens/listener_rig.h"
#include "tests/support/golden.h"
#include "tests/support/local_port.h"
#include "wizard/base/screen_state.h"

namespace {

struct Question {
    ListenerFacts listener;
    const char* text;
};

void PrintTo(const Question& question, std::ostream* out) {
    *out << question.listener.name;
}

std::vector<Question> questions() {
    const std::vector<ListenerFacts> all = all_listeners();
    return {
        {all[0],
         "Selecting 127.0.0.1 will enable access to WebAdmin interface \tonly from this machine "
         "and not remotely from other machines. Are you sure?"},
        {all[1],
         "Selecting 127.0.0.1 will enable access to SMTP service \tonly from this machine and not "
         "remotely from other machines. Are you sure?"},
        {all[2],
         "Selecting 127.0.0.1 will enable access to POP3 service\tonly from this machine and not "
         "remotely from other machines. Are you sure?"},
        {all[3],
         "Selecting 127.0.0.1 will enable access to IMAP service \tonly from this machine and not "
         "remotely from other machines. Are you sure?"},
        {all[4],
         "Selecting 127.0.0.1 will enable access to WebMail service \tonly from this machine and "
         "not remotely from other machines. Are you sure?"},
    };
}

std::string name_of_question(const testing::TestParamInfo<Question>& info) {
    return info.param.listener.name;
}

class LoopbackQuestion : public testing::TestWithParam<Question> {
  protected:
    /// Chooses the loopback row and a port that nobody uses, and goes on with `answer`.
    void playWithLoopback(const std::vector<Step>& answer) {
        wizard.play(answer_listener(row_lo, std::to_string(free_port.number())) + answer);
    }

    const ListenerFacts& listener = GetParam().listener;
    ListenerRig wizard{listener};
    LocalPort free_port;
};

TEST_P(LoopbackQuestion, is_asked_with_the_screen_hidden) {
    playWithLoopback({[&] { EXPECT_EQ(screen_state, state_yes_no); }});
    EXPECT_SCREEN(wizard.image(), "golden/loopback_question_" + listener.name);
}

TEST_P(LoopbackQuestion, answered_no_leads_back_to_the_list_of_the_screen) {
    playWithLoopback({Key::enter});
    EXPECT_EQ(screen_state, listener.state);
    EXPECT_EQ(screen_focus(listener.state), 0);
    EXPECT_TRUE(wizard.image().shows(listener.title));
    EXPECT_EQ(wizard.rowShown(row_lo), "$ lo   : 127.0.0.1");
    EXPECT_EQ(wizard.portShown(row_lo), std::to_string(free_port.number()));
}

TEST_P(LoopbackQuestion, answered_yes_leads_to_the_next_screen_with_the_answers_stored) {
    playWithLoopback({Key::tab, Key::enter});
    EXPECT_EQ(screen_state, listener.next_state);
    EXPECT_EQ(screen_focus(state_smtp), 0);
    EXPECT_EQ(wizard.chosenInterface(), row_lo);
    EXPECT_EQ(wizard.chosenPort(), free_port.number());
}

TEST_P(LoopbackQuestion, answered_no_stores_the_row_and_of_WebAdmin_also_the_port) {
    wizard.setChosenPort(77);
    playWithLoopback({Key::enter});
    EXPECT_EQ(wizard.chosenInterface(), row_lo);
    const bool is_webadmin = listener.state == state_webadmin;
    EXPECT_EQ(wizard.chosenPort(), is_webadmin ? free_port.number() : 77);
}

INSTANTIATE_TEST_SUITE_P(Screens, LoopbackQuestion, testing::ValuesIn(questions()),
                         name_of_question);

/// Whether an interface of that name, at an address of this machine, raises the question.
bool is_asked_for(const std::string& name) {
    RigSetup setup;
    setup.interfaces[row_lo].name = name;
    ListenerRig wizard(webadmin_facts(), setup);
    const LocalPort free_port;
    bool asked = false;
    wizard.play(answer_listener(row_lo, std::to_string(free_port.number())) +
                std::vector<Step>{[&] { asked = screen_state == state_yes_no; }});
    return asked;
}

TEST(LoopbackInterface, is_one_whose_name_begins_with_lo) {
    EXPECT_TRUE(is_asked_for("lo"));
    EXPECT_TRUE(is_asked_for("lo0"));
    EXPECT_TRUE(is_asked_for("lowlands"));
    EXPECT_FALSE(is_asked_for("eth0"));
    EXPECT_FALSE(is_asked_for("l"));
    EXPECT_FALSE(is_asked_for("LO"));
    EXPECT_FALSE(is_asked_for("xlo"));
}

TEST(LoopbackInterface, is_none_of_all_interfaces) {
    ListenerRig wizard(webadmin_facts());
    const LocalPort free_port;
    wizard.play(answer_listener(row_all, std::to_string(free_port.number())));
    EXPECT_EQ(screen_state, state_smtp);
}

}  // namespace
