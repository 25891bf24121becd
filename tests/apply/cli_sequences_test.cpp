#include "apply/cli_sequences.h"

#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "apply/server_session.h"
#include "tests/apply/scripted_session.h"
#include "wizard/base/heap_text.h"

namespace {

using Call = std::function<int()>;

std::string answer_to(const std::string& command) {
    std::string shown;
    if (command == "list listeners") shown = "-----\r\n127.0.0.1:9000 | yes\r\n";
    if (command == "show attr services") shown = "services = ( webadmin cli )\r\n";
    if (command == "show attr smtpfiltersfile") shown = "smtpFiltersFile = \"/var/filters\"\r\n";
    return shown + accepted;
}

// A conversation of commands with ";" between them, all of which are accepted.
Conversation conversation_of(const std::string& commands) {
    Conversation conversation;
    std::istringstream text(commands);
    for (std::string command; std::getline(text >> std::ws, command, ';');)
        conversation.push_back({command, answer_to(command)});
    return conversation;
}

// The beginning of a conversation, up to a command of which the answer is another one.
Conversation broken_at(const Conversation& all, size_t index, const std::string& answer) {
    Conversation broken(all.begin(), all.begin() + static_cast<long>(index) + 1);
    broken.back().answer = answer;
    // A list that is refused is empty, which is committed before the sequence gives up.
    if (broken.back().command == "list listeners" && !answer.empty()) broken.push_back({"commit"});
    return broken;
}

struct Sequence {
    const char* name;
    Call call;
    std::string commands;
};

std::string replacement(const std::string& service, const std::string& certificate = "") {
    return "config server; config " + service +
           "; list listeners; remove listener address 127.0.0.1:9000; commit; config " + service +
           "; add listener address 10.20.0.5:2525; set enable yes; " + certificate +
           "commit; commit; save config; back";
}

int configure_webadmin() { return cli_config_webadmin("10.20.0.5", 2525); }

Sequence listener(const char* name, const char* service, bool gets_certificate = true) {
    return {name, [=] { return cli_config_listener("10.20.0.5", 2525, service); },
            replacement(service, gets_certificate ? "config sslcontrol; set certfile "
                                                    "/var/opt/teluma/teluma_cert.pem; done; "
                                                  : "")};
}

Sequence services(const char* name, const char* first, const char* second, const char* third,
                  const std::string& added) {
    return {name, [=] { return cli_set_services(first, second, third); },
            "config server; show attr services; set services ( smtpIncoming smtpOutgoing "
            "processing webadmin cli" +
                added + " ); commit; config server; save config; commit"};
}

Sequence aliases(const char* name, int root, int localhost, int localdomain,
                 const std::string& commands) {
    return {name,
            [=] { return cli_update_domain_aliases(root, localhost, localdomain, "example.com"); },
            commands};
}

const std::string update = "update domain name example.com; ";
const std::string add_root = "update account name postmaster; add alias root; commit; ";
const std::string add_localhost = "add alias localhost; commit; ";
const std::string add_localdomain = "add alias localhost.localdomain; commit; ";

const Sequence sequences[] = {
    {"creating_a_domain",
     [] { return cli_create_domain("example.com", "/var/domains/example.com/", "s3cret"); },
     "create domain name example.com domainlocation /var/domains/example.com/ postmasterpasswd "
     "s3cret; commit; config server; set primarydomain example.com; commit; save config"},
    {"webadmin", configure_webadmin, replacement("webadmin")},
    listener("pop3", "pop3"),
    listener("imap", "imap"),
    listener("smtp", "smtp-incoming"),
    listener("webmail_without_a_certificate", "webmail", false),
    listener("a_name_that_begins_like_a_mail_services", "pop3s", false),
    services("all_services", "pop3", "imap", "webmail", " pop3 imap webmail"),
    services("no_services", nullptr, nullptr, nullptr, ""),
    services("services_in_their_order", "webmail", nullptr, "pop3", " webmail pop3"),
    aliases("no_alias", 0, 0, 0, ""),
    aliases("root", 1, 0, 0, update + add_root + "commit"),
    aliases("localhost", 0, 1, 0, update + add_localhost),
    aliases("localdomain", 0, 0, 1, update + add_localdomain),
    aliases("root_and_localhost", 1, 1, 0, update + add_root + add_localhost),
    aliases("root_and_localdomain", 1, 0, 1, update + add_root + add_localdomain),
    aliases("localhost_and_localdomain", 0, 1, 1,
            update + add_localdomain + update + add_localhost),
    aliases("all_aliases", 1, 1, 1, update + add_root + add_localdomain + update + add_localhost),
};

class CliSequence : public ScriptedSession {
  protected:
    void expectResult(int result, const Call& call, const Conversation& conversation) {
        expectConversation(conversation, [&] { EXPECT_EQ(call(), result); });
    }
};

// The command that is refused, or not answered before the connection ends, is the last one.
TEST_F(CliSequence, sends_these_commands_up_to_the_first_that_fails) {
    for (const auto& [name, call, commands] : sequences) {
        SCOPED_TRACE(name);
        const Conversation all = conversation_of(commands);
        expectResult(0, call, all);
        for (size_t index = 0; index < all.size(); ++index) {
            for (const char* answer : {refused, ""}) {
                expectResult(1, call, broken_at(all, index, answer));
                server_session.webadmin_failures = 0;
            }
        }
    }
}

TEST_F(CliSequence, a_domain_that_does_not_fit_into_a_command_is_not_sent) {
    const std::string name(750, 'd');
    expectResult(1, [&] { return cli_create_domain(name.c_str(), name.c_str(), "s3cret"); }, {});
}

TEST_F(CliSequence, webadmin_is_repaired_by_two_steps_back_until_it_has_succeeded) {
    const Conversation first = conversation_of(replacement("webadmin"));
    const Conversation next = conversation_of("back; back; " + replacement("webadmin"));
    for (int call = 0; call < 2; ++call) expectResult(0, configure_webadmin, first);
    for (size_t index = 0; index < first.size(); ++index) {
        server_session = {};
        expectResult(1, configure_webadmin, broken_at(first, index, refused));
        for (size_t again = 0; again < next.size(); ++again)
            expectResult(1, configure_webadmin, broken_at(next, again, refused));
        expectResult(0, configure_webadmin, next);
    }
}

TEST_F(CliSequence, the_filters_file_is_asked_for_in_the_servers_context) {
    const auto expect_path = [&](const char* path, const Conversation& conversation) {
        expectConversation(conversation,
                           [&] { EXPECT_STREQ(HeapText(cli_get_filters_file()).get(), path); });
    };
    const Conversation all = conversation_of("config server; show attr smtpfiltersfile; back");
    expect_path("/var/filters", all);
    expect_path("", {all[0], {all[1].command, refused}, all[2]});
    expect_path(nullptr, broken_at(all, 0, refused));
    expect_path(nullptr, broken_at(all, 2, refused));
    for (size_t index = 0; index < all.size(); ++index)
        expect_path(nullptr, broken_at(all, index, ""));
}

// What a list command answers for these rows.
std::string table_of(const std::string& rows) {
    return "Address | Enabled\r\n--------+--------\r\n" + rows + accepted;
}

std::string eleven_rows() {
    std::string rows;
    for (int port = 1; port <= 11; ++port) rows += "a:" + std::to_string(port) + " | yes\r\n";
    return rows;
}

struct ListenerTable {
    const char* name;
    std::string list;                  // the answer to the list command
    std::vector<std::string> removed;  // the listeners that are then removed
    int result = 0;
    const char* last_answer = accepted;  // to the commit, or to the last removal; null: not sent
};

const ListenerTable listener_tables[] = {
    {"two_rows_in_order",
     table_of("1.1.1.1:9000 | yes\r\n2.2.2.2:80 | no\r\n"),
     {"1.1.1.1:9000", "2.2.2.2:80"}},
    {"no_row", table_of(""), {}},
    {"the_prompt_right_after_the_dashes", "+OK: none\r\n-----\r\nserver> ", {}},
    {"no_table", accepted, {}},
    {"spaces_around_the_address", table_of("   1.2.3.4:25     | yes  \r\n"), {"1.2.3.4:25"}},
    {"rows_before_the_dashes_and_after_a_line_without_a_bar",
     "9.9.9.9:9 | x\r\n-----\r\n1.1.1.1:1 | x\r\nthat is all\r\n2.2.2.2:2 | x\r\n+OK: > ",
     {"1.1.1.1:1"}},
    {"a_second_table",
     "-----\r\n1.1.1.1:1 | x\r\n-----\r\n2.2.2.2:2 | x\r\n+OK: > ",
     {"1.1.1.1:1", "2.2.2.2:2"}},
    {"the_prompt_with_ok_after_the_rows", "-----\r\n1.1.1.1:1 | x\r\n+OK: server> ", {"1.1.1.1:1"}},
    {"a_bar_and_ok_in_a_row", "-----\r\n1.1.1.1:1 | +OK: > \r\n-ERR: odd\r\n> ", {"1.1.1.1:1"}, 1},
    {"eleven_rows_of_which_ten_are_removed",
     table_of(eleven_rows()),
     {"a:1", "a:2", "a:3", "a:4", "a:5", "a:6", "a:7", "a:8", "a:9", "a:10"}},
    {"no_ok", "-----\r\n1.1.1.1:1 | x\r\n-ERR: odd\r\nserver> ", {"1.1.1.1:1"}, 1},
    {"a_removal_refused",
     table_of("1.1.1.1:1 | x\r\n2.2.2.2:2 | x\r\n"),
     {"1.1.1.1:1"},
     1,
     refused},
    {"an_end_within_the_rows", "+OK: list\r\n-----\r\n1.1.1.1:1 | x\r\n", {}, 1, nullptr},
    {"an_end_after_the_rows", "+OK: list\r\n-----\r\n1.1.1.1:1 | x\r\nmore\r\n", {}, 1, nullptr},
};

using CliResetListeners = ScriptedSession;

TEST_F(CliResetListeners, removes_those_in_a_table) {
    for (const ListenerTable& table : listener_tables) {
        SCOPED_TRACE(table.name);
        Conversation conversation = {{"list listeners", table.list}};
        for (const std::string& address : table.removed)
            conversation.push_back({"remove listener address " + address});
        if (table.last_answer == refused)
            conversation.back().answer = refused;
        else if (table.last_answer != nullptr)
            conversation.push_back({"commit"});
        expectConversation(conversation,
                           [&] { EXPECT_EQ(cli_reset_listeners("list listeners"), table.result); });
    }
}

// A reply to a question, and what the reader makes of it; nothing for null.
struct ReadReply {
    std::string reply;
    std::optional<std::string> text;
};

class CliReplyReader : public ScriptedSession {
  protected:
    void expectReads(char* (*reader)(const char*), const std::vector<ReadReply>& replies) {
        for (const ReadReply& read : replies) {
            SCOPED_TRACE(read.reply);
            expectConversation({{"show attr", read.reply}}, [&] {
                const HeapText text(reader("show attr"));
                ASSERT_EQ(text != nullptr, read.text.has_value());
                if (text == nullptr) return;
                EXPECT_EQ(text.get(), *read.text);
                EXPECT_EQ(text.get()[511], '\0') << "the buffer has 512 bytes";
            });
        }
    }
};

TEST_F(CliReplyReader, starts_the_services_with_log_if_those_that_are_shown_hold_it) {
    const std::string base = "smtpIncoming smtpOutgoing processing webadmin cli";
    const std::string logging = "log " + base;
    expectReads(cli_read_services,
                {{"services = ( webadmin log cli )\r\n+OK: done\r\n> ", logging},
                 {"services = ( catalogue cli )\r\n+OK: done\r\n> ", logging},
                 {"show attr services\r\nservices = ( log )\r\n+OK: done\r\n> ", logging},
                 {"services = ( log )\r\n+OK: services shown\r\n> ", logging},
                 {"+OK: \r\nservices = ( log )\r\n> ", logging},
                 {"services = ( log ) OK: server> ", logging},
                 {"services = ( pop3 imap ftp )\r\n+OK: done\r\n> ", base},
                 {"log services = ( cli ) log\r\n+OK: done\r\n> ", base},
                 {"services = ( cli ) ( log )\r\n+OK: done\r\n> ", base},
                 {"( log )\r\nservices = ( cli )\r\n+OK: done\r\n> ", base},
                 {"services = log\r\n+OK: done\r\n> ", base},
                 {"services = ( cli )\r\nOK: done\r\n> ", base},
                 {"services = ( cli )\r\n-ERR: odd\r\n> ", std::nullopt},
                 {"+OK: done\r\n> ", std::nullopt},
                 {"", std::nullopt},
                 {"services = ( cli )\r\n+OK: done\r\n", std::nullopt}});
}

TEST_F(CliReplyReader, takes_the_spaces_out_of_the_quoted_filters_file) {
    expectReads(
        cli_read_filters_file,
        {{"smtpFiltersFile = \"/var/smtp.filters\"\r\n+OK: done\r\n> ", "/var/smtp.filters"},
         {"smtpFiltersFile = \" /var/my  filters \"\r\n> ", "/var/myfilters"},
         {"smtpFiltersFile = \"/a\"\r\n-ERR: odd\r\n> ", "/a"},
         {"smtpFiltersFile = \"/a\" \"/b\"\r\n> ", "/a"},
         {"smtpFiltersFile = \"/a\" server> ", "/a"},
         {"smtpFiltersFile = \"/a\"\r\n+OK: smtpFiltersFile shown\r\n> ", "/a"},
         {"smtpFiltersFile = \"\"\r\n> ", ""},
         {"smtpFiltersFile = none\r\n> ", ""},
         {"\"/a\"\r\n+OK: done\r\n> ", ""},
         {"smtpfiltersfile = \"/a\"\r\n> ", ""},
         {"", std::nullopt},
         {"smtpFiltersFile = \"/a\"\r\n", std::nullopt}});
}

}  // namespace
