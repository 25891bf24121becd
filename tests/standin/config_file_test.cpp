#include "standin/config_file.h"

#include <gtest/gtest.h>

#include "standin/text.h"
#include "tests/support/files.h"

namespace standin {
namespace {

using Words = std::vector<std::string>;

std::string sample() {
    return ::read_file(STANDIN_PACKAGE "/teluma.cfg");
}

TEST(ConfigFile, TheSampleNamesItsServicesListenersAndFiltersScript) {
    const Config config = parse_config(sample());
    EXPECT_EQ(config.state.services,
              (Words{"smtpIncoming", "smtpOutgoing", "processing", "webadmin"}));
    EXPECT_EQ(config.cli_address, "127.0.0.1:9091");
    EXPECT_EQ(config.smtp_filters, "/var/opt/teluma/run/smtp.filters");
    const auto& services = config.state.listener_services;
    EXPECT_EQ(services.at("smtp-incoming").listeners, Words{"127.0.0.1:25"});
    EXPECT_EQ(services.at("webadmin").listeners, Words{"127.0.0.1:9000"});
    EXPECT_EQ(services.at("cli").listeners, Words{"127.0.0.1:9091"});
    EXPECT_TRUE(services.at("smtp-incoming").enabled);
    EXPECT_FALSE(services.at("pop3").enabled);
}

TEST(ConfigFile, TheSampleRunsTheCliOnlyOnceItIsAddedToTheServices) {
    std::string text = sample();
    EXPECT_FALSE(runs_cli(parse_config(text).state));
    text.replace(text.find("webadmin )"), 10, "webadmin  cli )");
    EXPECT_TRUE(runs_cli(parse_config(text).state));
}

TEST(ConfigFile, ALongerWordWithCliInItIsNotTheCli) {
    EXPECT_FALSE(runs_cli(parse_config("services = ( webadmin client )").state));
}

TEST(ConfigFile, TheSampleSurvivesAnEditorThatReadsLinesOf255BytesAndDoublesALastComment) {
    const Words lines = split_lines(sample());
    for (const std::string& line : lines) {
        EXPECT_LT(line.size(), 255U) << line;
    }
    EXPECT_EQ(lines.back(), "}");
    EXPECT_EQ(sample().back(), '\n');
}

TEST(ConfigFile, BlanksInAKeyAndAroundAValueDoNotMatter) {
    const Config config = parse_config(
        "ser vices\t=  (  webadmin\tcli )\r\n"
        "c\tli={\nlist eners =(\n addr ess\t = \t127.0.0.1:1 \n");
    EXPECT_EQ(config.state.services, (Words{"webadmin", "cli"}));
    EXPECT_EQ(config.cli_address, "127.0.0.1:1");
}

TEST(ConfigFile, ACommentedAddressIsPassedOver) {
    const Config config = parse_config(
        "cli = {\nlisteners = (\n#address = 0.0.0.0:1\naddress = 127.0.0.1:2 # ours\n");
    EXPECT_EQ(config.cli_address, "127.0.0.1:2");
}

TEST(ConfigFile, TheFirstOfSeveralCliListenersCounts) {
    const Config config = parse_config(
        "cli = {\nlisteners = (\n{\naddress = 127.0.0.1:1\n}\n{\naddress = 127.0.0.1:2\n}\n)\n}\n");
    EXPECT_EQ(config.cli_address, "127.0.0.1:1");
    EXPECT_EQ(config.state.listener_services.at("cli").listeners,
              (Words{"127.0.0.1:1", "127.0.0.1:2"}));
}

TEST(ConfigFile, AMissingOrADoubledLastBracketDoesNoHarm) {
    const std::string cli = "cli = {\nlisteners = (\n{\naddress = 127.0.0.1:1\n}\n)\n";
    for (const char* end : {"", "}\n", "}\n}\n"}) {
        EXPECT_EQ(parse_config(cli + end).cli_address, "127.0.0.1:1") << end;
    }
    EXPECT_EQ(parse_config("}\n)\n" + cli).cli_address, "127.0.0.1:1");
}

TEST(ConfigFile, SectionsThatAreNoServiceAndUnknownKeysArePassedOver) {
    const Config config = parse_config(
        "other = {\naddress = 127.0.0.1:1\nenable = yes\n}\nunknown = 1\nnonsense\n"
        "services = webadmin\n");
    EXPECT_EQ(config.cli_address, "");
    EXPECT_TRUE(config.state.services.empty());
}

TEST(ConfigFile, AFiltersPathMayHoldBlanksAndQuotesAndBeUnquoted) {
    EXPECT_EQ(parse_config("smtpFiltersFile = \"/a b/\"c\"\"\n").smtp_filters, "/a b/\"c\"");
    EXPECT_EQ(parse_config("smtpFiltersFile = /a\n").smtp_filters, "/a");
}

}  // namespace
}  // namespace standin
