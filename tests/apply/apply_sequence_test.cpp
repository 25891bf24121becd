#include "apply/apply_sequence.h"

#include <gtest/gtest.h>
#include <panel.h>

#include <cstdio>
#include <string>
#include <vector>

#include "tests/apply/apply_case.h"
#include "tests/apply/relay_calls.h"
#include "tests/apply/step_commands.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/golden.h"
#include "tests/support/process.h"
#include "tests/support/wait_until.h"
#include "wizard/base/host_facts.h"
#include "wizard/base/screen_state.h"

namespace {

class ApplySequence : public ApplyCase {};

TEST_F(ApplySequence, sends_the_commands_of_every_step_in_order) {
    chooseAll();
    apply();
    EXPECT_EQ(server.commands(),
              joined_commands({login_commands(), domain_commands(), alias_commands(),
                               webadmin_commands("127.0.0.1:9000"),
                               listener_commands("smtp-incoming", "127.0.0.1:25", "0.0.0.0:25"),
                               services_commands(" pop3 imap webmail"),
                               listener_commands("pop3", "127.0.0.1:110", "0.0.0.0:110"),
                               listener_commands("imap", "127.0.0.1:143", "0.0.0.0:143"),
                               listener_commands("webmail", "127.0.0.1:80", "0.0.0.0:80"),
                               relay_commands()}));
}

TEST_F(ApplySequence, shows_the_newest_eight_lines_and_ok_when_everything_was_chosen) {
    chooseAll();
    const std::vector<ScreenImage> shown = apply();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_SCREEN(shown[0], "golden/everything_done");
}

TEST_F(ApplySequence, shows_a_line_for_every_step_and_none_for_what_was_not_chosen) {
    wizard_settings.alias_root_to_postmaster = 0;
    wizard_settings.alias_localhost = 0;
    wizard_settings.alias_localhost_localdomain = 0;
    enable(false, false, false);
    const std::vector<ScreenImage> shown = apply();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_SCREEN(shown[0], "golden/least_done");
    EXPECT_EQ(
        server.commands(),
        joined_commands({login_commands(), domain_commands(), webadmin_commands("127.0.0.1:9000"),
                         listener_commands("smtp-incoming", "127.0.0.1:25", "0.0.0.0:25"),
                         services_commands("")}));
}

TEST_F(ApplySequence, ends_the_wizard_and_stops_the_server) {
    apply();
    EXPECT_EQ(screen_state, state_end);
    const pid_t process = server.lastStarted();
    wait_until([=] { return !process_running(process); }, "the server has ended");
    EXPECT_FALSE(exists(InstalledServer::pid_file));
    update_panels();
    doupdate();
    EXPECT_EQ(boxed_text(screen.terminal.terminalImage()), "");
}

TEST_F(ApplySequence, marks_every_step_that_was_done) {
    chooseAll();
    apply();
    const WizardSettings& settings = wizard_settings;
    for (const int done : {settings.done_password, settings.done_login, settings.done_domain,
                           int{settings.done_aliases}, settings.done_webadmin, settings.done_smtp,
                           settings.done_services, settings.done_relay, settings.done_sendmail})
        EXPECT_NE(done, 0);
}

TEST_F(ApplySequence, does_not_mark_what_was_not_chosen) {
    wizard_settings.alias_root_to_postmaster = 0;
    wizard_settings.alias_localhost = 0;
    wizard_settings.alias_localhost_localdomain = 0;
    apply();
    EXPECT_EQ(wizard_settings.done_aliases, 0);
    EXPECT_EQ(wizard_settings.done_relay, 0);
    EXPECT_EQ(wizard_settings.done_sendmail, 0);
}

// What there is to see and to read while the wizard waits to connect.
struct Moment {
    std::vector<std::string> lines;
    bool cursor_visible = false;
    int screen_state = 0;
    int apply_running = 0;
};

TEST_F(ApplySequence, shows_a_step_that_runs_below_those_that_are_done) {
    Moment moment;
    waits.inSleep = [&] {
        const ScreenImage image = screen.terminal.terminalImage();
        moment = {boxed_lines(image), image.cursor().visible, screen_state,
                  wizard_settings.apply_running};
    };
    EXPECT_EQ(wizard_settings.apply_running, 0);
    apply();
    EXPECT_EQ(moment.lines,
              (Lines{"Operations pending", "Please wait until the changes are applied!",
                     "--> setting admin password ...  ... DONE", "--> connecting to CLI ..."}));
    EXPECT_TRUE(moment.cursor_visible);
    EXPECT_EQ(moment.screen_state, state_pending);
    EXPECT_EQ(moment.apply_running, 1);
}

TEST_F(ApplySequence, shows_a_long_domain_name_cut) {
    const std::string name = std::string(30, 'd') + ".example.com";
    std::snprintf(wizard_settings.primary_domain, sizeof(wizard_settings.primary_domain), "%s",
                  name.c_str());
    enable(false, false, false);
    const std::vector<std::string> lines = boxed_lines(apply().at(0));
    ASSERT_GT(lines.size(), 4u);
    EXPECT_EQ(lines[4], "--> creating domain " + std::string(25, 'd') + ".. ...  ... DONE");
}

TEST_F(ApplySequence, passes_the_address_of_each_interface_and_each_port) {
    wizard_settings.webadmin_interface = 2;
    wizard_settings.webadmin_port = 9001;
    wizard_settings.smtp_interface = 3;
    wizard_settings.smtp_port = 2525;
    wizard_settings.pop3_interface = 1;
    wizard_settings.pop3_port = 1110;
    wizard_settings.imap_interface = 2;
    wizard_settings.imap_port = 1143;
    wizard_settings.webmail_interface = 3;
    wizard_settings.webmail_port = 8080;
    apply();
    EXPECT_EQ(server.saved("listener "),
              (Lines{"listener cli 127.0.0.1:9091", "listener imap 192.168.7.2:1143",
                     "listener pop3 127.0.0.1:1110", "listener smtp-incoming 10.20.0.5:2525",
                     "listener webadmin 192.168.7.2:9001", "listener webmail 10.20.0.5:8080"}));
}

struct Services {
    const char* name;
    bool pop3;
    bool imap;
    bool webmail;
};

class ApplyServices : public ApplyCase, public testing::WithParamInterface<Services> {};

TEST_P(ApplyServices, sets_and_configures_those_that_are_enabled_in_order) {
    const Services& chosen = GetParam();
    enable(chosen.pop3, chosen.imap, chosen.webmail);
    apply();
    std::vector<Lines> expected = {services_commands(std::string(chosen.pop3 ? " pop3" : "") +
                                                     (chosen.imap ? " imap" : "") +
                                                     (chosen.webmail ? " webmail" : ""))};
    if (chosen.pop3)
        expected.push_back(listener_commands("pop3", "127.0.0.1:110", "0.0.0.0:110"));
    if (chosen.imap)
        expected.push_back(listener_commands("imap", "127.0.0.1:143", "0.0.0.0:143"));
    if (chosen.webmail)
        expected.push_back(listener_commands("webmail", "127.0.0.1:80", "0.0.0.0:80"));
    const Lines behind_smtp = server.commandsAfter("add listener address 0.0.0.0:25");
    const Lines smtp_end = {"set enable yes",
                            "config sslcontrol",
                            "set certfile /var/opt/teluma/teluma_cert.pem",
                            "done",
                            "commit",
                            "commit",
                            "save config",
                            "back"};
    expected.insert(expected.begin(), smtp_end);
    EXPECT_EQ(behind_smtp, joined_commands(expected));
}

const Services service_choices[] = {{"none", false, false, false},
                                    {"pop3", true, false, false},
                                    {"imap", false, true, false},
                                    {"webmail", false, false, true},
                                    {"pop3_and_imap", true, true, false},
                                    {"pop3_and_webmail", true, false, true},
                                    {"imap_and_webmail", false, true, true},
                                    {"all_three", true, true, true}};

INSTANTIATE_TEST_SUITE_P(Choices, ApplyServices, testing::ValuesIn(service_choices), CaseName());

class ApplyRelay : public ApplyCase {
  protected:
    static std::vector<int> selected() {
        return {wizard_settings.relay_selected,
                wizard_settings.relay_selected + wizard_settings.relay_selected_count};
    }
};

TEST_F(ApplyRelay, the_filter_writer_runs_also_without_a_network_but_shows_no_line) {
    enable(false, false, false);
    const std::vector<ScreenImage> shown = apply();
    EXPECT_EQ(relay_write_filter_calls(), std::vector<int>{0});
    EXPECT_FALSE(shown.at(0).shows("relay"));
    EXPECT_EQ(selected(), std::vector<int>{});
}

TEST_F(ApplyRelay, the_ticked_networks_are_collected_in_the_order_of_the_list) {
    wizard_settings.relay_ticks[0] = 1;
    wizard_settings.relay_ticks[2] = 1;
    apply();
    EXPECT_EQ(selected(), (std::vector<int>{0, 2}));
    const std::string script = read_file(InstalledServer::filters);
    EXPECT_NE(script.find("if (anyof( iprange (remoteSmtpIp, \"10.0.0.0/255.0.0.0\"), iprange "
                          "(remoteSmtpIp, \"127.0.0.0/255.0.0.0\"))) {"),
              std::string::npos);
}

TEST_F(ApplyRelay, a_tick_behind_the_networks_of_the_list_does_not_count) {
    wizard_settings.relay_ticks[relay_network_count] = 1;
    apply();
    EXPECT_EQ(selected(), std::vector<int>{});
}

class ApplySendmail : public ApplyCase {};

TEST_F(ApplySendmail, no_shows_no_line_and_leaves_sendmail_alone) {
    enable(false, false, false);
    const FileFacts before = file_facts("/usr/sbin/sendmail");
    const std::vector<ScreenImage> shown = apply();
    EXPECT_FALSE(shown.at(0).shows("sendmail"));
    EXPECT_FALSE(file_facts("/usr/sbin/sendmail").is_link);
    EXPECT_EQ(file_facts("/usr/sbin/sendmail").size, before.size);
}

TEST_F(ApplySendmail, yes_installs_the_wrapper) {
    wizard_settings.sendmail_wrapper = 1;
    const std::vector<ScreenImage> shown = apply();
    EXPECT_TRUE(shown.at(0).shows("--> configuring TELUMA sendmail ...  ... DONE"));
    EXPECT_EQ(link_target("/usr/sbin/sendmail"), "/opt/teluma/bin/sendmail");
}

}  // namespace
