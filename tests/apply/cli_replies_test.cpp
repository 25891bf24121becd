#include "apply/cli_replies.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tests/apply/scripted_session.h"
#include "tests/support/case_name.h"
#include "wizard/base/heap_text.h"

namespace {

// What a list command answers for some rows.
std::string table_of(const std::vector<std::string>& rows) {
    std::string reply = "Address | Enabled\r\n--------+--------\r\n";
    for (const std::string& row : rows)
        reply += row + "\r\n";
    return reply + accepted;
}

Exchange removal(const std::string& address) {
    return {"remove listener address " + address};
}

class CliResetListeners : public ScriptedSession {
  protected:
    // The list command is answered with `list` and everything else as `rest` says. Expects the
    // result and that exactly these commands were sent.
    void expectResult(int result, const std::string& list, const Conversation& rest) {
        Conversation all = {{"list listeners", list}};
        all.insert(all.end(), rest.begin(), rest.end());
        answer(answers_of(all));
        EXPECT_EQ(cli_reset_listeners("list listeners"), result);
        EXPECT_EQ(peer->received(), commands_of(all));
        EXPECT_EQ(peer->unread(), "");
    }
};

TEST_F(CliResetListeners, removes_every_row_in_order_and_commits) {
    expectResult(0, table_of({"127.0.0.1:9000 | yes", "10.20.0.5:80 | no"}),
                 {removal("127.0.0.1:9000"), removal("10.20.0.5:80"), {"commit"}});
}

TEST_F(CliResetListeners, only_commits_when_no_row_stands_between_the_dashes_and_the_prompt) {
    expectResult(0, table_of({}), {{"commit"}});
}

TEST_F(CliResetListeners, only_commits_when_the_prompt_follows_the_dashes_at_once) {
    expectResult(0, "+OK: none\r\n-----\r\nserver> ", {{"commit"}});
}

TEST_F(CliResetListeners, only_commits_when_there_is_no_table) {
    expectResult(0, accepted, {{"commit"}});
}

TEST_F(CliResetListeners, takes_the_first_word_of_a_row_whatever_blanks_stand_around_it) {
    expectResult(0, table_of({"   1.2.3.4:25     | yes  "}), {removal("1.2.3.4:25"), {"commit"}});
}

TEST_F(CliResetListeners, takes_no_row_before_the_dashes_nor_behind_a_line_without_a_bar) {
    expectResult(0,
                 "9.9.9.9:9 | x\r\n-----\r\n1.1.1.1:1 | x\r\nthat is all\r\n2.2.2.2:2 | x\r\n" +
                     std::string(accepted),
                 {removal("1.1.1.1:1"), {"commit"}});
}

TEST_F(CliResetListeners, takes_the_rows_of_a_second_table) {
    expectResult(0, "-----\r\n1.1.1.1:1 | x\r\n-----\r\n2.2.2.2:2 | x\r\n" + std::string(accepted),
                 {removal("1.1.1.1:1"), removal("2.2.2.2:2"), {"commit"}});
}

TEST_F(CliResetListeners, the_first_line_without_a_bar_may_be_the_prompt_with_ok) {
    expectResult(0, "-----\r\n1.1.1.1:1 | x\r\n+OK: server> ", {removal("1.1.1.1:1"), {"commit"}});
}

TEST_F(CliResetListeners, removes_ten_rows_and_leaves_the_eleventh) {
    std::vector<std::string> rows;
    Conversation rest;
    for (int port = 1; port <= 11; ++port) {
        const std::string address = "1.1.1.1:" + std::to_string(port);
        rows.push_back(address + " | yes");
        if (port <= 10)
            rest.push_back(removal(address));
    }
    rest.push_back({"commit"});
    expectResult(0, table_of(rows), rest);
}

TEST_F(CliResetListeners, a_list_without_ok_fails_after_the_removals_and_the_commit) {
    expectResult(1, "-----\r\n1.1.1.1:1 | x\r\n-ERR: odd\r\nserver> ",
                 {removal("1.1.1.1:1"), {"commit"}});
}

TEST_F(CliResetListeners, stops_at_the_first_removal_that_is_refused) {
    expectResult(1, table_of({"1.1.1.1:1 | x", "2.2.2.2:2 | x"}),
                 {{"remove listener address 1.1.1.1:1", refused}});
}

TEST_F(CliResetListeners, fails_when_the_commit_is_refused) {
    expectResult(1, table_of({"1.1.1.1:1 | x"}), {removal("1.1.1.1:1"), {"commit", refused}});
}

TEST_F(CliResetListeners, sends_nothing_more_when_the_connection_ends_within_the_table) {
    expectResult(1, "+OK: list\r\n-----\r\n1.1.1.1:1 | x\r\n", {});
}

TEST_F(CliResetListeners, sends_nothing_more_when_the_connection_ends_behind_the_table) {
    expectResult(1, "+OK: list\r\n-----\r\n1.1.1.1:1 | x\r\nmore\r\n", {});
}

TEST_F(CliResetListeners, fails_when_the_list_command_cannot_be_sent) {
    peer->hangUp();
    EXPECT_EQ(cli_reset_listeners("list listeners"), 1);
}

// What a reader makes of a reply; nothing for null.
struct ReadReply {
    const char* name;
    std::string reply;
    std::optional<std::string> text;
};

class CliReplyReader : public ScriptedSession, public testing::WithParamInterface<ReadReply> {
  protected:
    void expectText(char* (*reader)(const char*)) {
        answer(GetParam().reply);
        const HeapText text(reader("show attr"));
        EXPECT_EQ(peer->received(), "show attr\r\n");
        EXPECT_EQ(peer->unread(), "");
        ASSERT_EQ(text != nullptr, GetParam().text.has_value());
        if (text == nullptr)
            return;
        EXPECT_EQ(text.get(), *GetParam().text);
        EXPECT_EQ(text.get()[511], '\0') << "the buffer has 512 bytes";
    }
};

class CliReadServices : public CliReplyReader {};

TEST_P(CliReadServices, from_the_reply) {
    expectText(cli_read_services);
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
    {"the_name_behind_the_list", "services = ( log )\r\n+OK: services shown\r\nserver> ",
     "log " + base},
    {"the_name_without_a_list", "services = log\r\n+OK: done\r\nserver> ", base},
    {"ok_without_a_plus", "services = ( cli )\r\nOK: done\r\nserver> ", base},
    {"ok_on_the_prompt_line", "services = ( cli )\r\n+OK: server> ", base},
    {"ok_before_the_list", "+OK: \r\nservices = ( log )\r\nserver> ", "log " + base},
    {"all_on_the_prompt_line", "services = ( log ) OK: server> ", "log " + base},
    {"no_ok", "services = ( cli )\r\n-ERR: odd\r\nserver> ", std::nullopt},
    {"no_services_listed", "+OK: done\r\nserver> ", std::nullopt},
    {"no_reply", "", std::nullopt},
    {"the_connection_ends_behind_ok", "services = ( cli )\r\n+OK: done\r\n", std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Replies, CliReadServices, testing::ValuesIn(services_replies), CaseName());

TEST_F(CliReplyReader, the_services_are_null_when_the_command_cannot_be_sent) {
    peer->hangUp();
    EXPECT_EQ(HeapText(cli_read_services("show attr services")), nullptr);
}

class CliReadFiltersFile : public CliReplyReader {};

TEST_P(CliReadFiltersFile, from_the_reply) {
    expectText(cli_read_filters_file);
}

const ReadReply filters_replies[] = {
    {"a_quoted_value", "smtpFiltersFile = \"/var/smtp.filters\"\r\n+OK: done\r\nserver> ",
     "/var/smtp.filters"},
    {"every_blank_is_taken_out", "smtpFiltersFile = \" /var/my  smtp filters \"\r\nserver> ",
     "/var/mysmtpfilters"},
    {"ok_is_not_needed", "smtpFiltersFile = \"/a\"\r\n-ERR: odd\r\nserver> ", "/a"},
    {"only_the_first_pair_of_quotes", "smtpFiltersFile = \"/a\" \"/b\"\r\nserver> ", "/a"},
    {"an_empty_value", "smtpFiltersFile = \"\"\r\nserver> ", ""},
    {"no_quotes", "smtpFiltersFile = none\r\nserver> ", ""},
    {"the_value_on_the_prompt_line", "smtpFiltersFile = \"/a\" server> ", "/a"},
    {"the_name_behind_the_value",
     "smtpFiltersFile = \"/a\"\r\n+OK: smtpFiltersFile shown\r\nserver> ", "/a"},
    {"no_such_line", "\"/a\"\r\n+OK: done\r\nserver> ", ""},
    {"other_letter_case_is_another_attribute", "smtpfiltersfile = \"/a\"\r\nserver> ", ""},
    {"no_reply", "", std::nullopt},
    {"the_connection_ends_before_the_prompt", "smtpFiltersFile = \"/a\"\r\n", std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Replies, CliReadFiltersFile, testing::ValuesIn(filters_replies),
                         CaseName());

TEST_F(CliReplyReader, the_filters_file_is_null_when_the_command_cannot_be_sent) {
    peer->hangUp();
    EXPECT_EQ(HeapText(cli_read_filters_file("show attr smtpfiltersfile")), nullptr);
}

}  // namespace
