#include "standin/config_file.h"

#include <gtest/gtest.h>

#include "standin/text.h"
#include "tests/support/files.h"

namespace {

using Words = std::vector<std::string>;

TEST(ConfigFile, TheSampleNamesItsServicesListenersAndFiltersScript) {
    const std::string sample = read_file(STANDIN_PACKAGE "/teluma.cfg");
    const Config config = parse_config(sample);
    EXPECT_EQ(config.state.services,
              (Words{"smtpIncoming", "smtpOutgoing", "processing", "webadmin"}));
    EXPECT_EQ(config.cli_address, "127.0.0.1:9091");
    EXPECT_EQ(config.smtp_filters, "/var/opt/teluma/run/smtp.filters");
    const auto& services = config.state.listener_services;
    EXPECT_EQ(services.at("smtp-incoming").listeners, Words{"127.0.0.1:25"});
    EXPECT_EQ(services.at("webadmin").listeners, Words{"127.0.0.1:9000"});
    EXPECT_TRUE(services.at("smtp-incoming").enabled);
    EXPECT_FALSE(services.at("pop3").enabled);
    const Words lines = lines_of(sample);
    for (const std::string& line : lines)
        EXPECT_LT(line.size(), 255U) << "longer than an editor's buffer: " << line;
    EXPECT_EQ(lines.back(), "}") << "may be doubled without harm";
}

TEST(ConfigFile, FindsTheListenersOfTheCliHoweverTheFileIsWritten) {
    const std::string cli = "cli = {\nlisteners = (\n{\naddress = 127.0.0.1:1\n}\n";
    const std::pair<std::string, Words> cases[] = {
        {"c\tli={\nlist eners =(\n addr ess\t = \t127.0.0.1:1 \r\n", {"127.0.0.1:1"}},
        {"cli = {\nlisteners = (\n#address = 0.0.0.0:1\naddress = 127.0.0.1:2 # ours\n",
         {"127.0.0.1:2"}},
        {cli + "{\naddress = 127.0.0.1:2\n}\n)\n}\n", {"127.0.0.1:1", "127.0.0.1:2"}},
        {cli + ")\n", {"127.0.0.1:1"}},
        {cli + ")\n}\n}\n", {"127.0.0.1:1"}},
        {"}\n)\n" + cli, {"127.0.0.1:1"}},
        {"other = {\naddress = 127.0.0.1:1\nenable = yes\n}\nunknown = 1\nnonsense\n", {}},
    };
    for (const auto& [text, addresses] : cases) {
        const Config config = parse_config(text);
        EXPECT_EQ(config.state.listener_services.at("cli").listeners, addresses) << text;
        EXPECT_EQ(config.cli_address, addresses.empty() ? "" : addresses[0]) << text;
    }
}

TEST(ConfigFile, ReadsTheServicesBetweenBracketsAndTheScriptWithOrWithoutQuotes) {
    EXPECT_EQ(parse_config("ser vices\t=  (  webadmin\tcli )\r\n").state.services,
              (Words{"webadmin", "cli"}));
    EXPECT_EQ(parse_config("services = webadmin\n").state.services, Words());
    EXPECT_EQ(parse_config("smtpFiltersFile = \"/a b/\"c\"\"\n").smtp_filters, "/a b/\"c\"");
    EXPECT_EQ(parse_config("smtpFiltersFile = /a\n").smtp_filters, "/a");
}

}  // namespace
