#include "apply/cli_sequences.h"

#include <functional>
#include <string>

#include "apply/server_session.h"
#include "tests/apply/scripted_session.h"
#include "tests/support/case_name.h"
#include "wizard/base/heap_text.h"

namespace {

using Call = std::function<int()>;

const Exchange list_of_one = {"list listeners",
                              "-----\r\n127.0.0.1:9000 | yes\r\n+OK: done\r\nserver> "};

// The beginning of a conversation, up to a command of which the answer is another one.
Conversation broken_at(const Conversation& all, size_t index, const std::string& answer) {
    Conversation broken(all.begin(), all.begin() + static_cast<long>(index) + 1);
    broken.back().answer = answer;
    // A list that is refused is empty, which is committed before the sequence gives up.
    if (broken.back().command == list_of_one.command && !answer.empty())
        broken.push_back({"commit"});
    return broken;
}

Conversation operator+(Conversation left, const Conversation& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

struct Sequence {
    const char* name;
    Call call;
    Conversation all;
};

class CliSequence : public ScriptedSession, public testing::WithParamInterface<Sequence> {
  protected:
    void expectResult(int result, const Call& call, const Conversation& conversation) {
        expectConversation(conversation, [&] { EXPECT_EQ(call(), result); });
    }
};

// The command that is refused, or not answered before the connection ends, is the last one.
TEST_P(CliSequence, sends_these_commands_up_to_the_first_that_fails) {
    const Conversation& all = GetParam().all;
    expectResult(0, GetParam().call, all);
    for (size_t index = 0; index < all.size(); ++index) {
        for (const char* answer : {refused, ""}) {
            expectResult(1, GetParam().call, broken_at(all, index, answer));
            server_session.webadmin_failures = 0;
        }
    }
}

Conversation replacement(const std::string& service, const Conversation& certificate) {
    const Conversation beginning = {{"config server"},
                                    {"config " + service},
                                    list_of_one,
                                    {"remove listener address 127.0.0.1:9000"},
                                    {"commit"},
                                    {"config " + service},
                                    {"add listener address 10.20.0.5:2525"},
                                    {"set enable yes"}};
    return beginning + certificate +
           Conversation{{"commit"}, {"commit"}, {"save config"}, {"back"}};
}

Sequence listener(const char* name, const char* service, bool gets_certificate = true) {
    const Conversation certificate = {
        {"config sslcontrol"}, {"set certfile /var/opt/teluma/teluma_cert.pem"}, {"done"}};
    return {name, [=] { return cli_config_listener("10.20.0.5", 2525, service); },
            replacement(service, gets_certificate ? certificate : Conversation())};
}

int configure_webadmin() { return cli_config_webadmin("10.20.0.5", 2525); }

Sequence services(const char* name, const char* first, const char* second, const char* third,
                  const std::string& listed, const std::string& set) {
    return {name,
            [=] { return cli_set_services(first, second, third); },
            {{"config server"},
             {"show attr services", "services = ( " + listed + " )\r\n+OK: done\r\nserver> "},
             {"set services ( " + set + " )"},
             {"commit"},
             {"config server"},
             {"save config"},
             {"commit"}}};
}

const std::string base = "smtpIncoming smtpOutgoing processing webadmin cli";

Sequence aliases(const char* name, int root, int localhost, int localdomain,
                 const Conversation& all) {
    return {name,
            [=] { return cli_update_domain_aliases(root, localhost, localdomain, "example.com"); },
            all};
}

const Exchange update = {"update domain name example.com"};
const Conversation add_root = {{"update account name postmaster"}, {"add alias root"}, {"commit"}};
const Conversation add_localhost = {{"add alias localhost"}, {"commit"}};
const Conversation add_localdomain = {{"add alias localhost.localdomain"}, {"commit"}};

const Sequence sequences[] = {
    {"creating_a_domain",
     [] { return cli_create_domain("example.com", "/var/domains/example.com/", "s3cret"); },
     {{"create domain name example.com domainlocation /var/domains/example.com/ "
       "postmasterpasswd s3cret"},
      {"commit"},
      {"config server"},
      {"set primarydomain example.com"},
      {"commit"},
      {"save config"}}},
    {"webadmin", configure_webadmin, replacement("webadmin", {})},
    listener("pop3", "pop3"),
    listener("imap", "imap"),
    listener("smtp", "smtp-incoming"),
    listener("webmail_without_a_certificate", "webmail", false),
    listener("a_name_that_begins_like_a_mail_services", "pop3s", false),
    services("all_services", "pop3", "imap", "webmail", "webadmin cli",
             base + " pop3 imap webmail"),
    services("no_services", nullptr, nullptr, nullptr, "webadmin cli", base),
    services("a_service_of_a_server_that_logs", nullptr, "imap", nullptr, "log cli",
             "log " + base + " imap"),
    services("services_in_their_order", "webmail", nullptr, "pop3", "cli", base + " webmail pop3"),
    aliases("no_alias", 0, 0, 0, {}),
    aliases("root", 1, 0, 0, Conversation{update} + add_root + Conversation{{"commit"}}),
    aliases("localhost", 0, 1, 0, Conversation{update} + add_localhost),
    aliases("localdomain", 0, 0, 1, Conversation{update} + add_localdomain),
    aliases("root_and_localhost", 1, 1, 0, Conversation{update} + add_root + add_localhost),
    aliases("root_and_localdomain", 1, 0, 1, Conversation{update} + add_root + add_localdomain),
    aliases("localhost_and_localdomain", 0, 1, 1,
            Conversation{update} + add_localdomain + Conversation{update} + add_localhost),
    aliases(
        "all_aliases", 1, 1, 1,
        Conversation{update} + add_root + add_localdomain + Conversation{update} + add_localhost),
};

INSTANTIATE_TEST_SUITE_P(For, CliSequence, testing::ValuesIn(sequences), CaseName());

using CliSequenceCase = CliSequence;

TEST_F(CliSequenceCase, a_domain_that_does_not_fit_into_a_command_is_not_sent) {
    const std::string name(750, 'd');
    expectResult(1, [&] { return cli_create_domain(name.c_str(), name.c_str(), "s3cret"); }, {});
}

TEST_F(CliSequenceCase, webadmin_is_repaired_by_two_steps_back_until_it_has_succeeded) {
    const Conversation first = replacement("webadmin", {});
    const Conversation next = Conversation{{"back"}, {"back"}} + first;
    for (size_t index = 0; index < first.size(); ++index) {
        server_session = {};
        expectResult(1, configure_webadmin, broken_at(first, index, refused));
        for (size_t again = 0; again < next.size(); ++again)
            expectResult(1, configure_webadmin, broken_at(next, again, refused));
        expectResult(0, configure_webadmin, next);
    }
}

TEST_F(CliSequenceCase, webadmin_does_not_step_back_after_a_success) {
    for (int call = 0; call < 2; ++call)
        expectResult(0, configure_webadmin, replacement("webadmin", {}));
}

TEST_F(CliSequenceCase, the_filters_file_is_asked_for_in_the_servers_context) {
    const auto expect_path = [&](const char* path, const Conversation& conversation) {
        expectConversation(conversation,
                           [&] { EXPECT_STREQ(HeapText(cli_get_filters_file()).get(), path); });
    };
    const Conversation all = {
        {"config server"},
        {"show attr smtpfiltersfile", "smtpFiltersFile = \"/var/smtp filters\"\r\n+OK: done\r\n> "},
        {"back"}};
    expect_path("/var/smtpfilters", all);
    expect_path("", {all[0], {all[1].command}, all[2]});
    expect_path(nullptr, broken_at(all, 0, refused));
    expect_path(nullptr, broken_at(all, 2, refused));
    for (size_t index = 0; index < all.size(); ++index)
        expect_path(nullptr, broken_at(all, index, ""));
}

}  // namespace
