// Steps of the apply sequence that fail, the way back, and the run after that.

#include <gtest/gtest.h>
#include <panel.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "apply/apply_sequence.h"
#include "tests/apply/apply_case.h"
#include "tests/apply/step_commands.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/golden.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"
#include "wizard/base/screen_state.h"

namespace {

// A step that fails once because a command is refused.
struct StepFailure {
    const char* name;
    const char* fault;
    std::string message;
    int state;
    int focus_state;
    Lines next_run;  // the commands of the run after that
};

Lines webadmin_step() {
    return webadmin_commands("127.0.0.1:9000");
}

Lines smtp_step() {
    return listener_commands("smtp-incoming", "127.0.0.1:25", "0.0.0.0:25");
}

// The services and their listeners, for a server on which some have their new ones already.
Lines services_step(int new_listeners = 0) {
    const auto old_host = [=](int number) {
        return number < new_listeners ? "0.0.0.0" : "127.0.0.1";
    };
    return joined_commands(
        {services_commands(" pop3 imap webmail"),
         listener_commands("pop3", std::string(old_host(0)) + ":110", "0.0.0.0:110"),
         listener_commands("imap", std::string(old_host(1)) + ":143", "0.0.0.0:143"),
         listener_commands("webmail", "127.0.0.1:80", "0.0.0.0:80")});
}

const std::string no_services = "Could not set services!";

const StepFailure step_failures[] = {
    {"creating_the_domain", "\"create domain\" 1 refuse\n",
     "Could not create the domain 'example.com'! Please make sure this domain doesn't already "
     "exist!",
     state_domain, state_domain,
     joined_commands({domain_commands(), alias_commands(), webadmin_step(), smtp_step(),
                      services_step(), relay_commands()})},
    {"adding_the_aliases", "\"update domain\" 1 refuse\n",
     "Could not create the aliases! Please make sure that a similar alias does not already exist!",
     state_aliases, state_domain,
     joined_commands(
         {alias_commands(), webadmin_step(), smtp_step(), services_step(), relay_commands()})},
    {"configuring_webadmin", "=\"config server\" 2 refuse\n", "Could not configure webadmin!",
     state_webadmin, state_webadmin,
     joined_commands(
         {{"back", "back"}, webadmin_step(), smtp_step(), services_step(), relay_commands()})},
    {"configuring_webadmin_within_its_context", "\"add listener\" 1 refuse\n",
     "Could not configure webadmin!", state_webadmin, state_webadmin,
     joined_commands(
         {{"back", "back"}, webadmin_step(), smtp_step(), services_step(), relay_commands()})},
    {"configuring_smtp", "=\"config server\" 3 refuse\n", "Could not configure SMTP!", state_smtp,
     state_smtp, joined_commands({smtp_step(), services_step(), relay_commands()})},
    {"setting_the_services", "=\"config server\" 4 refuse\n", no_services, state_services,
     state_services, joined_commands({services_step(), relay_commands()})},
    {"configuring_pop3", "=\"config server\" 6 refuse\n", no_services, state_services,
     state_services, joined_commands({services_step(), relay_commands()})},
    {"configuring_imap", "=\"config server\" 7 refuse\n", no_services, state_services,
     state_services, joined_commands({services_step(1), relay_commands()})},
    {"configuring_webmail", "=\"config server\" 8 refuse\n", no_services, state_services,
     state_services, joined_commands({services_step(2), relay_commands()})},
    {"configuring_relay", "=\"config server\" 9 refuse\n", "Could not configure relay!",
     state_relay, state_relay, relay_commands()},
};

class ApplyFailure : public ApplyCase {
  protected:
    ApplyFailure() {
        for (int state = 0; state < screen_count; ++state)
            screen_focus(state) = 1;
    }

    // Expects that only this screen, and those that share its focus, start afresh.
    static void expectFocusReset(int focus_state) {
        for (int state = 0; state < screen_count; ++state)
            EXPECT_EQ(screen_focus(state) == 0, &screen_focus(state) == &screen_focus(focus_state))
                << "of the screen " << state;
    }
};

class ApplyStepFailure : public ApplyFailure, public testing::WithParamInterface<StepFailure> {};

TEST_P(ApplyStepFailure, tells_the_user_and_leads_back_to_its_screen) {
    chooseAll();
    server.faults(GetParam().fault);
    const std::vector<ScreenImage> shown = apply();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(boxed_text(shown[0]), "Error! " + GetParam().message + " OK");
    EXPECT_EQ(screen_state, GetParam().state);
    expectFocusReset(GetParam().focus_state);
    update_panels();
    doupdate();
    EXPECT_EQ(boxed_text(screen.terminal.terminalImage()), "");
}

TEST_P(ApplyStepFailure, is_made_good_by_a_second_run_that_repeats_nothing) {
    chooseAll();
    server.faults(GetParam().fault);
    apply();
    const size_t received = server.commands().size();
    screen_state = state_sendmail;
    const std::vector<ScreenImage> shown = apply();
    const Lines all = server.commands();
    EXPECT_EQ(Lines(all.begin() + static_cast<long>(received), all.end()), GetParam().next_run);
    EXPECT_EQ(screen_state, state_end);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_SCREEN(shown[0], "golden/everything_done");
}

INSTANTIATE_TEST_SUITE_P(In, ApplyStepFailure, testing::ValuesIn(step_failures), CaseName());

TEST_F(ApplyFailure, the_error_box_stands_alone_on_the_screen) {
    server.faults("\"create domain\" 1 refuse\n");
    EXPECT_SCREEN(apply().at(0), "golden/domain_error");
}

TEST_F(ApplyFailure, a_second_run_shows_the_lines_of_the_first_again) {
    server.faults("\"create domain\" * refuse\n");
    apply();
    std::vector<std::string> lines;
    server.faults("\"create domain\" * late 0.2\n");
    waits.atSocket = [&] {
        if (lines.empty())
            lines = boxed_lines(screen.terminal.terminalImage());
    };
    apply();
    EXPECT_EQ(lines, (Lines{"Operations pending", "Please wait until the changes are applied!",
                            "--> setting admin password ...  ... DONE",
                            "--> connecting to CLI ...  ... DONE",
                            "--> creating domain example.com ..."}));
}

TEST_F(ApplyFailure, aliases_that_failed_and_are_not_wanted_any_more_count_as_done) {
    enable(false, false, false);
    server.faults("\"update domain\" 1 refuse\n");
    apply();
    wizard_settings.alias_root_to_postmaster = 0;
    wizard_settings.alias_localhost = 0;
    wizard_settings.alias_localhost_localdomain = 0;
    const std::vector<std::string> lines = boxed_lines(apply().at(0));
    ASSERT_GT(lines.size(), 5u);
    EXPECT_EQ(lines[5], "--> adding aliases ...  ... DONE");
    EXPECT_EQ(screen_state, state_end);
}

TEST_F(ApplyFailure, networks_that_failed_and_are_not_wanted_any_more_leave_their_line) {
    enable(false, false, false);
    wizard_settings.relay_ticks[0] = 1;
    server.faults("\"show attr smtpfiltersfile\" 1 close\n");
    apply();
    EXPECT_EQ(screen_state, state_relay);
    wizard_settings.relay_ticks[0] = 0;
    EXPECT_EQ(boxed_lines(apply().at(0)).at(8), "--> configuring relay ...");
    EXPECT_EQ(screen_state, state_end);
}

TEST_F(ApplyFailure, a_service_that_was_configured_before_another_failed_is_configured_again) {
    server.faults("=\"config server\" 7 refuse\n");
    apply();
    EXPECT_EQ(wizard_settings.done_services, 0);
    enable(false, true, false);
    const std::vector<std::string> lines = boxed_lines(apply().at(0));
    EXPECT_EQ(
        Lines(lines.end() - 3, lines.end()),
        (Lines{"--> configuring POP3 ...  ... DONE", "--> configuring IMAP ...  ... DONE", "OK"}));
    EXPECT_EQ(server.saved("services"),
              Lines{"services smtpIncoming smtpOutgoing processing webadmin cli imap"});
}

TEST_F(ApplyFailure, of_the_sendmail_wrapper_leads_back_to_its_screen) {
    chooseAll();
    const std::string wrapper = "/opt/teluma/bin/sendmail";
    const std::string aside = wrapper + ".aside";
    ASSERT_EQ(rename(wrapper.c_str(), aside.c_str()), 0);
    EXPECT_EQ(boxed_text(apply().at(0)), "Error! Could not configure sendmail wrapper! OK");
    EXPECT_EQ(screen_state, state_sendmail);
    expectFocusReset(state_sendmail);

    ASSERT_EQ(rename(aside.c_str(), wrapper.c_str()), 0);
    const size_t received = server.commands().size();
    EXPECT_SCREEN(apply().at(0), "golden/everything_done");
    EXPECT_EQ(server.commands().size(), received);
    EXPECT_EQ(screen_state, state_end);
}

TEST_F(ApplyFailure, the_connection_that_breaks_fails_the_step_and_every_run_after_it) {
    server.faults("\"create domain\" 1 crash\n");
    apply();
    EXPECT_EQ(screen_state, state_domain);
    apply();
    EXPECT_EQ(screen_state, state_domain);
}

TEST_F(ApplyFailure, of_a_domain_that_fits_into_no_command_names_it_whole) {
    std::fill_n(wizard_settings.primary_domain, 750, 'd');
    std::fill_n(wizard_settings.domain_location, 750, 'l');
    std::string shown = boxed_text(apply().at(0));
    shown.erase(std::remove(shown.begin(), shown.end(), ' '), shown.end());
    EXPECT_EQ(shown, "Error!Couldnotcreatethedomain'" + std::string(750, 'd') +
                         "'!Pleasemakesurethisdomaindoesn'talreadyexist!OK");
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(server.commands(), login_commands());
}

// A login that fails ends the process, so these cases run the sequence in one of their own, which
// writes what the terminal shows to the error stream.
class ApplyLoginFailure : public ApplyCase {
  protected:
    ApplyLoginFailure() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    void expectLoginFailure() {
        const std::string message =
            "Error! Could not login to Teluma server! Please make sure that the CLI port is not "
            "in use! OK";
        EXPECT_EXIT(applyAndTell(), testing::ExitedWithCode(1), message);
    }

    void applyAndTell() {
        waits.atKey = [&] {
            std::cerr << boxed_text(screen.terminal.terminalImage()) << std::endl;
            screen.terminal.type("\n");
        };
        apply_configuration();
    }
};

TEST_F(ApplyLoginFailure, ends_the_program_with_status_1_and_stops_the_server) {
    server.faults("password * refuse\n");
    expectLoginFailure();
    const pid_t process = server.lastStarted();
    EXPECT_NE(process, 0);
    wait_until([=] { return !process_running(process); }, "the server has ended");
}

TEST_F(ApplyLoginFailure, is_what_shows_that_the_server_could_not_be_restarted) {
    write_file(InstalledServer::pid_file, "-1\n");
    expectLoginFailure();
    EXPECT_EQ(server.commands(), Lines{});
}

}  // namespace
