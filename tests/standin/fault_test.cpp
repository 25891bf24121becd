// The rules by which the server misbehaves, and what it then sends.
#include <gtest/gtest.h>

#include "standin/delivery.h"
#include "standin/fault_book.h"
#include "tests/support/files.h"

namespace {

FaultRule parsed_rule(const std::string& line) {
    std::vector<FaultRule> rules;
    EXPECT_EQ(parse_fault_rules("\n # a comment\n" + line, rules), "");
    EXPECT_EQ(rules.size(), 1U) << line;
    return rules.empty() ? FaultRule() : rules[0];
}

TEST(FaultRules, NameWhatACommandBeginsWithOrIs) {
    const FaultRule rule = parsed_rule("  \"config server\"\t 2   refuse ");
    EXPECT_EQ(rule.source, "\"config server\"\t 2   refuse");
    EXPECT_EQ(rule.occurrence, 2);
    EXPECT_TRUE(is_about(rule, Event::command, "config servers"));
    EXPECT_FALSE(is_about(rule, Event::command, "config serve"));
    const FaultRule whole = parsed_rule("=\"back\" * close");
    EXPECT_EQ(whole.occurrence, 0);
    EXPECT_TRUE(is_about(whole, Event::command, "back"));
    EXPECT_FALSE(is_about(whole, Event::command, "backwards"));
    const FaultRule every = parsed_rule("\"\" * dribble");
    EXPECT_TRUE(is_about(every, Event::command, "anything"));
    EXPECT_FALSE(is_about(every, Event::password, "anything"));
    EXPECT_EQ(parsed_rule("\"a \"b\" 1 c\" 1 silent").text, "a \"b\" 1 c");
}

TEST(FaultRules, HaveTheUsualAmountsOrTheGivenOnes) {
    const struct {
        const char* line;
        Event event;
        FaultKind kind;
        double amount;
    } cases[] = {
        {"\"c\" 1 refuse", Event::command, FaultKind::refuse, 0},
        {"\"c\" 1 dribble", Event::command, FaultKind::dribble, 0.001},
        {"\"c\" 1 overlong", Event::command, FaultKind::overlong, 300},
        {"\"c\" 1 overlong 255", Event::command, FaultKind::overlong, 255},
        {"\"c\" 1 garbage-prompt", Event::command, FaultKind::garbage_prompt, 100},
        {"connect 1 silent", Event::connect, FaultKind::silent, 0},
        {"password * close", Event::password, FaultKind::close, 0},
        {"start 1 late 3", Event::start, FaultKind::late, 3},
        {"start 3 missing", Event::start, FaultKind::missing, 0},
        {"stop 1 stays", Event::stop, FaultKind::stays, stays_for_ever},
    };
    for (const auto& expected : cases) {
        const FaultRule rule = parsed_rule(expected.line);
        EXPECT_EQ(rule.event, expected.event) << expected.line;
        EXPECT_EQ(rule.fault.kind, expected.kind) << expected.line;
        EXPECT_EQ(rule.fault.amount, expected.amount) << expected.line;
    }
}

TEST(FaultRules, ThatAreBadOrStandTwiceAreNamedWithTheirLine) {
    for (const std::string line :
         {"nonsense", "\"commit\"", "\"commit", "\"commit\" 1", "\"commit\" 0 refuse",
          "\"commit\" 1.5 refuse", "\"commit\" 1 explode", "\"commit\" 1 refuse 3",
          "\"commit\" 1 late", "\"commit\" 1 late soon", "\"commit\" 1 late 1.2.3",
          "\"commit\" 1 late 3601", "\"commit\" 1 garbage 0", "\"commit\" 1 missing",
          "start 1 silent", "stop 1 late 1", "= \"commit\" 1 refuse", "stop 1 stays"}) {
        std::vector<FaultRule> rules;
        EXPECT_EQ(parse_fault_rules("stop 1 stays\n" + line + "\n", rules),
                  "line 2 is no fault rule: " + line);
    }
}

class FaultBookTest : public testing::Test {
  protected:
    TempDir directory;
    RunPaths paths{directory.path()};
    CommandLog log{paths.log};
    FaultBook book{paths, log};

    void rules(const std::string& text) { write_file(paths.faults, text); }

    FaultKind at(const std::string& command) { return book.at(Event::command, command).kind; }
};

TEST_F(FaultBookTest, WithoutAFaultFileNothingGoesWrong) {
    EXPECT_EQ(book.reload(), "");
    EXPECT_EQ(at("commit"), FaultKind::none);
    EXPECT_FALSE(exists(paths.faults_seen));
}

TEST_F(FaultBookTest, TheFirstRuleWhoseTurnItIsCountsAndAllOfThemCount) {
    rules("\"commit\" 2 close\n\"commit\" * silent\n\"commit\" 3 refuse\n");
    EXPECT_EQ(at("commit"), FaultKind::silent);
    EXPECT_EQ(at("back"), FaultKind::none);
    EXPECT_EQ(at("commit"), FaultKind::close);
    EXPECT_EQ(at("commit"), FaultKind::silent);
    EXPECT_EQ(read_file(paths.log),
              "# fault: \"commit\" * silent\n# fault: \"commit\" 2 close\n"
              "# fault: \"commit\" * silent\n");
    rules("\"commit\" 3 refuse\n");
    EXPECT_EQ(at("commit"), FaultKind::none) << "the fourth since the rule stands there";
}

TEST_F(FaultBookTest, CountingGoesOnAfterARestart) {
    rules("\"commit\" 2 close\nstart 2 missing\n");
    at("commit");
    book.at(Event::start);
    FaultBook restarted(paths, log);
    EXPECT_EQ(restarted.at(Event::command, "commit").kind, FaultKind::close);
    EXPECT_EQ(restarted.at(Event::start).kind, FaultKind::missing);
}

TEST_F(FaultBookTest, ARuleThatWasAwayCountsAnew) {
    rules("\"commit\" 2 refuse\n");
    at("commit");
    rules("\"commit\" 1 close\n");
    EXPECT_EQ(at("commit"), FaultKind::close);
    rules("\"commit\" 2 refuse\n");
    EXPECT_EQ(at("commit"), FaultKind::none);
    EXPECT_EQ(at("commit"), FaultKind::refuse);
}

TEST_F(FaultBookTest, WhileTheFileIsBadEverythingIsRefusedAndTheLogSaysWhy) {
    rules("nonsense\n");
    EXPECT_EQ(at("commit"), FaultKind::refuse);
    EXPECT_EQ(read_file(paths.log), "# " + paths.faults + ": line 1 is no fault rule: nonsense\n");
    rules("");
    EXPECT_EQ(at("commit"), FaultKind::none);
}

TEST(Delivery, OfALateOrDribblingReplyWaits) {
    const Delivery late = deliver({FaultKind::late, 1.5}, "reply", "> ");
    EXPECT_EQ(late.wait, std::chrono::milliseconds(1500));
    const Delivery dribble = deliver({FaultKind::dribble, 0.25}, "reply", "> ");
    EXPECT_EQ(dribble.gap, std::chrono::milliseconds(250));
}

TEST(Garbage, IsTheSameEveryTimeAndHasNoEndOfALineOrReply) {
    const std::string garbage = garbage_bytes(300);
    EXPECT_EQ(garbage.find_first_of("\r\n>"), std::string::npos);
    EXPECT_NE(garbage.find("\x1b[2J"), std::string::npos);
    EXPECT_NE(garbage.find('\0'), std::string::npos);
    EXPECT_EQ(garbage_bytes(5), garbage.substr(0, 5));
}

}  // namespace
