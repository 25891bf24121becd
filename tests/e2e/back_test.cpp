// Going back: every answer is still there, on the way back and on the way forward again.

#include <gtest/gtest.h>

#include "tests/e2e/focus.h"
#include "tests/e2e/stop_params.h"
#include "tests/e2e/wizard_run.h"

namespace {

// Other answers than those that the screens offer.
Answers own_answers() {
    Answers answers;
    answers.password = "twelve chars";
    answers.domain = "example.org";
    answers.location = "/srv/mail/example.org";
    answers.postmaster_password = "nine char";
    answers.aliases = {false, true, false};
    answers.webadmin = {2, "9443"};
    answers.smtp = {3, "2525"};
    answers.pop3 = {2, "1110"};
    answers.imap = {3, "1143"};
    answers.webmail = {1, "8080", true};
    answers.relay = {false, true, false};
    return answers;
}

// What the screens show of them, with a blank behind a text that must end there.
std::vector<std::string> shown_answers(Stop stop) {
    switch (stop) {
        case Stop::password:
            return {"Password:************ ", "Validate:************ "};
        case Stop::domain:
            return {"Primary Domain:example.org ", "Domain Location:/srv/mail/example.org ",
                    "Postmaster account password:********* "};
        case Stop::aliases:
            return {"[ ] Redirect", "[x] Add the 'localhost'", "[ ] Add the 'localhost.local"};
        case Stop::webadmin:
            return {"│$ eth0 : 192.168.7.2  9443 "};
        case Stop::smtp:
            return {"│$ eth1 : 10.20.0.5    2525 "};
        case Stop::services:
            return {"[x] POP3", "[x] IMAP", "[x] WebMail"};
        case Stop::pop3:
            return {"│$ eth0 : 192.168.7.2  1110 "};
        case Stop::imap:
            return {"│$ eth1 : 10.20.0.5    1143 "};
        case Stop::webmail:
            return {"│$ lo   : 127.0.0.1    8080 "};
        case Stop::relay:
            return {"[ ] 127.0.0.0/255.0.0.0", "[x] 192.168.7.0/255.255.255.0",
                    "[ ] 10.0.0.0/255.0.0.0"};
        case Stop::sendmail:
            return {};
    }
    return {};
}

void expect_answers_shown(WizardRun& wizard, Stop stop) {
    wizard.waitForScreen(stop);
    for (const std::string& text : shown_answers(stop))
        EXPECT_TRUE(wizard.image().shows(text)) << text << " in\n" << wizard.image().text();
}

TEST(WayBack, from_the_last_screen_to_the_first_and_forward_again_shows_every_answer) {
    WizardRun wizard;
    wizard.walk(Stop::password, Stop::sendmail, own_answers());
    for (int place = place_of(Stop::sendmail); place > 0; --place) {
        wizard.pressBack(stop_at(place));
        expect_answers_shown(wizard, stop_at(place - 1));
    }
    for (int place = 0; place < place_of(Stop::sendmail); ++place) {
        expect_answers_shown(wizard, stop_at(place));
        wizard.pressNext(stop_at(place));
        if (stop_at(place) == Stop::webmail) {
            wizard.waitForText("WARNING!");
            wizard.press(Key::tab);
            wizard.press(Key::enter);
        }
    }
    wizard.waitForScreen(Stop::sendmail);
}

class ScreenLeftBackwards : public AtScreen {
  protected:
    void leaveAndComeBack() {
        wizard.pressBack(GetParam());
        wizard.pressNext(stopBefore());
        wizard.waitForScreen(GetParam());
    }
};

class CheckBoxesLeftBackwards : public ScreenLeftBackwards {};

INSTANTIATE_TEST_SUITE_P(Screens, CheckBoxesLeftBackwards,
                         testing::Values(Stop::aliases, Stop::services, Stop::relay), stop_name);

TEST_P(CheckBoxesLeftBackwards, keep_their_marks) {
    wizard.setTicks({false, true, false});
    leaveAndComeBack();
    EXPECT_EQ(wizard.ticks(), (std::vector<bool>{false, true, false}));
}

class ListenerLeftBackwards : public ScreenLeftBackwards {};

INSTANTIATE_TEST_SUITE_P(Listeners, ListenerLeftBackwards, testing::ValuesIn(listener_stops()),
                         stop_name);

TEST_P(ListenerLeftBackwards, keeps_the_port_that_was_typed) {
    wizard.press(Key::tab);
    wizard.retype(5, "7777");
    leaveAndComeBack();
    EXPECT_TRUE(wizard.image().shows("│$ all  : 0.0.0.0      7777 "));
}

TEST_P(ListenerLeftBackwards,
       keeps_the_row_of_webadmin_and_forgets_one_that_was_not_accepted_else) {
    wizard.selectRow(3);
    leaveAndComeBack();
    const bool keeps_row = GetParam() == Stop::webadmin;
    EXPECT_TRUE(wizard.image().shows(keeps_row ? "│$ eth1 " : "│$ all "));
}

TEST(DomainLeftBackwards, keeps_its_texts) {
    WizardRun wizard;
    wizard.walk(Stop::password, Stop::domain);
    wizard.retype(50, "example.net");
    wizard.pressBack(Stop::domain);
    wizard.pressNext(Stop::password);
    wizard.waitForScreen(Stop::domain);
    EXPECT_TRUE(wizard.image().shows("Primary Domain:example.net "));
    EXPECT_TRUE(wizard.image().shows("Domain Location:/var/opt/teluma/domains/example.net/ "));
}

TEST(SendmailLeftBackwards, starts_afresh) {
    WizardRun wizard;
    wizard.walk(Stop::password, Stop::sendmail);
    const ScreenImage before = wizard.image();
    wizard.press(Key::tab);
    wizard.pressBack(Stop::sendmail);
    wizard.pressNext(Stop::relay);
    wizard.waitForScreen(Stop::sendmail);
    EXPECT_EQ(wizard.image().text(), before.text());
    EXPECT_EQ(focused_caption(wizard.image()), "Yes");
}

TEST(FirstScreen, is_left_by_its_exit_button_with_status_0) {
    WizardRun wizard;
    wizard.pressBack(Stop::password);
    EXPECT_EQ(wizard.waitExit(), exited(0));
    EXPECT_EQ(wizard.printedAfterwards(), "\nTELUMA Configuration Wizard Aborted!\n");
    EXPECT_EQ(wizard.modes(), wizard.modesBefore());
    EXPECT_TRUE(wizard.image().cursor().visible);
}

}  // namespace
