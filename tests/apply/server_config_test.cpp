#include "apply/server_config.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "apply/server_session.h"
#include "tests/support/case_name.h"
#include "wizard/base/heap_text.h"

namespace {

std::string key_of(const std::string& line) { return HeapText(config_key_of(line.c_str())).get(); }

struct KeyOfLine {
    const char* name;
    std::string line;
    std::string key;
    unsigned indent = 0;
};

class ConfigKeyOf : public testing::TestWithParam<KeyOfLine> {};

TEST_P(ConfigKeyOf, is_this_in_a_buffer_of_256_zero_filled_bytes) {
    server_session.key_indent = 99;
    const HeapText key(config_key_of(GetParam().line.c_str()));
    EXPECT_EQ(std::string(key.get(), 256),
              GetParam().key + std::string(256 - GetParam().key.size(), '\0'));
    EXPECT_EQ(server_session.key_indent, GetParam().indent);
}

const KeyOfLine keys[] = {
    {"before_the_first_equals_sign", "services=( a = b )\n", "services"},
    {"with_spaces_and_tabs_left_out", " \tser vi\tces \t= 1 2", "services", 6},
    {"no_equals_sign", "services ( a )\n", ""},
    {"an_empty_line", "", ""},
    {"nothing_before_the_equals_sign", " \t= value", "", 2},
    {"255_characters", std::string(255, 'k') + "=", std::string(255, 'k')},
    {"300_characters_which_are_cut", std::string(300, 'k') + "=", std::string(255, 'k')},
};

INSTANTIATE_TEST_SUITE_P(Of, ConfigKeyOf, testing::ValuesIn(keys), CaseName());

// In a process that gets no more memory, from the moment on when what it has is used up.
[[noreturn]] void use_up_memory() {
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_AS, &none);
    while (config_key_of("cli =") != nullptr) continue;
    _exit(server_session.out_of_memory ? 0 : 1);
}

TEST(ConfigKeyOfOutOfMemory, is_null_and_noted) {
    // A sanitizer that reports to a file has no memory for that either.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    setenv("ASAN_OPTIONS", "allocator_may_return_null=1", 1);
    EXPECT_EXIT(use_up_memory(), testing::ExitedWithCode(0), "");
}

TEST(ConfigLineIsComment, when_it_holds_a_number_sign_anywhere) {
    EXPECT_TRUE(config_line_is_comment("# services = ( a )"));
    EXPECT_TRUE(config_line_is_comment("services = ( a ) #"));
    EXPECT_FALSE(config_line_is_comment("services = ( a )"));
    EXPECT_FALSE(config_line_is_comment(""));
}

struct ServicesLine {
    const char* name;
    std::string before;
    std::string after;
    int result = 0;
};

class EnsureCliService : public testing::TestWithParam<ServicesLine> {};

TEST_P(EnsureCliService, rewrites_the_line_where_it_must) {
    std::string line = GetParam().before;
    EXPECT_EQ(config_ensure_cli_service(line), GetParam().result);
    EXPECT_EQ(line, GetParam().after);
}

ServicesLine unchanged(const char* name, const char* line, int result = 0) {
    return {name, line, line, result};
}

const ServicesLine services_lines[] = {
    {"cli_is_added_at_the_end_of_the_list", "services = ( smtpIncoming webadmin )\n",
     "services = ( smtpIncoming webadmin  cli )\n"},
    {"cli_is_added_to_an_empty_list", "services = ()\n", "services = ( cli )\n"},
    {"the_key_may_be_indented", "\t services\t= (\ta\t)\n", "\t services\t= (\ta\t cli )\n"},
    {"the_key_may_hold_spaces", "ser vices = ( a )\n", "ser vices = ( a  cli )\n"},
    {"the_list_is_extended_at_the_last_bracket", "services = ( a ) ( b )\n",
     "services = ( a ) ( b  cli )\n"},
    {"what_stands_after_the_last_bracket_is_lost", "services = ( a ) tail\n",
     "services = ( a  cli )\n"},
    {"cli_after_the_first_closing_bracket_does_not_count", "services = ( a ) cli )\n",
     "services = ( a ) cli  cli )\n"},
    {"a_line_end_is_added_where_there_was_none", "services = ( a )", "services = ( a  cli )\n"},
    {"a_carriage_return_is_lost", "services = ( a )\r\n", "services = ( a  cli )\n"},
    {"letters_divided_by_a_bracket_count_as_one_word", "services = ( cl(i )\n",
     "services = ( cl(i )\n"},
    {"letters_divided_by_a_space_do_not", "services = ( cl i )\n", "services = ( cl i  cli )\n"},
    unchanged("cli_stands_in_the_list", "services = ( webadmin cli )\n"),
    unchanged("cli_stands_in_a_longer_word", "services = ( webclients )\n"),
    unchanged("cli_stands_in_a_list_without_a_closing_bracket", "services = ( cli\n"),
    unchanged("there_is_no_closing_bracket", "services = ( smtpIncoming webadmin\n"),
    unchanged("another_key", "service = ( a )\n", 1),
    unchanged("a_longer_key", "services2 = ( a )\n", 1),
    unchanged("another_letter_case", "Services = ( a )\n", 1),
    unchanged("no_equals_sign", "services ( a )\n", 1),
};

INSTANTIATE_TEST_SUITE_P(Line, EnsureCliService, testing::ValuesIn(services_lines), CaseName());

struct AddressLine {
    const char* name;
    std::string line;
    std::string host;
    int port;
};

class ReadCliAddress : public testing::TestWithParam<AddressLine> {};

TEST_P(ReadCliAddress, finds_host_and_port) {
    std::snprintf(server_session.cli_host, sizeof(server_session.cli_host), "left over");
    server_session.cli_port = 1;
    ASSERT_EQ(key_of(GetParam().line), "address");
    config_read_cli_address(GetParam().line.c_str());
    EXPECT_EQ(server_session.cli_host, GetParam().host);
    EXPECT_EQ(server_session.cli_port, GetParam().port);
}

const AddressLine address_lines[] = {
    {"plain", "address = 127.0.0.1:9091\n", "127.0.0.1", 9091},
    {"without_spaces", "address=127.0.0.1:9091\n", "127.0.0.1", 9091},
    {"indented_and_with_tabs", "\t\taddress\t=\t 127.0.0.1:9091 \t\n", "127.0.0.1", 9091},
    {"spaces_within_key_and_value", " ad dress = mail host : 90 91\n", "mailhost", 9091},
    {"a_host_name", "address = mail.example.com:443\n", "mail.example.com", 443},
    {"further_equals_signs_are_left_out", "address == a=b:=7\n", "ab", 7},
    {"carriage_return", "address = 127.0.0.1:9091\r\n", "127.0.0.1", 9091},
    {"no_line_feed", "address = 127.0.0.1:9091", "127.0.0.1", 9091},
    {"the_greatest_port", "address = h:65535\n", "h", 65535},
    {"the_host_ends_at_the_first_colon", "address = a:1:2\n", "a", 1},
    {"something_after_the_port", "address = a:25;\n", "a", 25},
    {"no_port", "address = a:\n", "a", 0},
    {"no_host", "address = :25\n", "", 25},
    {"a_comment_after_it", "address = 127.0.0.1:7000 # loopback\n", "127.0.0.1", 7000},
    {"a_comment_right_after_it", "address = 127.0.0.1:7000#loopback\n", "127.0.0.1", 7000},
    {"a_comment_instead_of_a_port", "address = mail # :25\n", "mail", 0},
    {"a_comment_alone", "address = # mail:25\n", "", 0},
    {"nothing", "address =\n", "", 0},
    {"a_host_of_255_characters", "address=" + std::string(255, 'h') + ":1\n", std::string(255, 'h'),
     1},
    {"a_longer_host_is_cut", "address=" + std::string(256, 'h') + ":1\n", std::string(255, 'h'), 1},
};

INSTANTIATE_TEST_SUITE_P(Line, ReadCliAddress, testing::ValuesIn(address_lines), CaseName());

}  // namespace

// The sanitizer would end a process that has no memory left. Elsewhere nobody calls this.
extern "C" const char* asan_default_options() { return "allocator_may_return_null=1"; }
