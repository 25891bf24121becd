// A failure in each step that talks to the server: what the user is told, the screen that comes
// back, and a second run that does not repeat what had succeeded; or a user who gives up.

#include <gtest/gtest.h>

#include "tests/e2e/apply_screen.h"
#include "tests/e2e/apply_test.h"
#include "tests/e2e/apply_wire.h"
#include "tests/e2e/endings.h"
#include "tests/e2e/focus.h"
#include "tests/e2e/frame.h"
#include "tests/support/case_name.h"

namespace {

/// The `count`th of a command, counted from 1.
struct NthCommand {
    const char* text;
    int count;
};

struct FailingStep {
    const char* name;
    NthCommand refused;  // the first command of the step, so that no context is left open
    const char* message;
    Stop screen;
    int focus;           // of that screen's controls, in TAB order
    NthCommand resumed;  // where the second run begins
    Commands first_of_all = {};
    std::vector<std::string> done_ports = {};  // of listeners that the step had finished
};

const char* const services_message = "Could not set services!";
const NthCommand set_services = {"config server", 4};

const FailingStep failing_steps[] = {
    {"domain",
     {create_localdomain, 1},
     "Could not create the domain 'localdomain'! Please make sure this domain doesn't already "
     "exist!",
     Stop::domain,
     0,
     {create_localdomain, 1}},
    {"aliases",
     {"update domain name localdomain", 1},
     "Could not create the aliases! Please make sure that a similar alias does not already exist!",
     Stop::aliases,
     1,
     {"update domain name localdomain", 1}},
    {"webadmin",
     {"config server", 2},
     "Could not configure webadmin!",
     Stop::webadmin,
     0,
     {"config server", 2},
     {"back", "back"}},
    {"smtp",
     {"config server", 3},
     "Could not configure SMTP!",
     Stop::smtp,
     0,
     {"config server", 3}},
    {"services", set_services, services_message, Stop::services, 0, set_services},
    {"pop3", {"config server", 6}, services_message, Stop::services, 0, set_services},
    {"imap", {"config server", 7}, services_message, Stop::services, 0, set_services, {}, {"110"}},
    {"webmail",
     {"config server", 8},
     services_message,
     Stop::services,
     0,
     set_services,
     {},
     {"110", "143"}},
    {"relay",
     {"config server", 9},
     "Could not configure relay!",
     Stop::relay,
     0,
     {"config server", 9}},
};

class ApplyFailure : public ApplyTest, public testing::WithParamInterface<FailingStep> {
  protected:
    void SetUp() override {
        const NthCommand& refused = GetParam().refused;
        server.faults("=\"" + std::string(refused.text) + "\" " + std::to_string(refused.count) +
                      " refuse\n");
        wizard.walkToTheEnd(answers);
        wizard.waitForText("Error!");
        wizard.waitForKey();
    }

    static size_t place(const Commands& commands, const NthCommand& command) {
        return index_of(commands, command.text, command.count);
    }

    /// What a first run has said until the step failed.
    Commands commandsUntilFailure() const {
        const Commands all = run_commands(answers);
        return part_of(all, 0, place(all, GetParam().refused) + 1);
    }

    /// What a second run has to say.
    Commands commandsLeft() const {
        const Commands all = run_commands(answers);
        return GetParam().first_of_all +
               with_new_listeners(part_of(all, place(all, GetParam().resumed), all.size()),
                                  GetParam().done_ports);
    }
};

TEST_P(ApplyFailure, is_told_and_leads_back_to_its_screen) {
    EXPECT_EQ(words_in_frame(wizard.image()), "Error! " + std::string(GetParam().message) + " OK");
    EXPECT_EQ(server.commands(), commandsUntilFailure());
    wizard.press(Key::enter);
    wizard.waitForScreen(GetParam().screen);
    EXPECT_EQ(focus_on(wizard.image(), GetParam().screen), GetParam().focus);
}

TEST_P(ApplyFailure, is_made_good_by_a_second_run_that_repeats_nothing) {
    wizard.press(Key::enter);
    wizard.walkToTheEnd(answers, GetParam().screen);
    wait_for_progress(
        wizard, {done("adding aliases"), done("configuring WebAdmin"), done("configuring SMTP"),
                 done("configuring POP3"), done("configuring IMAP"), done("configuring WEBMAIL"),
                 done("configuring relay"), done("configuring TELUMA sendmail")});
    ASSERT_EQ(wizard.finish(), exited(0));
    EXPECT_EQ(server.commands(), commandsUntilFailure() + commandsLeft());
}

INSTANTIATE_TEST_SUITE_P(OfTheStep, ApplyFailure, testing::ValuesIn(failing_steps), CaseName());

class ApplyGivenUp : public ApplyTest {};

TEST_F(ApplyGivenUp, at_the_exit_button_after_a_failure_ends_the_wizard_and_the_server) {
    server.faults("\"create domain\" 1 refuse\n");
    wizard.walkToTheEnd(answers);
    wizard.dismissError("already exist!");
    EXPECT_TRUE(server.isRunning());
    wizard.pressBack(Stop::domain);
    wizard.pressBack(Stop::password);
    EXPECT_TRUE(ends_with(wizard, exited(0), "\nTELUMA Configuration Wizard Aborted!\n"));
    server.waitForEnd();
}

}  // namespace
