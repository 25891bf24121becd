#include "apply/cli_session.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/apply/scripted_session.h"
#include "tests/support/case_name.h"

namespace {

class CliWaitPrompt : public ScriptedSession {};

TEST_F(CliWaitPrompt, swallows_a_greeting_of_several_lines_and_nothing_behind_its_prompt) {
    answer("TELUMA\r\nversion 6\r\n\r\nlogin> +OK: next\r\n");
    EXPECT_EQ(cli_wait_prompt(), 0);
    EXPECT_EQ(peer->unread(), "+OK: next\r\n");
}

TEST_F(CliWaitPrompt, does_not_take_an_angle_bracket_without_a_blank_for_the_prompt) {
    answer("see <http://teluma>!\r\nlogin> rest");
    EXPECT_EQ(cli_wait_prompt(), 0);
    EXPECT_EQ(peer->unread(), "rest");
}

TEST_F(CliWaitPrompt, fails_when_the_connection_ends_before_the_prompt) {
    answer("TELUMA\r\nlogin>");
    EXPECT_EQ(cli_wait_prompt(), 1);
}

TEST_F(CliWaitPrompt, fails_at_a_line_that_is_too_long) {
    answer(std::string(256, 'x') + "\r\nlogin> ");
    EXPECT_EQ(cli_wait_prompt(), 1);
}

class CliCommand : public ScriptedSession {};

TEST_F(CliCommand, sends_the_command_as_a_line) {
    answer(accepted);
    cli_command("config server");
    EXPECT_EQ(peer->received(), "config server\r\n");
}

TEST_F(CliCommand, reads_no_further_than_the_prompt) {
    answer("+OK: done\r\nserver> -ERR: later\r\n");
    EXPECT_EQ(cli_command("commit"), 0);
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
    {"ok_on_a_line_of_its_own", "+OK: done\r\nserver> ", 0},
    {"ok_in_the_middle_of_a_line", "reply +OK: done\r\nserver> ", 0},
    {"ok_on_the_first_of_several_lines", "+OK: done\r\nmore\r\n-ERR: odd\r\nserver> ", 0},
    {"ok_on_the_last_of_several_lines", "one\r\n-ERR: odd\r\n+OK: done\r\nserver> ", 0},
    {"ok_only_on_the_prompt_line", "one\r\n+OK: done server> ", 0},
    {"refused", "-ERR: no\r\nserver> ", 1},
    {"nothing_but_the_prompt", "server> ", 1},
    {"ok_without_the_plus", "OK: done\r\nserver> ", 1},
    {"ok_without_the_colon", "+OK done\r\nserver> ", 1},
    {"ok_behind_the_prompt", "server> +OK: done\r\n", 1},
    {"no_prompt_behind_ok", "+OK: done\r\n", 1},
    {"no_reply_at_all", "", 1},
    {"a_line_of_256_bytes_before_ok", std::string(256, 'x') + "\r\n+OK: done\r\nserver> ", 1},
    {"a_line_of_256_bytes_behind_ok", "+OK: done\r\n" + std::string(256, 'x') + "\r\nserver> ", 1},
    {"a_line_of_255_bytes_before_ok", std::string(255, 'x') + "\r\n+OK: done\r\nserver> ", 0},
    {"garbage_without_line_ends", std::string(300, '\x9b'), 1},
};

INSTANTIATE_TEST_SUITE_P(Replies, CliCommandReply, testing::ValuesIn(judged_replies), CaseName());

TEST_F(CliCommand, fails_when_it_cannot_be_sent) {
    answer(accepted);
    peer->hangUp();
    EXPECT_EQ(cli_command("commit"), 1);
}

TEST_F(CliCommand, fails_without_a_connection) {
    cli_socket = -1;
    EXPECT_EQ(cli_command("commit"), 1);
    EXPECT_EQ(cli_wait_prompt(), 1);
}

TEST_F(CliCommand, a_formatted_one_is_sent_as_put_together) {
    answer(accepted);
    EXPECT_EQ(cli_command_format("add listener address %s:%d", "10.20.0.5", 9000), 0);
    EXPECT_EQ(peer->received(), "add listener address 10.20.0.5:9000\r\n");
}

TEST_F(CliCommand, a_formatted_one_may_have_997_characters) {
    answer(accepted);
    const std::string name(992, 'n');
    EXPECT_EQ(cli_command_format("name %s", name.c_str()), 0);
    EXPECT_EQ(peer->received(), "name " + name + "\r\n");
}

TEST_F(CliCommand, a_formatted_one_of_998_characters_fails_and_is_not_sent) {
    answer(accepted);
    EXPECT_EQ(cli_command_format("name %s", std::string(993, 'n').c_str()), 1);
    EXPECT_EQ(peer->received(), "");
}

}  // namespace
