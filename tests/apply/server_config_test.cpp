// What becomes of a configuration file, byte for byte, and what is learned from it.

#include "apply/server_config.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "apply/server_session.h"
#include "tests/apply/set_text.h"
#include "tests/apply/working_directory.h"
#include "tests/support/files.h"
#include "wizard/base/heap_text.h"

namespace {

TEST(ConfigKeyOf, is_a_text_in_a_buffer_of_256_zero_filled_bytes) {
    const struct {
        std::string line;
        std::string key;
        unsigned indent = 0;
    } keys[] = {
        {"services=( a = b )\n", "services"},
        {" \tser vi\tces \t= 1 2", "services", 6},
        {"services ( a )\n", ""},
        {"", ""},
        {" \t= value", "", 2},
        {std::string(255, 'k') + "=", std::string(255, 'k')},
        {std::string(300, 'k') + "=", std::string(255, 'k')},
    };
    for (const auto& [line, key, indent] : keys) {
        server_session.key_indent = 99;
        const HeapText found(config_key_of(line.c_str()));
        EXPECT_EQ(std::string(found.get(), 256), key + std::string(256 - key.size(), '\0'));
        EXPECT_EQ(server_session.key_indent, indent) << line;
    }
}

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
    EXPECT_TRUE(config_line_is_comment("services = ( a ) #"));
    EXPECT_FALSE(config_line_is_comment("services = ( a )"));
}

TEST(EnsureCliService, adds_cli_at_the_end_of_the_list_where_these_letters_are_missing) {
    const std::vector<std::string> changes[] = {
        {"services = ( smtpIncoming webadmin )\n", "services = ( smtpIncoming webadmin  cli )\n"},
        {"services = ()\n", "services = ( cli )\n"},
        {"\t ser vices\t= (\ta\t)\n", "\t ser vices\t= (\ta\t cli )\n"},
        // The last bracket is the end of the list, and what stands after it is lost.
        {"services = ( a ) ( b )\n", "services = ( a ) ( b  cli )\n"},
        {"services = ( a ) tail\n", "services = ( a  cli )\n"},
        {"services = ( a )", "services = ( a  cli )\n"},
        {"services = ( a )\r\n", "services = ( a  cli )\n"},
        // But it is looked through up to the first one, without what only separates.
        {"services = ( a ) cli )\n", "services = ( a ) cli  cli )\n"},
        {"services = ( cl i )\n", "services = ( cl i  cli )\n"},
        {"services = ( cl(i )\n", "services = ( cl(i )\n"},
        {"services = ( webadmin cli )\n", "services = ( webadmin cli )\n"},
        {"services = ( webclients )\n", "services = ( webclients )\n"},
        {"services = ( cli\n", "services = ( cli\n"},
        {"services = ( smtpIncoming webadmin\n", "services = ( smtpIncoming webadmin\n"},
    };
    for (const std::vector<std::string>& change : changes) {
        std::string line = change[0];
        EXPECT_EQ(config_ensure_cli_service(line), 0) << line;
        EXPECT_EQ(line, change[1]);
    }
}

TEST(EnsureCliService, leaves_lines_of_other_keys_alone) {
    for (const std::string key : {"service =", "services2 =", "Services =", "services"}) {
        std::string line = key + " ( a )\n";
        EXPECT_EQ(config_ensure_cli_service(line), 1);
        EXPECT_EQ(line, key + " ( a )\n");
    }
}

TEST(ReadCliAddress, finds_host_and_port) {
    const struct {
        std::string line;
        std::string host;
        int port;
    } addresses[] = {
        {"address = 127.0.0.1:9091\n", "127.0.0.1", 9091},
        {"address=mail.example.com:443", "mail.example.com", 443},
        {"\t\taddress\t=\t 127.0.0.1:9091 \t\n", "127.0.0.1", 9091},
        {" ad dress = mail host : 90 91\n", "mailhost", 9091},
        {"address == a=b:=7\n", "ab", 7},
        {"address = 127.0.0.1:9091\r\n", "127.0.0.1", 9091},
        {"address = h:65535\n", "h", 65535},
        {"address = a:1:2\n", "a", 1},
        {"address = a:25;\n", "a", 25},
        {"address = a:\n", "a", 0},
        {"address = :25\n", "", 25},
        {"address = a\n", "a", 0},
        {"address = 127.0.0.1:7000 # loopback\n", "127.0.0.1", 7000},
        {"address = 127.0.0.1:7000#loopback\n", "127.0.0.1", 7000},
        {"address = mail # :25\n", "mail", 0},
        {"address = # mail:25\n", "", 0},
        {"address =\n", "", 0},
        {"address=" + std::string(255, 'h') + ":1\n", std::string(255, 'h'), 1},
        {"address=" + std::string(256, 'h') + ":1\n", std::string(255, 'h'), 1},
    };
    for (const auto& [line, host, port] : addresses) {
        set_text(server_session.cli_host, "left over");
        server_session.cli_port = 1;
        EXPECT_STREQ(HeapText(config_key_of(line.c_str())).get(), "address");
        config_read_cli_address(line.c_str());
        EXPECT_EQ(server_session.cli_host, host) << line;
        EXPECT_EQ(server_session.cli_port, port) << line;
    }
}

constexpr const char* config = "teluma.cfg";
const std::string unknown = ":0";

class ConfigPrepare : public testing::Test {
  protected:
    ConfigPrepare() { server_session = {}; }

    // What a file with this content becomes.
    static std::string prepared(const std::string& content) {
        write_file(config, content);
        EXPECT_EQ(config_prepare(config), 0);
        EXPECT_FALSE(exists("temp.cfg"));
        return read_file(config);
    }

    static std::string address() {
        return std::string(server_session.cli_host) + ":" + std::to_string(server_session.cli_port);
    }

    WorkingDirectory directory;
};

struct ConfigFile {
    const char* name;
    std::string before;
    std::string after;
    std::string address = unknown;
};

ConfigFile kept(const char* name, const std::string& content, const std::string& cli = unknown) {
    return {name, content, content, cli};
}

const std::string list = "services = ( a cli )\n";
const std::string section = "cli = {\n\tlisteners = (\n\t\taddress = 1.2.3.4:5\n\t)\n}\n";
// The rest of another one.
const std::string other = "listeners = (\naddress = 9.9.9.9:9\n)\n}\n";

const ConfigFile config_files[] = {
    // The list of services.
    {"the_list_gets_cli_and_the_address_is_learned", "services = ( a )\n" + section,
     "services = ( a  cli )\n" + section, "1.2.3.4:5"},
    kept("a_commented_list_is_passed_over",
         "# services = ( a )\nservices = ( b ) # c\n" + list + "x\n"),
    {"only_the_first_list_is_extended", "services = ( a )\nservices = ( b )\n",
     "services = ( a  cli )\nservices = ( b )\n"},
    kept("a_section_before_the_list_is_not_looked_at", section + list + "x\n"),
    kept("other_keys_and_lines_stay", "a = b\n\n c\n" + list + "services2 = ( a )\n}\n"),
    // The section.
    kept("an_address_counts_without_a_comment_before_and_with_one_after_it",
         list + "cli = {\nlisteners = (\n#address = 9.9.9.9:9\naddress = 1.2.3.4:5 # yes\n" + other,
         "1.2.3.4:5"),
    kept("listeners_with_a_comment_after_them_count",
         list + "cli = {\nlisteners = ( # here\naddress = 1.2.3.4:5\n)\n}\nx = {\n" + other,
         "1.2.3.4:5"),
    kept("a_section_with_a_comment_after_it_is_skipped",
         list + section + "cli = { # not here\n" + other, "1.2.3.4:5"),
    kept("a_commented_section_or_list_of_listeners_is_skipped",
         list + "#cli = {\naddress = 9.9.9.9:9\ncli = {\n# listeners = (\naddress = 8.8.8.8:8\n" +
             "listeners = (\naddress = 1.2.3.4:5\n",
         "1.2.3.4:5"),
    kept("a_key_with_a_number_sign_in_it_is_another",
         list + "cli = {\nlisteners = (\naddress # = 9.9.9.9:9\naddress = 1.2.3.4:5\n)\n}\n",
         "1.2.3.4:5"),
    kept("of_two_sections_the_last_counts", list + section + "cli = {\n" + other, "9.9.9.9:9"),
    kept("other_sections_do_not_count",
         list + "webadmin = {\n" + other + "client = {\n" + other + section, "1.2.3.4:5"),
    kept("an_address_before_the_listeners_does_not_count",
         list + "cli = {\naddress = 9.9.9.9:9\nlisteners = (\naddress = 1.2.3.4:5\n)\n}\n",
         "1.2.3.4:5"),
    kept("keys_and_values_may_be_indented_with_spaces_and_tabs",
         list + " \tc l i\t=\n  listeners =\n\t address \t=\t 1.2.3.4 : 5 \nx\n", "1.2.3.4:5"),
    kept("a_section_without_listeners_ends_with_the_file", list + "cli = {\nenable = yes\n}\n"),
    kept("listeners_without_an_address_end_with_the_file", list + "cli = {\nlisteners = (\n)\n}\n"),
    kept("a_section_without_listeners_takes_those_of_the_next",
         list + "cli = {\n}\nx = {\nlisteners = (\naddress = 1.2.3.4:5\n)\n}\n", "1.2.3.4:5"),
    // The last line.
    kept("an_empty_file_stays_empty", ""),
    {"a_comment_is_written_twice", list + "x\n# end\n", list + "x\n# end\n# end\n"},
    {"a_comment_before_the_list_is_written_twice", "# end\n", "# end\n# end\n"},
    {"a_line_before_the_list_is_written_twice", "a = b\nc = d\n", "a = b\nc = d\nc = d\n"},
    kept("the_beginning_of_the_section_is_written_once", list + "cli = {\n"),
    kept("the_list_itself_is_written_once", "a = b\n" + list),
    {"a_list_that_gets_cli_is_written_once", "services = ( a )\n", "services = ( a  cli )\n"},
    kept("any_other_line_after_the_list_is_written_once", list + "a = b\n"),
    kept("the_address_is_written_once", list + "cli=\nlisteners=\naddress=h:5\n", "h:5"),
    {"an_address_with_a_comment_after_it_is_written_twice",
     list + "cli=\nlisteners=\naddress=h:5 # x\n",
     list + "cli=\nlisteners=\naddress=h:5 # x\naddress=h:5 # x\n", "h:5"},
    {"a_line_after_the_list_without_a_line_feed_is_left_out", list + "a = b\n}", list + "a = b\n"},
    kept("a_comment_without_a_line_feed_is_written_once", list + "a = b\n# end"),
    kept("a_line_before_the_list_without_a_line_feed_is_written_once", "a = b\nc"),
    {"a_list_without_a_line_feed_is_written_once", "services = ( a )", "services = ( a  cli )\n"},
    kept("an_address_without_a_line_feed_is_written_once", list + "cli=\nlisteners=\naddress=h:5",
         "h:5"),
    kept("a_section_without_a_line_feed_is_written_once", list + "cli = {"),
    kept("a_search_for_listeners_ends_without_a_line_feed", list + "cli = {\nx = y"),
};

TEST_F(ConfigPrepare, writes_exactly_this_and_knows_the_address) {
    for (const ConfigFile& file : config_files) {
        SCOPED_TRACE(file.name);
        server_session = {};
        EXPECT_EQ(prepared(file.before), file.after);
        EXPECT_EQ(address(), file.address);
    }
}

TEST_F(ConfigPrepare, keeps_any_bytes) {
    // With a zero byte for each "~".
    for (std::string file :
         {"a ~ b\n" + list, list + "# a ~ b\nx\n", std::string("services = ( cli ) ~ more\nx\n"),
          std::string("services = ( a ~ cli )\nx\n"), "\xe4 = \xff\n" + list + "\x80\x9b\n"}) {
        std::replace(file.begin(), file.end(), '~', '\0');
        EXPECT_EQ(prepared(file), file);
    }
    EXPECT_EQ(prepared("a = b\r\nservices = ( a )\r\ncli=\r\nlisteners=\r\naddress=h:5\r\n}\r\n"),
              "a = b\r\nservices = ( a  cli )\ncli=\r\nlisteners=\r\naddress=h:5\r\n}\r\n");
    EXPECT_EQ(address(), "h:5");
}

// As it is read in pieces of 255 bytes.
TEST_F(ConfigPrepare, keeps_long_lines_whole_wherever_they_stand) {
    const std::string x(600, 'x');
    const std::string lines = x + "\n#" + x + "\na = " + x + "#\n";
    const std::string file = lines + list + lines + "cli = {\n" + lines + "listeners = (\n" +
                             lines + "address = 1.2.3.4:5\n" + lines + "}\n";
    EXPECT_EQ(prepared(file), file);
    EXPECT_EQ(address(), "1.2.3.4:5");
    const std::string names(255 - std::strlen("services = (  )\n"), 's');
    EXPECT_EQ(prepared("services = ( " + names + " )\nx\n"),
              "services = ( " + names + "  cli )\nx\n");
    const std::string longer = "services = ( " + std::string(300, 's') + " )\nx\n";
    EXPECT_EQ(prepared(longer), longer);
}

TEST_F(ConfigPrepare, fails_without_the_file_a_working_copy_or_memory_and_leaves_the_file_alone) {
    EXPECT_EQ(config_prepare(config), 1);
    write_file(config, "services = ( a )\n" + section);
    mkdir("temp.cfg", 0700);
    EXPECT_EQ(config_prepare(config), 1);
    EXPECT_EQ(address(), unknown);
    rmdir("temp.cfg");
    server_session.out_of_memory = true;
    EXPECT_EQ(config_prepare(config), 1);
    EXPECT_EQ(read_file(config), "services = ( a )\n" + section);
    EXPECT_FALSE(exists("temp.cfg"));
}

}  // namespace

// The sanitizer would end a process that has no memory left. Elsewhere nobody calls this.
extern "C" const char* asan_default_options() { return "allocator_may_return_null=1"; }
