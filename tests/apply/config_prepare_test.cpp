// What becomes of a configuration file, byte for byte, and what is learned from it.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <string>

#include "apply/server_config.h"
#include "apply/server_session.h"
#include "tests/apply/working_directory.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"

namespace {

constexpr const char* config = "teluma.cfg";

class ConfigPrepare : public testing::Test {
  protected:
    ConfigPrepare() { server_session = {}; }

    // What a file with this content becomes.
    std::string prepared(const std::string& content) {
        write_file(config, content);
        EXPECT_EQ(config_prepare((directory / config).c_str()), 0);
        EXPECT_FALSE(exists("temp.cfg"));
        return read_file(config);
    }

    static std::string address() {
        return std::string(server_session.cli_host) + ":" + std::to_string(server_session.cli_port);
    }

    WorkingDirectory directory;
};

const std::string unknown = ":0";

struct ConfigFile {
    const char* name;
    std::string before;
    std::string after;
    std::string address = unknown;
};

ConfigFile kept(const char* name, const std::string& content, const std::string& cli = unknown) {
    return {name, content, content, cli};
}

class ConfigPrepareOf : public ConfigPrepare, public testing::WithParamInterface<ConfigFile> {};

TEST_P(ConfigPrepareOf, writes_exactly_this) {
    EXPECT_EQ(prepared(GetParam().before), GetParam().after);
    EXPECT_EQ(address(), GetParam().address);
}

const std::string list = "services = ( a cli )\n";
const std::string section = "cli = {\n\tlisteners = (\n\t\taddress = 1.2.3.4:5\n\t)\n}\n";

const ConfigFile whole_files[] = {
    {"the_list_gets_cli_and_the_address_is_learned", "services = ( a )\n" + section,
     "services = ( a  cli )\n" + section, "1.2.3.4:5"},
    kept("a_list_with_cli_stays", list + section, "1.2.3.4:5"),
    {"a_commented_list_is_passed_over", "# services = ( a )\nservices = ( b ) # c\n" + list + "x\n",
     "# services = ( a )\nservices = ( b ) # c\n" + list + "x\n"},
    {"only_the_first_list_is_extended", "services = ( a )\nservices = ( b )\n",
     "services = ( a  cli )\nservices = ( b )\n"},
    kept("a_section_before_the_list_is_not_looked_at", section + list + "x\n"),
    kept("other_keys_and_lines_stay", "a = b\n\n c\n" + list + "services2 = ( a )\n}\n"),
};

INSTANTIATE_TEST_SUITE_P(Services, ConfigPrepareOf, testing::ValuesIn(whole_files), CaseName());

const ConfigFile sections[] = {
    kept("a_commented_address_is_skipped",
         list + "cli = {\nlisteners = (\n#address = 9.9.9.9:9\naddress = 1.2.3.4:5\n)\n}\n",
         "1.2.3.4:5"),
    kept("an_address_with_a_comment_after_it_counts",
         list + "cli = {\nlisteners = (\naddress = 1.2.3.4:5 # yes\naddress = 9.9.9.9:9\n)\n}\n",
         "1.2.3.4:5"),
    kept("listeners_with_a_comment_after_them_count",
         list + "cli = {\nlisteners = ( # here\naddress = 1.2.3.4:5\n)\n}\n" +
             "x = {\nlisteners = (\naddress = 9.9.9.9:9\n)\n}\n",
         "1.2.3.4:5"),
    kept("a_section_with_a_comment_after_it_is_skipped",
         list + "cli = { # not here\nlisteners = (\naddress = 9.9.9.9:9\n)\n}\n" + section,
         "1.2.3.4:5"),
    kept("a_commented_section_or_list_of_listeners_is_skipped",
         list + "#cli = {\naddress = 9.9.9.9:9\ncli = {\n# listeners = (\naddress = 8.8.8.8:8\n" +
             "listeners = (\naddress = 1.2.3.4:5\n",
         "1.2.3.4:5"),
    kept("a_key_with_a_number_sign_in_it_is_another",
         list + "cli = {\nlisteners = (\naddress # = 9.9.9.9:9\naddress = 1.2.3.4:5\n)\n}\n",
         "1.2.3.4:5"),
    kept("the_first_of_several_addresses_counts",
         list + "cli = {\nlisteners = (\naddress = 1.2.3.4:5\naddress = 9.9.9.9:9\n)\n}\n",
         "1.2.3.4:5"),
    kept("of_two_sections_the_last_counts",
         list + section + "cli = {\nlisteners = (\naddress = 9.9.9.9:9\n)\n}\n", "9.9.9.9:9"),
    kept("other_sections_do_not_count",
         list + "webadmin = {\nlisteners = (\naddress = 9.9.9.9:9\n)\n}\nclient = {\n" +
             "listeners = (\naddress = 8.8.8.8:8\n)\n}\n" + section,
         "1.2.3.4:5"),
    kept("an_address_before_the_listeners_does_not_count",
         list + "cli = {\naddress = 9.9.9.9:9\nlisteners = (\naddress = 1.2.3.4:5\n)\n}\n",
         "1.2.3.4:5"),
    kept("keys_and_values_may_be_indented_with_spaces_and_tabs",
         list + " \tc l i\t=\n  listeners =\n\t address \t=\t 1.2.3.4 : 5 \nx\n", "1.2.3.4:5"),
    kept("a_section_without_listeners_ends_with_the_file", list + "cli = {\nenable = yes\n}\n"),
    kept("listeners_without_an_address_end_with_the_file", list + "cli = {\nlisteners = (\n)\n}\n"),
    kept("a_section_without_listeners_takes_those_of_the_next",
         list + "cli = {\n}\nx = {\nlisteners = (\naddress = 1.2.3.4:5\n)\n}\n", "1.2.3.4:5"),
    kept("no_section_at_all", list + "x = y\n"),
};

INSTANTIATE_TEST_SUITE_P(Section, ConfigPrepareOf, testing::ValuesIn(sections), CaseName());

const ConfigFile file_ends[] = {
    kept("an_empty_file_stays_empty", ""),
    {"a_comment_is_written_twice", list + "x\n# end\n", list + "x\n# end\n# end\n"},
    {"a_comment_before_the_list_is_written_twice", "# end\n", "# end\n# end\n"},
    {"a_line_before_the_list_is_written_twice", "a = b\nc = d\n", "a = b\nc = d\nc = d\n"},
    {"an_empty_line_before_the_list_is_written_twice", "a\n\n", "a\n\n\n"},
    kept("the_beginning_of_the_section_is_written_once", list + "cli = {\n"),
    kept("the_list_itself_is_written_once", "a = b\n" + list),
    {"a_list_that_gets_cli_is_written_once", "services = ( a )\n", "services = ( a  cli )\n"},
    kept("any_other_line_after_the_list_is_written_once", list + "a = b\n"),
    kept("the_address_is_written_once", list + "cli=\nlisteners=\naddress=1.2.3.4:5\n",
         "1.2.3.4:5"),
    {"an_address_with_a_comment_after_it_is_written_twice",
     list + "cli=\nlisteners=\naddress=1.2.3.4:5 # x\n",
     list + "cli=\nlisteners=\naddress=1.2.3.4:5 # x\naddress=1.2.3.4:5 # x\n", "1.2.3.4:5"},
    {"a_line_after_the_list_without_a_line_feed_is_left_out", list + "a = b\n}", list + "a = b\n"},
    kept("a_comment_without_a_line_feed_is_written_once", list + "a = b\n# end"),
    kept("a_line_before_the_list_without_a_line_feed_is_written_once", "a = b\nc"),
    {"a_list_without_a_line_feed_is_written_once", "services = ( a )", "services = ( a  cli )\n"},
    kept("an_address_without_a_line_feed_is_written_once", list + "cli=\nlisteners=\naddress=h:5",
         "h:5"),
    kept("a_section_without_a_line_feed_is_written_once", list + "cli = {"),
    kept("a_search_for_listeners_ends_without_a_line_feed", list + "cli = {\nx = y"),
};

INSTANTIATE_TEST_SUITE_P(LastLine, ConfigPrepareOf, testing::ValuesIn(file_ends), CaseName());

std::string with_zero_byte(const char* text) {
    std::string bytes(text);
    bytes[bytes.find('~')] = '\0';
    return bytes;
}

const ConfigFile odd_bytes[] = {
    {"lines_that_end_in_cr_and_lf",
     "a = b\r\nservices = ( a )\r\ncli=\r\nlisteners=\r\n"
     "address=1.2.3.4:5\r\n}\r\n",
     "a = b\r\nservices = ( a  cli )\ncli=\r\nlisteners=\r\naddress=1.2.3.4:5\r\n}\r\n",
     "1.2.3.4:5"},
    kept("a_zero_byte_before_the_list", with_zero_byte("a ~ b\n") + list),
    kept("a_zero_byte_in_a_comment", list + with_zero_byte("# a ~ b\nx\n")),
    kept("a_zero_byte_on_the_line_of_a_list_with_cli",
         with_zero_byte("services = ( cli ) ~ more\nx\n")),
    kept("a_zero_byte_before_cli_in_the_list", with_zero_byte("services = ( a ~ cli )\nx\n")),
    {"a_zero_byte_in_a_list_that_gets_cli", with_zero_byte("services = ( a ~ b )\nx\n"),
     with_zero_byte("services = ( a ~ b  cli )\nx\n")},
    kept("bytes_above_127", "\xe4 = \xff\n" + list + "\x80\x9b\n"),
};

INSTANTIATE_TEST_SUITE_P(Bytes, ConfigPrepareOf, testing::ValuesIn(odd_bytes), CaseName());

TEST_F(ConfigPrepare, keeps_lines_of_any_length_whole_wherever_they_stand) {
    for (const size_t length : {253, 254, 255, 256, 509, 510, 600}) {
        for (const char* form : {"x~\n", "#~\n", "a = ~#\n"}) {
            std::string line = form;
            line.replace(line.find('~'), 1, std::string(length - (line.size() - 2), 'x'));
            const std::string file = line + list + line + "cli = {\n" + line + "listeners = (\n" +
                                     line + "address = 1.2.3.4:5\n" + line + "}\n";
            EXPECT_EQ(prepared(file), file) << form << length;
            EXPECT_EQ(address(), "1.2.3.4:5");
        }
    }
}

TEST_F(ConfigPrepare, a_list_that_fills_a_read_of_255_bytes_grows_beyond_it) {
    const std::string names(255 - std::strlen("services = (  )\n"), 's');
    EXPECT_EQ(prepared("services = ( " + names + " )\nx\n"),
              "services = ( " + names + "  cli )\nx\n");
}

TEST_F(ConfigPrepare, of_a_longer_list_only_the_first_255_bytes_are_looked_at) {
    const std::string file = "services = ( " + std::string(300, 's') + " )\nx\n";
    EXPECT_EQ(prepared(file), file);
}

TEST_F(ConfigPrepare, copes_with_many_lines_and_changes_nothing_in_a_second_run) {
    std::string lines;
    for (int i = 0; i < 20000; ++i) lines += "key" + std::to_string(i) + " = value\n";
    const std::string once = prepared(lines + "services = ( a )\n" + lines + section);
    EXPECT_EQ(once, lines + "services = ( a  cli )\n" + lines + section);
    EXPECT_EQ(prepared(once), once);
}

TEST_F(ConfigPrepare, fails_without_the_file_and_leaves_no_working_copy) {
    EXPECT_EQ(config_prepare((directory / config).c_str()), 1);
    mkdir(config, 0700);
    EXPECT_EQ(config_prepare(config), 1);
    EXPECT_TRUE(file_facts(config).is_directory);
    EXPECT_FALSE(exists("temp.cfg"));
    EXPECT_EQ(address(), unknown);
}

TEST_F(ConfigPrepare, fails_and_leaves_the_file_alone_when_no_working_copy_can_be_made) {
    write_file(config, "services = ( a )\n" + section);
    mkdir("temp.cfg", 0700);
    EXPECT_EQ(config_prepare(config), 1);
    EXPECT_EQ(read_file(config), "services = ( a )\n" + section);
    EXPECT_EQ(address(), unknown);
}

TEST_F(ConfigPrepare, leaves_the_file_alone_once_memory_has_run_out) {
    write_file(config, "services = ( a )\n" + section);
    server_session.out_of_memory = true;
    EXPECT_EQ(config_prepare(config), 1);
    EXPECT_EQ(read_file(config), "services = ( a )\n" + section);
    EXPECT_FALSE(exists("temp.cfg"));
}

}  // namespace
