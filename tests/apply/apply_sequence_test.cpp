// The apply sequence with a real screen and a real server: what it sends and shows, steps that
// fail, the way back, and the run after that.

#include "apply/apply_sequence.h"

#include <gtest/gtest.h>
#include <panel.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "apply/server_session.h"
#include "tests/apply/apply_rig.h"
#include "tests/support/case_name.h"
#include "tests/support/expected_wire.h"
#include "tests/support/files.h"
#include "tests/support/golden.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"
#include "wizard/base/host_facts.h"

namespace {

WizardSettings& settings = wizard_settings;

WireAnswers least_answers() {
    WireAnswers answers;
    answers.root_alias = answers.localhost_alias = answers.localdomain_alias = false;
    answers.pop3 = answers.imap = answers.webmail = "";
    answers.relay = false;
    return answers;
}

class ApplySequence : public ApplyCase {
  protected:
    ApplySequence() {
        for (int state = 0; state < screen_count; ++state) screen_focus(state) = 1;
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
        EXPECT_EQ(boxed_text(screen.terminal.image()), "");
    }

    // Expects that only this screen, and those that share its focus, start afresh.
    static void expectFocusReset(int focus_state) {
        for (int state = 0; state < screen_count; ++state)
            EXPECT_EQ(screen_focus(state) == 0, &screen_focus(state) == &screen_focus(focus_state))
                << "of the screen " << state;
    }

    static Lines doneFlags() {
        Lines flags;
        for (const int done :
             {settings.done_password, settings.done_login, settings.done_domain,
              int{settings.done_aliases}, settings.done_webadmin, settings.done_smtp,
              settings.done_services, settings.done_relay, settings.done_sendmail})
            flags.push_back(std::to_string(done));
        return flags;
    }
};

TEST_F(ApplySequence, applies_everything_that_was_chosen) {
    chooseAll();
    const std::vector<ScreenImage> shown = apply();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_SCREEN(shown[0], "golden/everything_done");
    EXPECT_EQ(server.commands(), joined(expected_wire({})));
    std::string transcript;
    for (const std::string& command : server.commands()) transcript += command + "\n";
    EXPECT_EQ(transcript, read_file((GoldenFile{__FILE__, "golden/transcript"}.path())));
    EXPECT_EQ(doneFlags(), Lines(9, "1"));
    EXPECT_EQ(link_target("/usr/sbin/sendmail"), "/opt/teluma/bin/sendmail");
}

TEST_F(ApplySequence, applies_no_more_than_was_chosen) {
    chooseLeast();
    const FileFacts sendmail = file_facts("/usr/sbin/sendmail");
    // It does not count after the networks of the list.
    settings.relay_ticks[relay_network_count] = 1;
    const std::vector<ScreenImage> shown = apply();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_SCREEN(shown[0], "golden/least_done");
    EXPECT_EQ(server.commands(), joined(expected_wire(least_answers())));
    EXPECT_EQ(doneFlags(), (Lines{"1", "1", "1", "0", "1", "1", "1", "0", "0"}));
    EXPECT_EQ(settings.relay_selected_count, 0);
    EXPECT_EQ(file_facts("/usr/sbin/sendmail").size, sendmail.size);
}

TEST_F(ApplySequence, ends_the_wizard_stops_the_server_and_forgets_the_passwords) {
    apply();
    EXPECT_EQ(end, WizardEnd::completed);
    EXPECT_EQ(screen_state, state_end);
    server.waitForEnd();
    EXPECT_FALSE(exists(InstalledServer::pid_file));
    for (const char* secret : {settings.admin_password, settings.postmaster_password,
                               install_profiles[os_kind].admin_password})
        EXPECT_STREQ(secret, "");
    expectNothingOnTheScreen();
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
    apply();
    EXPECT_EQ(waits.sleeps, std::vector<int>{2});
}

TEST_F(ApplySequence, shows_a_long_domain_name_cut) {
    const std::string name = std::string(30, 'd') + ".example.com";
    std::snprintf(settings.primary_domain, sizeof(settings.primary_domain), "%s", name.c_str());
    chooseLeast();
    EXPECT_EQ(boxed_lines(apply().at(0)).at(4),
              "--> creating domain " + std::string(25, 'd') + ".. ...  ... DONE");
}

TEST_F(ApplySequence, passes_the_address_of_each_interface_each_port_and_the_networks_in_order) {
    settings.webadmin_interface = 2;
    settings.webadmin_port = 9001;
    settings.smtp_interface = 3;
    settings.smtp_port = 2525;
    settings.pop3_interface = 1;
    settings.pop3_port = 1110;
    settings.imap_interface = 2;
    settings.imap_port = 1143;
    settings.webmail_interface = 3;
    settings.webmail_port = 8080;
    settings.relay_ticks[0] = 1;
    settings.relay_ticks[2] = 1;
    apply();
    EXPECT_EQ(server.saved("listener "),
              (Lines{"listener cli 127.0.0.1:9091", "listener imap 192.168.7.2:1143",
                     "listener pop3 127.0.0.1:1110", "listener smtp-incoming 10.20.0.5:2525",
                     "listener webadmin 192.168.7.2:9001", "listener webmail 10.20.0.5:8080"}));
    EXPECT_EQ(settings.relay_selected_count, 2);
    EXPECT_EQ(settings.relay_selected[0], 0);
    EXPECT_EQ(settings.relay_selected[1], 2);
    EXPECT_NE(read_file(InstalledServer::filters)
                  .find("if (anyof( iprange (remoteSmtpIp, \"10.0.0.0/255.0.0.0\"), iprange "
                        "(remoteSmtpIp, \"127.0.0.0/255.0.0.0\"))) {"),
              std::string::npos);
}

class ApplyServices : public ApplyCase, public testing::WithParamInterface<int> {};

TEST_P(ApplyServices, sets_and_configures_those_that_are_enabled_in_order) {
    chooseLeast();
    WireAnswers answers = least_answers();
    std::string* const addresses[] = {&answers.pop3, &answers.imap, &answers.webmail};
    const char* const defaults[] = {"0.0.0.0:110", "0.0.0.0:143", "0.0.0.0:80"};
    for (int i = 0; i < optional_service_count; ++i) {
        settings.service_enabled[i] = (GetParam() >> i) & 1;
        if (settings.service_enabled[i]) *addresses[i] = defaults[i];
    }
    apply();
    EXPECT_EQ(server.commands(), joined(expected_wire(answers)));
}

INSTANTIATE_TEST_SUITE_P(Chosen, ApplyServices, testing::Range(0, 8));

// A step that fails once because a command is refused.
struct StepFailure {
    const char* name;
    Refusal refusal;
    std::string message;
    int state;
    int focus_state;
};

const std::string no_services = "Could not set services!";

const StepFailure step_failures[] = {
    {"creating_the_domain",
     {"create domain name example.com domainlocation /var/opt/teluma/domains/example.com/ "
      "postmasterpasswd P0stmaster"},
     "Could not create the domain 'example.com'! Please make sure this domain doesn't already "
     "exist!",
     state_domain,
     state_domain},
    {"adding_the_aliases",
     {"update domain name example.com"},
     "Could not create the aliases! Please make sure that a similar alias does not already exist!",
     state_aliases,
     state_domain},
    {"configuring_webadmin",
     {"config server", 2},
     "Could not configure webadmin!",
     state_webadmin,
     state_webadmin},
    {"configuring_webadmin_within_its_context",
     {"add listener address 0.0.0.0:9000"},
     "Could not configure webadmin!",
     state_webadmin,
     state_webadmin},
    {"configuring_smtp", {"config server", 3}, "Could not configure SMTP!", state_smtp, state_smtp},
    {"setting_the_services", {"config server", 4}, no_services, state_services, state_services},
    {"configuring_pop3", {"config server", 6}, no_services, state_services, state_services},
    {"configuring_imap", {"config server", 7}, no_services, state_services, state_services},
    {"configuring_webmail", {"config server", 8}, no_services, state_services, state_services},
    {"configuring_relay",
     {"config server", 9},
     "Could not configure relay!",
     state_relay,
     state_relay},
};

class ApplyStepFailure : public ApplySequence, public testing::WithParamInterface<StepFailure> {};

TEST_P(ApplyStepFailure, leads_back_to_its_screen_and_is_made_good_by_a_run_that_repeats_nothing) {
    const std::vector<Lines> runs = expected_wire({}, {GetParam().refusal});
    ASSERT_EQ(runs.size(), 2u);
    chooseAll();
    refuse({GetParam().refusal});
    std::vector<ScreenImage> shown = apply();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(boxed_text(shown[0]), "Error! " + GetParam().message + " OK");
    EXPECT_EQ(end, WizardEnd::not_yet);
    EXPECT_EQ(screen_state, GetParam().state);
    EXPECT_EQ(server.commands(), runs[0]);
    expectFocusReset(GetParam().focus_state);
    expectNothingOnTheScreen();

    screen_state = state_sendmail;
    shown = apply();
    EXPECT_EQ(server.commands(), joined(runs));
    EXPECT_EQ(end, WizardEnd::completed);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_SCREEN(shown[0], "golden/everything_done");
}

INSTANTIATE_TEST_SUITE_P(In, ApplyStepFailure, testing::ValuesIn(step_failures), CaseName());

using ApplyFailure = ApplySequence;

TEST_F(ApplyFailure, the_error_box_stands_alone_and_a_second_run_shows_the_lines_again) {
    refuse({step_failures[0].refusal});
    EXPECT_SCREEN(apply().at(0), "golden/domain_error");
    EXPECT_STREQ(settings.admin_password, "");
    EXPECT_STREQ(settings.postmaster_password, "P0stmaster");
    server.faults("\"create domain\" * late 0.2\n");
    Lines lines;
    waits.atSocket = [&] {
        if (lines.empty()) lines = boxed_lines(screen.terminal.image());
    };
    apply();
    EXPECT_EQ(lines, (Lines{"Operations pending", "Please wait until the changes are applied!",
                            "--> setting admin password ...  ... DONE",
                            "--> connecting to CLI ...  ... DONE",
                            "--> creating domain example.com ..."}));
}

TEST_F(ApplyFailure, aliases_and_networks_that_failed_and_are_not_wanted_any_more) {
    settings.relay_ticks[0] = 1;
    refuse({{"update domain name example.com"}, {"config server", 6}});
    apply();
    EXPECT_EQ(screen_state, state_aliases);
    chooseLeast();
    apply();
    EXPECT_EQ(screen_state, state_relay);
    settings.relay_ticks[0] = 0;
    const Lines lines = boxed_lines(apply().at(0));
    EXPECT_EQ(lines.at(5), "--> adding aliases ...  ... DONE") << "count as done";
    EXPECT_EQ(lines.at(8), "--> configuring relay ...") << "leave their line";
    EXPECT_EQ(end, WizardEnd::completed);
}

TEST_F(ApplyFailure, a_service_that_was_configured_before_another_failed_is_configured_again) {
    refuse({{"config server", 7}});
    apply();
    EXPECT_EQ(settings.done_services, 0);
    settings.service_enabled[service_pop3] = settings.service_enabled[service_webmail] = 0;
    const Lines lines = boxed_lines(apply().at(0));
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
    EXPECT_SCREEN(apply().at(0), "golden/everything_done");
    EXPECT_EQ(server.commands(), joined(expected_wire({})));
    EXPECT_EQ(end, WizardEnd::completed);
}

TEST_F(ApplyFailure, the_connection_that_breaks_fails_the_step_and_every_run_after_it) {
    server.faults("\"create domain\" 1 crash\n");
    for (int run = 0; run < 2; ++run) {
        apply();
        EXPECT_EQ(screen_state, state_domain);
    }
}

TEST_F(ApplyFailure, of_a_domain_that_fits_into_no_command_names_it_whole) {
    std::fill_n(settings.primary_domain, 750, 'd');
    std::fill_n(settings.domain_location, 750, 'l');
    std::string shown = boxed_text(apply().at(0));
    shown.erase(std::remove(shown.begin(), shown.end(), ' '), shown.end());
    EXPECT_EQ(shown, "Error!Couldnotcreatethedomain'" + std::string(750, 'd') +
                         "'!Pleasemakesurethisdomaindoesn'talreadyexist!OK");
    EXPECT_EQ(screen_state, state_domain);
    EXPECT_EQ(server.commands().size(), 3u);
}

class ApplyLoginFailure : public ApplySequence {
  protected:
    void expectLoginFailure() {
        const std::vector<ScreenImage> shown = apply();
        ASSERT_EQ(shown.size(), 1u);
        EXPECT_EQ(boxed_text(shown[0]),
                  "Error! Could not login to Teluma server! Please make sure that the CLI port is "
                  "not in use! OK");
        EXPECT_EQ(end, WizardEnd::without_login);
        expectNothingOnTheScreen();
    }
};

TEST_F(ApplyLoginFailure, ends_the_wizard_and_leaves_the_server_to_be_stopped) {
    server.faults("password * refuse\n");
    expectLoginFailure();
    EXPECT_EQ(server_session.pid, server.lastStarted());
    EXPECT_TRUE(server.isRunning());
}

TEST_F(ApplyLoginFailure, is_what_shows_that_the_server_could_not_be_restarted) {
    write_file(InstalledServer::pid_file, "-1\n");
    expectLoginFailure();
    EXPECT_EQ(server.commands(), Lines{});
}

TEST_F(ApplyLoginFailure, is_what_shows_that_too_few_files_can_be_opened) {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = 16;
    setrlimit(RLIMIT_NOFILE, &limit);
    expectLoginFailure();
    EXPECT_EQ(server.commands(), Lines{});
}

TEST_F(ApplyFailure, for_want_of_memory_leaves_the_wizard_at_once) {
    server_session.out_of_memory = true;
    EXPECT_TRUE(apply().empty());
    EXPECT_EQ(end, WizardEnd::out_of_memory);
    EXPECT_EQ(server.commands(), Lines{"-A Adm1n secret"});
}

}  // namespace
