#include "apply/cli_sequences.h"

#include <functional>
#include <string>

#include "tests/apply/own_process.h"
#include "tests/apply/scripted_session.h"
#include "tests/support/case_name.h"
#include "wizard/base/heap_text.h"

namespace {

using Call = std::function<int()>;

const Exchange list_of_one = {"list listeners",
                              "-----\r\n127.0.0.1:9000 | yes\r\n+OK: done\r\nserver> "};
const Exchange remove_it = {"remove listener address 127.0.0.1:9000"};

// The beginning of a conversation, up to a command of which the answer is another one.
Conversation broken_at(const Conversation& all, size_t index, const std::string& answer) {
    Conversation broken(all.begin(), all.begin() + static_cast<long>(index) + 1);
    broken.back().answer = answer;
    // A list that is refused is empty, which is committed before the sequence gives up.
    if (broken.back().command == list_of_one.command && !answer.empty())
        broken.push_back({"commit"});
    return broken;
}

class CliSequence : public ScriptedSession {
  protected:
    // Expects the result and that exactly the commands of the conversation were sent.
    void expectResult(int result, const Call& call, const Conversation& conversation) {
        SCOPED_TRACE(commands_of(conversation));
        answer(answers_of(conversation));
        EXPECT_EQ(call(), result);
        EXPECT_EQ(peer->received(), commands_of(conversation));
        EXPECT_EQ(peer->unread(), "");
    }

    // Expects the commands, and that whichever of them is refused, or not answered before the
    // connection ends, is the last one.
    void expectSequence(const Call& call, const Conversation& all) {
        expectResult(0, call, all);
        for (size_t index = 0; index < all.size(); ++index) {
            expectResult(1, call, broken_at(all, index, refused));
            expectResult(1, call, broken_at(all, index, ""));
        }
    }
};

TEST_F(CliSequence, creating_a_domain) {
    expectSequence(
        [] { return cli_create_domain("example.com", "/var/domains/example.com/", "s3cret"); },
        {{"create domain name example.com domainlocation /var/domains/example.com/ "
          "postmasterpasswd s3cret"},
         {"commit"},
         {"config server"},
         {"set primarydomain example.com"},
         {"commit"},
         {"save config"}});
}

TEST_F(CliSequence, a_domain_that_does_not_fit_into_a_command_is_not_sent) {
    const std::string name(750, 'd');
    expectResult(1, [&] { return cli_create_domain(name.c_str(), name.c_str(), "s3cret"); }, {});
}

Conversation listener_commands(const std::string& service, const Conversation& certificate) {
    Conversation all = {{"config server"},
                        {"config " + service},
                        list_of_one,
                        remove_it,
                        {"commit"},
                        {"config " + service},
                        {"add listener address 10.20.0.5:2525"},
                        {"set enable yes"}};
    all.insert(all.end(), certificate.begin(), certificate.end());
    const Conversation end = {{"commit"}, {"commit"}, {"save config"}, {"back"}};
    all.insert(all.end(), end.begin(), end.end());
    return all;
}

const Conversation certificate = {
    {"config sslcontrol"}, {"set certfile /var/opt/teluma/teluma_cert.pem"}, {"done"}};

struct MailService {
    const char* name;
    const char* service;
};

class CliServiceSequence : public CliSequence, public testing::WithParamInterface<MailService> {};

TEST_P(CliServiceSequence, replaces_the_listeners_and_sets_the_certificate) {
    const char* const service = GetParam().service;
    expectSequence([=] { return cli_config_listener("10.20.0.5", 2525, service); },
                   listener_commands(service, certificate));
}

const MailService mail_services[] = {{"pop3", "pop3"}, {"imap", "imap"}, {"smtp", "smtp-incoming"}};

INSTANTIATE_TEST_SUITE_P(Services, CliServiceSequence, testing::ValuesIn(mail_services),
                         CaseName());

TEST_F(CliSequence, webmail_gets_its_listener_but_no_certificate) {
    expectSequence([] { return cli_config_listener("10.20.0.5", 2525, "webmail"); },
                   listener_commands("webmail", {}));
}

TEST_F(CliSequence, only_exact_service_names_get_a_certificate) {
    expectResult(
        0, [] { return cli_config_listener("10.20.0.5", 2525, "pop3s"); },
        listener_commands("pop3s", {}));
}

Conversation webadmin_commands() {
    return {{"config server"},
            {"config webadmin"},
            list_of_one,
            remove_it,
            {"commit"},
            {"config webadmin"},
            {"add listener address 0.0.0.0:9000"},
            {"set enable yes"},
            {"commit"},
            {"commit"},
            {"save config"},
            {"back"}};
}

int configure_webadmin() {
    return cli_config_webadmin("0.0.0.0", 9000);
}

class CliWebadminSequence : public CliSequence {
  protected:
    void SetUp() override { require_own_process(); }

    // What is sent when an attempt has failed before.
    static Conversation nextAttempt() {
        Conversation all = {{"back"}, {"back"}};
        const Conversation first = webadmin_commands();
        all.insert(all.end(), first.begin(), first.end());
        return all;
    }
};

TEST_F(CliWebadminSequence, replaces_the_listeners) {
    expectResult(0, configure_webadmin, webadmin_commands());
}

class CliWebadminFailure : public CliWebadminSequence,
                           public testing::WithParamInterface<size_t> {};

TEST_P(CliWebadminFailure, is_repaired_by_two_steps_back_at_the_next_attempt) {
    expectResult(1, configure_webadmin, broken_at(webadmin_commands(), GetParam(), refused));
    expectResult(0, configure_webadmin, nextAttempt());
}

INSTANTIATE_TEST_SUITE_P(AtCommand, CliWebadminFailure,
                         testing::Range(size_t{0}, webadmin_commands().size()));

TEST_F(CliWebadminSequence, a_later_attempt_stops_at_the_first_failure_like_the_first) {
    expectResult(1, configure_webadmin, broken_at(webadmin_commands(), 0, refused));
    expectSequence(configure_webadmin, nextAttempt());
}

TEST_F(CliWebadminSequence, does_not_step_back_after_a_success) {
    expectResult(0, configure_webadmin, webadmin_commands());
    expectResult(0, configure_webadmin, webadmin_commands());
}

const Exchange list_without_log = {"show attr services",
                                   "services = ( webadmin cli )\r\n+OK: done\r\nserver> "};
const Exchange list_with_log = {"show attr services",
                                "services = ( log cli )\r\n+OK: done\r\nserver> "};

Conversation services_commands(const Exchange& list, const std::string& services) {
    return {{"config server"},
            list,
            {"set services ( " + services + " )"},
            {"commit"},
            {"config server"},
            {"save config"},
            {"commit"}};
}

TEST_F(CliSequence, setting_all_three_services) {
    expectSequence(
        [] { return cli_set_services("pop3", "imap", "webmail"); },
        services_commands(list_without_log,
                          "smtpIncoming smtpOutgoing processing webadmin cli pop3 imap webmail"));
}

TEST_F(CliSequence, setting_no_services_sets_the_base_list) {
    expectResult(
        0, [] { return cli_set_services(nullptr, nullptr, nullptr); },
        services_commands(list_without_log, "smtpIncoming smtpOutgoing processing webadmin cli"));
}

TEST_F(CliSequence, setting_services_of_a_server_that_logs) {
    expectResult(
        0, [] { return cli_set_services(nullptr, "imap", nullptr); },
        services_commands(list_with_log,
                          "log smtpIncoming smtpOutgoing processing webadmin cli imap"));
}

TEST_F(CliSequence, setting_services_keeps_their_order) {
    expectResult(
        0, [] { return cli_set_services("webmail", nullptr, "pop3"); },
        services_commands(list_without_log,
                          "smtpIncoming smtpOutgoing processing webadmin cli webmail pop3"));
}

class CliAliasSequence : public CliSequence {
  protected:
    void expectAliases(int root, int localhost, int localdomain, const Conversation& all) {
        expectSequence(
            [=] { return cli_update_domain_aliases(root, localhost, localdomain, "example.com"); },
            all);
    }

    const Exchange update = {"update domain name example.com"};
    const Exchange postmaster = {"update account name postmaster"};
    const Exchange root_alias = {"add alias root"};
    const Exchange localhost_alias = {"add alias localhost"};
    const Exchange localdomain_alias = {"add alias localhost.localdomain"};
    const Exchange commit = {"commit"};
};

TEST_F(CliAliasSequence, none_sends_nothing) {
    expectAliases(0, 0, 0, {});
}

TEST_F(CliAliasSequence, root) {
    expectAliases(1, 0, 0, {update, postmaster, root_alias, commit, commit});
}

TEST_F(CliAliasSequence, localhost) {
    expectAliases(0, 1, 0, {update, localhost_alias, commit});
}

TEST_F(CliAliasSequence, localhost_localdomain) {
    expectAliases(0, 0, 1, {update, localdomain_alias, commit});
}

TEST_F(CliAliasSequence, root_and_localhost) {
    expectAliases(1, 1, 0, {update, postmaster, root_alias, commit, localhost_alias, commit});
}

TEST_F(CliAliasSequence, root_and_localhost_localdomain) {
    expectAliases(1, 0, 1, {update, postmaster, root_alias, commit, localdomain_alias, commit});
}

TEST_F(CliAliasSequence, localhost_and_localhost_localdomain) {
    expectAliases(0, 1, 1, {update, localdomain_alias, commit, update, localhost_alias, commit});
}

TEST_F(CliAliasSequence, all_three) {
    expectAliases(1, 1, 1,
                  {update, postmaster, root_alias, commit, localdomain_alias, commit, update,
                   localhost_alias, commit});
}

class CliFiltersFile : public CliSequence {
  protected:
    // Expects the file's path, or nothing for null, and the commands.
    void expectPath(const char* path, const Conversation& conversation) {
        SCOPED_TRACE(commands_of(conversation));
        answer(answers_of(conversation));
        const HeapText found(cli_get_filters_file());
        EXPECT_STREQ(found.get(), path);
        EXPECT_EQ(peer->received(), commands_of(conversation));
    }

    const Conversation all = {
        {"config server"},
        {"show attr smtpfiltersfile", "smtpFiltersFile = \"/var/smtp filters\"\r\n+OK: done\r\n> "},
        {"back"}};
};

TEST_F(CliFiltersFile, is_asked_for_in_the_servers_context) {
    expectPath("/var/smtpfilters", all);
}

TEST_F(CliFiltersFile, is_empty_when_the_server_shows_none) {
    Conversation conversation = all;
    conversation[1].answer = accepted;
    expectPath("", conversation);
}

TEST_F(CliFiltersFile, is_null_when_the_context_is_refused_or_cannot_be_left) {
    expectPath(nullptr, broken_at(all, 0, refused));
    expectPath(nullptr, broken_at(all, 2, refused));
}

TEST_F(CliFiltersFile, is_null_when_the_connection_ends) {
    for (size_t index = 0; index < all.size(); ++index)
        expectPath(nullptr, broken_at(all, index, ""));
}

}  // namespace
