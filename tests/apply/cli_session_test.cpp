// Single commands, and replies that are read.

#include "apply/cli_session.h"

#include <optional>
#include <string>

#include "apply/cli_sequences.h"
#include "apply/server_session.h"
#include "tests/apply/scripted_session.h"
#include "tests/support/case_name.h"
#include "wizard/base/heap_text.h"

namespace {

class CliCommand : public ScriptedSession {};

TEST_F(CliCommand, the_greeting_is_swallowed_up_to_its_prompt) {
    answer("TELUMA\r\nsee <http://teluma>!\r\n\r\nlogin> +OK: next\r\n");
    EXPECT_EQ(cli_wait_prompt(), 0);
    EXPECT_EQ(peer->unread(), "+OK: next\r\n");
    for (const std::string& greeting : {std::string("TELUMA\r\nlogin>"), std::string(256, 'x')}) {
        answer(greeting);
        EXPECT_EQ(cli_wait_prompt(), 1);
    }
}

TEST_F(CliCommand, is_sent_as_a_line_and_its_reply_read_no_further_than_the_prompt) {
    answer("+OK: done\r\nserver> -ERR: later\r\n");
    EXPECT_EQ(cli_command("commit"), 0);
    EXPECT_EQ(peer->received(), "commit\r\n");
    EXPECT_EQ(peer->unread(), "-ERR: later\r\n");
}

struct JudgedReply {
    const char* name;
    std::string reply;
    int result;
};

class CliCommandReply : public ScriptedSession, public testing::WithParamInterface<JudgedReply> {};

TEST_P(CliCommandReply, is_judged) {
    answer(GetParam().reply);
    EXPECT_EQ(cli_command("commit"), GetParam().result);
}

const JudgedReply judged_replies[] = {
    {"ok_in_the_middle_of_a_line", "reply +OK: done\r\nserver> ", 0},
    {"ok_on_the_first_of_several_lines", "+OK: done\r\nmore\r\n-ERR: odd\r\nserver> ", 0},
    {"ok_on_the_last_of_several_lines", "one\r\n-ERR: odd\r\n+OK: done\r\nserver> ", 0},
    {"ok_only_on_the_prompt_line", "one\r\n+OK: done server> ", 0},
    {"refused", "-ERR: no\r\nserver> ", 1},
    {"nothing_but_the_prompt", "server> ", 1},
    {"ok_without_the_plus", "OK: done\r\nserver> ", 1},
    {"ok_without_the_colon", "+OK done\r\nserver> ", 1},
    {"ok_after_the_prompt", "server> +OK: done\r\n", 1},
    {"no_prompt_after_ok", "+OK: done\r\n", 1},
    {"no_reply_at_all", "", 1},
    {"a_line_of_256_bytes_before_ok", std::string(256, 'x') + "\r\n+OK: done\r\nserver> ", 1},
    {"a_line_of_256_bytes_after_ok", "+OK: done\r\n" + std::string(256, 'x') + "\r\nserver> ", 1},
    {"a_line_of_255_bytes_before_ok", std::string(255, 'x') + "\r\n+OK: done\r\nserver> ", 0},
    {"garbage_without_line_ends", std::string(300, '\x9b'), 1},
};

INSTANTIATE_TEST_SUITE_P(Replies, CliCommandReply, testing::ValuesIn(judged_replies), CaseName());

TEST_F(CliCommand, fails_when_it_cannot_be_sent_and_without_a_connection) {
    answer(accepted);
    peer->hangUp();
    EXPECT_EQ(cli_command("commit"), 1);
    EXPECT_EQ(cli_reset_listeners("list listeners"), 1);
    EXPECT_EQ(HeapText(cli_read_services("show attr services")), nullptr);
    EXPECT_EQ(HeapText(cli_read_filters_file("show attr smtpfiltersfile")), nullptr);
    server_session.socket.close();
    EXPECT_EQ(cli_command("commit"), 1);
    EXPECT_EQ(cli_wait_prompt(), 1);
}

// What a list command answers for these rows.
std::string table_of(const std::string& rows) {
    return "Address | Enabled\r\n--------+--------\r\n" + rows + accepted;
}

struct ListenerTable {
    const char* name;
    std::string list;                  // the answer to the list command
    std::vector<std::string> removed;  // the listeners that are then removed
    int result = 0;
    const char* last_answer = accepted;  // to the commit, or to the last removal; null: not sent
};

class CliResetListeners : public ScriptedSession,
                          public testing::WithParamInterface<ListenerTable> {};

TEST_P(CliResetListeners, of_this_table) {
    Conversation conversation = {{"list listeners", GetParam().list}};
    for (const std::string& address : GetParam().removed)
        conversation.push_back({"remove listener address " + address});
    if (GetParam().last_answer == refused)
        conversation.back().answer = refused;
    else if (GetParam().last_answer != nullptr)
        conversation.push_back({"commit"});
    expectConversation(conversation,
                       [] { EXPECT_EQ(cli_reset_listeners("list listeners"), GetParam().result); });
}

ListenerTable table_of_eleven() {
    ListenerTable table{"eleven_rows_of_which_ten_are_removed", "", {}};
    std::string rows;
    for (int port = 1; port <= 11; ++port) {
        table.removed.push_back("1.1.1.1:" + std::to_string(port));
        rows += table.removed.back() + " | yes\r\n";
    }
    table.removed.pop_back();
    table.list = table_of(rows);
    return table;
}

const ListenerTable listener_tables[] = {
    {"two_rows_in_order",
     table_of("127.0.0.1:9000 | yes\r\n10.20.0.5:80 | no\r\n"),
     {"127.0.0.1:9000", "10.20.0.5:80"}},
    {"no_row", table_of(""), {}},
    {"the_prompt_right_after_the_dashes", "+OK: none\r\n-----\r\nserver> ", {}},
    {"no_table", accepted, {}},
    {"spaces_around_the_address", table_of("   1.2.3.4:25     | yes  \r\n"), {"1.2.3.4:25"}},
    {"rows_before_the_dashes_and_after_a_line_without_a_bar",
     "9.9.9.9:9 | x\r\n-----\r\n1.1.1.1:1 | x\r\nthat is all\r\n2.2.2.2:2 | x\r\n" +
         std::string(accepted),
     {"1.1.1.1:1"}},
    {"a_second_table",
     "-----\r\n1.1.1.1:1 | x\r\n-----\r\n2.2.2.2:2 | x\r\n" + std::string(accepted),
     {"1.1.1.1:1", "2.2.2.2:2"}},
    {"the_prompt_with_ok_after_the_rows", "-----\r\n1.1.1.1:1 | x\r\n+OK: server> ", {"1.1.1.1:1"}},
    {"a_bar_and_ok_in_a_row", "-----\r\n1.1.1.1:1 | +OK: \r\n-ERR: odd\r\n> ", {"1.1.1.1:1"}, 1},
    table_of_eleven(),
    {"no_ok", "-----\r\n1.1.1.1:1 | x\r\n-ERR: odd\r\nserver> ", {"1.1.1.1:1"}, 1},
    {"a_removal_refused",
     table_of("1.1.1.1:1 | x\r\n2.2.2.2:2 | x\r\n"),
     {"1.1.1.1:1"},
     1,
     refused},
    {"an_end_within_the_rows", "+OK: list\r\n-----\r\n1.1.1.1:1 | x\r\n", {}, 1, nullptr},
    {"an_end_after_the_rows", "+OK: list\r\n-----\r\n1.1.1.1:1 | x\r\nmore\r\n", {}, 1, nullptr},
};

INSTANTIATE_TEST_SUITE_P(Tables, CliResetListeners, testing::ValuesIn(listener_tables), CaseName());

// What a reader makes of a reply; nothing for null.
struct ReadReply {
    const char* name;
    std::string reply;
    std::optional<std::string> text;
    char* (*reader)(const char*) = cli_read_services;
};

class CliReplyReader : public ScriptedSession, public testing::WithParamInterface<ReadReply> {};

TEST_P(CliReplyReader, makes_this_of_the_reply) {
    expectConversation({{"show attr", GetParam().reply}}, [] {
        const HeapText text(GetParam().reader("show attr"));
        ASSERT_EQ(text != nullptr, GetParam().text.has_value());
        if (text == nullptr) return;
        EXPECT_EQ(text.get(), *GetParam().text);
        EXPECT_EQ(text.get()[511], '\0') << "the buffer has 512 bytes";
    });
}

const std::string base = "smtpIncoming smtpOutgoing processing webadmin cli";

const ReadReply services_replies[] = {
    {"no_log_listed", "services = ( webadmin cli )\r\n+OK: done\r\nserver> ", base},
    {"log_listed", "services = ( webadmin log cli )\r\n+OK: done\r\nserver> ", "log " + base},
    {"log_inside_a_longer_word", "services = ( catalogue cli )\r\n+OK: done\r\nserver> ",
     "log " + base},
    {"other_services_are_not_kept", "services = ( pop3 imap ftp )\r\n+OK: done\r\nserver> ", base},
    {"log_outside_of_the_brackets", "log services = ( cli ) log\r\n+OK: done\r\nserver> ", base},
    {"log_between_later_brackets", "services = ( cli ) ( log )\r\n+OK: done\r\nserver> ", base},
    {"log_on_another_line", "( log )\r\nservices = ( cli )\r\n+OK: done\r\nserver> ", base},
    {"the_name_before_the_list", "show attr services\r\nservices = ( log )\r\n+OK: done\r\n> ",
     "log " + base},
    {"the_name_after_the_list", "services = ( log )\r\n+OK: services shown\r\nserver> ",
     "log " + base},
    {"the_name_without_a_list", "services = log\r\n+OK: done\r\nserver> ", base},
    {"ok_without_a_plus", "services = ( cli )\r\nOK: done\r\nserver> ", base},
    {"ok_before_the_list", "+OK: \r\nservices = ( log )\r\nserver> ", "log " + base},
    {"all_on_the_prompt_line", "services = ( log ) OK: server> ", "log " + base},
    {"no_ok", "services = ( cli )\r\n-ERR: odd\r\nserver> ", std::nullopt},
    {"no_services_listed", "+OK: done\r\nserver> ", std::nullopt},
    {"no_reply", "", std::nullopt},
    {"the_connection_ends_after_ok", "services = ( cli )\r\n+OK: done\r\n", std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Services, CliReplyReader, testing::ValuesIn(services_replies), CaseName());

const ReadReply filters_replies[] = {
    {"a_quoted_value", "smtpFiltersFile = \"/var/smtp.filters\"\r\n+OK: done\r\nserver> ",
     "/var/smtp.filters", cli_read_filters_file},
    {"every_space_is_taken_out", "smtpFiltersFile = \" /var/my  smtp filters \"\r\nserver> ",
     "/var/mysmtpfilters", cli_read_filters_file},
    {"ok_is_not_needed", "smtpFiltersFile = \"/a\"\r\n-ERR: odd\r\nserver> ", "/a",
     cli_read_filters_file},
    {"only_the_first_pair_of_quotes", "smtpFiltersFile = \"/a\" \"/b\"\r\nserver> ", "/a",
     cli_read_filters_file},
    {"an_empty_value", "smtpFiltersFile = \"\"\r\nserver> ", "", cli_read_filters_file},
    {"no_quotes", "smtpFiltersFile = none\r\nserver> ", "", cli_read_filters_file},
    {"the_value_on_the_prompt_line", "smtpFiltersFile = \"/a\" server> ", "/a",
     cli_read_filters_file},
    {"the_name_after_the_value", "smtpFiltersFile = \"/a\"\r\n+OK: smtpFiltersFile shown\r\n> ",
     "/a", cli_read_filters_file},
    {"no_such_line", "\"/a\"\r\n+OK: done\r\nserver> ", "", cli_read_filters_file},
    {"other_letter_case_is_another_attribute", "smtpfiltersfile = \"/a\"\r\nserver> ", "",
     cli_read_filters_file},
    {"no_reply", "", std::nullopt, cli_read_filters_file},
    {"the_connection_ends_before_the_prompt", "smtpFiltersFile = \"/a\"\r\n", std::nullopt,
     cli_read_filters_file},
};

INSTANTIATE_TEST_SUITE_P(FiltersFile, CliReplyReader, testing::ValuesIn(filters_replies),
                         CaseName());

}  // namespace
