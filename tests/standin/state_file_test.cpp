#include "standin/state_file.h"

#include <gtest/gtest.h>

namespace standin {
namespace {

State full_state() {
    State state = empty_state();
    state.primary_domain = "example.com";
    state.services = {"smtpIncoming", "cli"};
    Service& smtp = state.listener_services["smtp-incoming"];
    smtp.enabled = true;
    smtp.listeners = {"0.0.0.0:25", "127.0.0.1:2525"};
    smtp.certfile = "/etc/a file.pem";
    Domain domain = new_domain("/var/domains/", "two  words");
    domain.aliases = {"localhost", "localhost.localdomain"};
    domain.accounts["postmaster"] = {"root", "admin"};
    state.domains["example.com"] = domain;
    state.domains["example.org"] = new_domain("/srv/", "x");
    return state;
}

const char* const full_text =
    "services smtpIncoming cli\n"
    "primarydomain example.com\n"
    "listener smtp-incoming 0.0.0.0:25\n"
    "listener smtp-incoming 127.0.0.1:2525\n"
    "enable smtp-incoming yes\n"
    "certfile smtp-incoming /etc/a file.pem\n"
    "domain example.com /var/domains/ two  words\n"
    "domainalias example.com localhost\n"
    "domainalias example.com localhost.localdomain\n"
    "account example.com postmaster\n"
    "accountalias example.com postmaster root\n"
    "accountalias example.com postmaster admin\n"
    "domain example.org /srv/ x\n"
    "account example.org postmaster\n";

TEST(StateFile, HoldsEverythingAsLinesOfText) {
    EXPECT_EQ(state_to_text(full_state()), full_text);
}

TEST(StateFile, ReadBackGivesTheSameState) {
    State state;
    EXPECT_EQ(state_from_text(full_text, state), "");
    EXPECT_EQ(state.primary_domain, "example.com");
    EXPECT_TRUE(state.listener_services["smtp-incoming"].enabled);
    EXPECT_FALSE(state.listener_services["pop3"].enabled);
    EXPECT_EQ(state.listener_services["smtp-incoming"].certfile, "/etc/a file.pem");
    EXPECT_EQ(state.domains["example.com"].postmaster_password, "two  words");
    EXPECT_EQ(state_to_text(state), full_text);
}

TEST(StateFile, OfAServerThatKnowsNothingIsEmpty) {
    EXPECT_EQ(state_to_text(empty_state()), "");
    State state;
    EXPECT_EQ(state_from_text("\n", state), "");
    EXPECT_EQ(state.listener_services.size(), 6U);
}

TEST(StateFile, ALineThatIsNoRecordIsNamed) {
    for (const char* line :
         {"nonsense", "services", "listener pop3", "listener smtp 1.2.3.4:5", "enable x yes",
          "certfile x y", "domain a b", "domainalias a b", "account a b", "accountalias a b c"}) {
        State state;
        EXPECT_EQ(state_from_text("\n" + std::string(line) + "\n", state),
                  "line 2 is no record: " + std::string(line));
    }
}

TEST(StateFile, ARecordThatStandsTwiceIsNamed) {
    State state;
    EXPECT_EQ(state_from_text("domain a b c\ndomain a d e\n", state),
              "line 2 is no record: domain a d e");
    EXPECT_EQ(state_from_text("domain a b c\naccount a p\naccount a p\n", state),
              "line 3 is no record: account a p");
}

}  // namespace
}  // namespace standin
