#include "standin/text.h"

#include <gtest/gtest.h>

namespace standin {
namespace {

using Words = std::vector<std::string>;

TEST(Text, TrimmingTakesBlanksTabsAndLineEndsOffBothEdgesOnly) {
    EXPECT_EQ(trimmed(" \ta b\t \r\n"), "a b");
    EXPECT_EQ(trimmed(" \t"), "");
}

TEST(Text, WordsStandBetweenAnyNumberOfBlanksAndTabs) {
    EXPECT_EQ(split_words("  one\ttwo   three "), (Words{"one", "two", "three"}));
    EXPECT_EQ(split_words(" \t "), Words());
}

TEST(Text, TheLastLineCountsWithAndWithoutALineFeed) {
    EXPECT_EQ(split_lines("a\n\nb"), (Words{"a", "", "b"}));
    EXPECT_EQ(split_lines("a\n\nb\n"), (Words{"a", "", "b"}));
    EXPECT_EQ(split_lines(""), Words());
}

TEST(Text, TheRestOfALineKeepsItsBlanks) {
    EXPECT_EQ(rest_from_word(" set  services ( a  b )", 2), "( a  b )");
    EXPECT_EQ(rest_from_word("one two", 0), "one two");
    EXPECT_EQ(rest_from_word("one two", 2), "");
    EXPECT_EQ(rest_from_word("", 0), "");
}

TEST(Text, JoiningPutsOneBlankBetweenWords) {
    EXPECT_EQ(joined({"a", "b", "c"}), "a b c");
    EXPECT_EQ(joined({}), "");
}

TEST(Text, ControlCharactersAreThoseBelowABlankAndDelete) {
    EXPECT_TRUE(has_control_characters("a\nb"));
    EXPECT_TRUE(has_control_characters(std::string("a\0b", 3)));
    EXPECT_TRUE(has_control_characters("a\x7f"));
    EXPECT_FALSE(has_control_characters("a \"$`\\ \xe4~"));
}

TEST(Text, AWholeNumberIsDigitsOnlyAndWithinItsBounds) {
    long value = -7;
    EXPECT_TRUE(parse_whole("65535", 1, 65535, value));
    EXPECT_EQ(value, 65535);
    for (const char* text : {"", "0", "65536", "-1", "+1", "1x", " 1", "99999999999999999999"}) {
        value = -7;
        EXPECT_FALSE(parse_whole(text, 1, 65535, value)) << text;
        EXPECT_EQ(value, -7) << text;
    }
}

}  // namespace
}  // namespace standin
