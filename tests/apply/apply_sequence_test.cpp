// The apply sequence with a real screen and server: what it does, steps that fail, the next run.

#include "apply/apply_sequence.h"

#include <gtest/gtest.h>
#include <panel.h>
#include <sys/resource.h>

#include <algorithm>
#include <string>
#include <vector>

#include "apply/server_session.h"
#include "tests/apply/apply_rig.h"
#include "tests/apply/set_text.h"
#include "tests/support/case_name.h"
#include "tests/support/expected_wire.h"
#include "tests/support/files.h"
#include "tests/support/frame.h"
#include "tests/support/golden.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/wizard_settings.h"

namespace {

WizardSettings& settings = wizard_settings;

WireAnswers least_answers() {
    WireAnswers answers;
    answers.root_alias = answers.localhost_alias = answers.localdomain_alias = false;
    answers.pop3 = answers.imap = answers.webmail = "";
    answers.relay = false;
    return answers;
}

// The last screen has just been left with the answers of a user who keeps every default, except
// that no network may relay and sendmail stays as it is.
class ApplySequence : public InstalledServerCase {
  protected:
    ApplySequence() {
        set_text(settings.admin_password, password);
        set_text(settings.primary_domain, "example.com");
        set_text(settings.domain_location, "/var/opt/teluma/domains/example.com/");
        set_text(settings.postmaster_password, "P0stmaster");
        settings.webadmin_port = 9000;
        std::fill_n(settings.service_enabled, optional_service_count, 1);
        screen_state = state_sendmail;
        for (int state = 0; state < screen_count; ++state) screen_focus(state) = 1;
    }

    // Chooses everything that the answers above leave out.
    static void chooseAll() {
        std::fill_n(settings.relay_ticks, relay_network_count, 1);
        settings.sendmail_wrapper = 1;
    }

    // Chooses no alias and none of the optional services.
    static void chooseLeast() {
        settings.alias_root_to_postmaster = 0;
        settings.alias_localhost = settings.alias_localhost_localdomain = 0;
        std::fill_n(settings.service_enabled, optional_service_count, 0);
    }

    // Runs the sequence with Enter pressed when it waits for a key, once at most. Keeps how it
    // ended, and returns what the terminal showed at that moment; a blank screen if it never came.
    ScreenImage apply() {
        ScreenImage shown(24, 80);
        int keys = 0;
        waits.atKey = [&] {
            ++keys;
            shown = screen.terminal.image();
            screen.terminal.type("\n");
        };
        end = apply_configuration();
        EXPECT_LE(keys, 1);
        return shown;
    }

    // Has the server refuse what the plan says.
    void refuse(const std::vector<Refusal>& plan) const {
        std::string rules;
        for (const Refusal& refusal : plan)
            rules += "=\"" + refusal.command + "\" " + std::to_string(refusal.count) + " refuse\n";
        server.faults(rules);
    }

    void expectNothingOnTheScreen() {
        update_panels();
        doupdate();
        EXPECT_FALSE(screen.terminal.image().shows("┌") || screen.terminal.image().shows("-->"));
    }

    void expectLoginFailure() {
        EXPECT_EQ(words_in_frame(apply()),
                  "Error! Could not login to Teluma server! Please make sure that the CLI port is "
                  "not in use! OK");
        EXPECT_EQ(end, WizardEnd::without_login);
        expectNothingOnTheScreen();
        EXPECT_EQ(server.commands(), Lines{});
    }

    // Expects that only this screen, and those that share its focus, start afresh.
    static void expectFocusReset(int focus_state) {
        for (int state = 0; state < screen_count; ++state)
            EXPECT_EQ(screen_focus(state) == 0, &screen_focus(state) == &screen_focus(focus_state))
                << "of the screen " << state;
    }

    static std::string doneFlags() {
        std::string flags;
        for (const int done :
             {settings.done_password, settings.done_login, settings.done_domain,
              int{settings.done_aliases}, settings.done_webadmin, settings.done_smtp,
              settings.done_services, settings.done_relay, settings.done_sendmail})
            flags += std::to_string(done);
        return flags;
    }

    CursesScreen screen;
    WizardEnd end = WizardEnd::not_yet;
};

TEST_F(ApplySequence, applies_everything_that_was_chosen_and_forgets_the_passwords) {
    chooseAll();
    EXPECT_SCREEN(apply(), "golden/everything_done");
    std::string transcript;
    for (const std::string& command : server.commands()) transcript += command + "\n";
    EXPECT_EQ(transcript, read_file((GoldenFile{__FILE__, "golden/transcript"}.path())));
    EXPECT_EQ(doneFlags(), "111111111");
    EXPECT_EQ(link_target("/usr/sbin/sendmail"), "/opt/teluma/bin/sendmail");
    EXPECT_EQ(end, WizardEnd::completed);
    EXPECT_EQ(screen_state, state_end);
    server.waitForEnd();
    EXPECT_FALSE(exists(InstalledServer::pid_file));
    for (const char* secret : {settings.admin_password, settings.postmaster_password,
                               install_profiles[os_kind].admin_password})
        EXPECT_STREQ(secret, "");
    expectNothingOnTheScreen();
}

TEST_F(ApplySequence, applies_no_more_than_was_chosen) {
    chooseLeast();
    const FileFacts sendmail = file_facts("/usr/sbin/sendmail");
    // It does not count after the networks of the list.
    settings.relay_ticks[relay_network_count] = 1;
    EXPECT_SCREEN(apply(), "golden/least_done");
    EXPECT_EQ(server.commands(), joined(expected_wire(least_answers())));
    EXPECT_EQ(doneFlags(), "111011100");
    EXPECT_EQ(settings.relay_selected_count, 0);
    EXPECT_EQ(file_facts("/usr/sbin/sendmail").size, sendmail.size);
}

TEST_F(ApplySequence, shows_a_step_that_runs_below_those_that_are_done) {
    waits.inSleep = [&] {
        const ScreenImage image = screen.terminal.image();
        EXPECT_EQ(boxed_lines(image),
                  (Lines{"Operations pending", "Please wait until the changes are applied!",
                         "--> setting admin password ...  ... DONE", "--> connecting to CLI ..."}));
        EXPECT_TRUE(image.cursor().visible);
        EXPECT_EQ(screen_state, state_pending);
        EXPECT_EQ(settings.apply_running, 1);
    };
    EXPECT_EQ(settings.apply_running, 0);
    settings.alias_root_to_postmaster = settings.alias_localhost = 0;
    EXPECT_EQ(boxed_lines(apply()).at(4), "--> adding aliases ...  ... DONE");
    EXPECT_EQ(waits.sleeps, std::vector<int>{2});
}

TEST_F(ApplySequence, sets_and_configures_the_services_that_are_enabled_in_order) {
    chooseLeast();
    settings.service_enabled[service_pop3] = settings.service_enabled[service_imap] = 1;
    settings.alias_localhost = 1;
    WireAnswers answers = least_answers();
    answers.localhost_alias = true;
    answers.pop3 = "0.0.0.0:110";
    answers.imap = "0.0.0.0:143";
    apply();
    EXPECT_EQ(server.commands(), joined(expected_wire(answers)));
    EXPECT_EQ(doneFlags(), "111111100");
}

TEST_F(ApplySequence, adds_the_alias_of_root_alone) {
    chooseLeast();
    settings.alias_root_to_postmaster = 1;
    apply();
    EXPECT_EQ(doneFlags(), "111111100");
}

// A step that fails once because a command is refused.
struct StepFailure {
    const char* name;
    Refusal refusal;
    std::string message;
    int state;
};

const StepFailure step_failures[] = {
    {"creating_the_domain",
     {"create domain name example.com domainlocation /var/opt/teluma/domains/example.com/ "
      "postmasterpasswd P0stmaster"},
     "create the domain 'example.com'! Please make sure this domain doesn't already exist!",
     state_domain},
    {"adding_the_aliases",
     {"update domain name example.com"},
     "create the aliases! Please make sure that a similar alias does not already exist!",
     state_aliases},
    {"configuring_webadmin", {"config server", 2}, "configure webadmin!", state_webadmin},
    {"configuring_webadmin_within_its_context",
     {"add listener address 0.0.0.0:9000"},
     "configure webadmin!",
     state_webadmin},
    {"configuring_smtp", {"config server", 3}, "configure SMTP!", state_smtp},
    {"setting_the_services", {"config server", 4}, "set services!", state_services},
    {"configuring_pop3", {"config server", 6}, "set services!", state_services},
    {"configuring_imap", {"config server", 7}, "set services!", state_services},
    {"configuring_webmail", {"config server", 8}, "set services!", state_services},
    {"configuring_relay", {"config server", 9}, "configure relay!", state_relay},
};

class ApplyStepFailure : public ApplySequence, public testing::WithParamInterface<StepFailure> {};

TEST_P(ApplyStepFailure, leads_back_to_its_screen_and_is_made_good_by_a_run_that_repeats_nothing) {
    const std::vector<Lines> runs = expected_wire({}, {GetParam().refusal});
    ASSERT_EQ(runs.size(), 2u);
    chooseAll();
    refuse({GetParam().refusal});
    EXPECT_EQ(words_in_frame(apply()), "Error! Could not " + GetParam().message + " OK");
    EXPECT_EQ(end, WizardEnd::not_yet);
    EXPECT_EQ(screen_state, GetParam().state);
    EXPECT_EQ(server.commands(), runs[0]);
    EXPECT_STREQ(settings.admin_password, "");
    EXPECT_EQ(settings.postmaster_password[0] != '\0', screen_state == state_domain);
    expectFocusReset(screen_state == state_aliases ? state_domain : screen_state);
    expectNothingOnTheScreen();

    screen_state = state_sendmail;
    EXPECT_SCREEN(apply(), "golden/everything_done");
    EXPECT_EQ(server.commands(), joined(runs));
    EXPECT_EQ(end, WizardEnd::completed);
}

INSTANTIATE_TEST_SUITE_P(In, ApplyStepFailure, testing::ValuesIn(step_failures), CaseName());

using ApplyFailure = ApplySequence;

TEST_F(ApplyFailure, what_failed_or_was_done_and_is_not_wanted_any_more) {
    settings.relay_ticks[0] = 1;
    refuse({{"update domain name example.com"}, {"config server", 7}, {"config server", 11}});
    apply();
    EXPECT_EQ(screen_state, state_aliases);
    chooseLeast();
    settings.service_enabled[service_pop3] = settings.service_enabled[service_imap] = 1;
    apply();
    EXPECT_EQ(screen_state, state_services);
    settings.service_enabled[service_pop3] = 0;
    apply();
    EXPECT_EQ(screen_state, state_relay);
    settings.relay_ticks[0] = 0;
    const Lines lines = boxed_lines(apply());
    EXPECT_EQ(lines.at(4), "--> adding aliases ...  ... DONE") << "count as done";
    EXPECT_EQ(lines.at(7), "--> configuring POP3 ...  ... DONE") << "stays in the history";
    EXPECT_EQ(lines.at(9), "--> configuring relay ...") << "leave their line";
    EXPECT_EQ(end, WizardEnd::completed);
    EXPECT_EQ(server.saved("services"),
              Lines{"services smtpIncoming smtpOutgoing processing webadmin cli imap"});
}

TEST_F(ApplyFailure, of_a_domain_that_fits_into_no_command_names_it_whole) {
    std::fill_n(settings.primary_domain, 750, 'd');
    std::fill_n(settings.domain_location, 750, 'l');
    std::string shown = words_in_frame(apply());
    shown.erase(std::remove(shown.begin(), shown.end(), ' '), shown.end());
    EXPECT_EQ(shown, "Error!Couldnotcreatethedomain'" + std::string(750, 'd') +
                         "'!Pleasemakesurethisdomaindoesn'talreadyexist!OK");
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(server.commands().size(), 3u);
}

TEST_F(ApplyFailure, of_the_login_is_what_shows_that_the_server_could_not_be_restarted) {
    write_file(InstalledServer::pid_file, "-1\n");
    expectLoginFailure();
    EXPECT_NE(screen.terminal.outputBytes().find("DONE"), std::string::npos) << "of the restart";
}

TEST_F(ApplyFailure, of_the_login_is_what_shows_that_too_few_files_can_be_opened) {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = 16;
    setrlimit(RLIMIT_NOFILE, &limit);
    expectLoginFailure();
}

TEST_F(ApplyFailure, for_want_of_memory_leaves_the_wizard_at_once) {
    server_session.out_of_memory = true;
    EXPECT_FALSE(apply().shows("┌"));
    EXPECT_EQ(end, WizardEnd::out_of_memory);
    EXPECT_EQ(server.commands(), Lines{"-A Adm1n secret"});
}

}  // namespace
