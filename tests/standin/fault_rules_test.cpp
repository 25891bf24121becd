#include "standin/fault_rules.h"

#include <gtest/gtest.h>

namespace standin {
namespace {

std::vector<FaultRule> parsed(const std::string& text) {
    std::vector<FaultRule> rules;
    EXPECT_EQ(parse_fault_rules(text, rules), "");
    return rules;
}

FaultRule parsed_rule(const std::string& line) {
    const std::vector<FaultRule> rules = parsed(line);
    EXPECT_EQ(rules.size(), 1U) << line;
    return rules.empty() ? FaultRule() : rules[0];
}

TEST(FaultRules, CommentsAndEmptyLinesAreNoRules) {
    EXPECT_TRUE(parsed("").empty());
    EXPECT_TRUE(parsed("\n  \n# \"commit\" 1 refuse\n  # more\n").empty());
}

TEST(FaultRules, NameWhatACommandBeginsWithTheOccurrenceAndTheAction) {
    const FaultRule rule = parsed_rule("  \"config server\"\t 2   refuse ");
    EXPECT_EQ(rule.source, "\"config server\"\t 2   refuse");
    EXPECT_EQ(rule.occurrence, 2);
    EXPECT_EQ(rule.fault.kind, FaultKind::refuse);
    EXPECT_TRUE(is_about(rule, Event::command, "config server"));
    EXPECT_TRUE(is_about(rule, Event::command, "config servers"));
    EXPECT_FALSE(is_about(rule, Event::command, "config serve"));
    EXPECT_FALSE(is_about(rule, Event::password, "config server"));
}

TEST(FaultRules, CanNameAWholeCommandOrEveryOne) {
    const FaultRule whole = parsed_rule("=\"back\" * close");
    EXPECT_EQ(whole.occurrence, 0);
    EXPECT_TRUE(is_about(whole, Event::command, "back"));
    EXPECT_FALSE(is_about(whole, Event::command, "backwards"));
    const FaultRule every = parsed_rule("\"\" * dribble");
    EXPECT_TRUE(is_about(every, Event::command, "anything"));
    EXPECT_FALSE(is_about(every, Event::password, "anything"));
    EXPECT_FALSE(is_about(every, Event::connect, ""));
}

TEST(FaultRules, TakeATextWithQuotationMarksInIt) {
    EXPECT_EQ(parsed_rule("\"a \"b\" 1 c\" 1 silent").text, "a \"b\" 1 c");
}

TEST(FaultRules, NameTheOtherEvents) {
    EXPECT_EQ(parsed_rule("connect 1 silent").event, Event::connect);
    EXPECT_EQ(parsed_rule("password * close").event, Event::password);
    EXPECT_EQ(parsed_rule("start 3 missing").event, Event::start);
    EXPECT_EQ(parsed_rule("stop 1 stays").event, Event::stop);
}

TEST(FaultRules, ActionsHaveTheirUsualAmountsOrTheGivenOnes) {
    const struct {
        const char* line;
        FaultKind kind;
        double amount;
    } cases[] = {
        {"\"c\" 1 late 0.25", FaultKind::late, 0.25},
        {"start 1 late 3", FaultKind::late, 3},
        {"\"c\" 1 dribble", FaultKind::dribble, 0.001},
        {"\"c\" 1 dribble 0.5", FaultKind::dribble, 0.5},
        {"\"c\" 1 overlong", FaultKind::overlong, 300},
        {"\"c\" 1 overlong 255", FaultKind::overlong, 255},
        {"\"c\" 1 garbage", FaultKind::garbage, 300},
        {"\"c\" 1 garbage 1000000", FaultKind::garbage, 1000000},
        {"\"c\" 1 garbage-prompt", FaultKind::garbage_prompt, 100},
        {"\"c\" 1 garbage-prompt 7", FaultKind::garbage_prompt, 7},
        {"\"c\" 1 crash", FaultKind::crash, 0},
        {"stop 1 stays", FaultKind::stays, stays_for_ever},
        {"stop 1 stays 2", FaultKind::stays, 2},
    };
    for (const auto& expected : cases) {
        const FaultRule rule = parsed_rule(expected.line);
        EXPECT_EQ(rule.fault.kind, expected.kind) << expected.line;
        EXPECT_EQ(rule.fault.amount, expected.amount) << expected.line;
    }
}

TEST(FaultRules, SeveralKeepTheirOrder) {
    const std::vector<FaultRule> rules = parsed("\"b\" 1 close\n# note\n\"a\" 1 close");
    ASSERT_EQ(rules.size(), 2U);
    EXPECT_EQ(rules[0].text, "b");
    EXPECT_EQ(rules[1].text, "a");
}

class BadFaultRules : public testing::TestWithParam<const char*> {};

TEST_P(BadFaultRules, AreNamedWithTheirLine) {
    std::vector<FaultRule> rules;
    EXPECT_EQ(parse_fault_rules("\n" + std::string(GetParam()) + "\n", rules),
              "line 2 is no fault rule: " + std::string(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(
    All, BadFaultRules,
    testing::Values("nonsense", "commit 1 refuse", "\"commit\"", "\"commit", "=\"commit 1 refuse",
                    "\"commit\" 1", "\"commit\" refuse", "\"commit\" 0 refuse",
                    "\"commit\" -1 refuse", "\"commit\" 1.5 refuse", "\"commit\" 1 explode",
                    "\"commit\" 1 refuse 3", "\"commit\" 1 late", "\"commit\" 1 late soon",
                    "\"commit\" 1 late -1", "\"commit\" 1 late 1.2.3", "\"commit\" 1 late 3601",
                    "\"commit\" 1 late 1 2", "\"commit\" 1 garbage 0", "\"commit\" 1 garbage x",
                    "\"commit\" 1 missing", "\"commit\" 1 stays", "start 1 silent", "start 1 stays",
                    "stop 1 late 1", "stop 1 missing", "=", "connect", "= \"commit\" 1 refuse"));

TEST(FaultRules, ARuleThatStandsTwiceIsNamed) {
    std::vector<FaultRule> rules;
    EXPECT_EQ(parse_fault_rules("stop 1 stays\n stop 1 stays\n", rules),
              "line 2 is no fault rule: stop 1 stays");
}

}  // namespace
}  // namespace standin
