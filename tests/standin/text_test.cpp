#include "standin/text.h"

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::string>;

TEST(Text, IsTrimmedOfSpacesTabsAndLineEndsAtBothEdgesOnly) {
    EXPECT_EQ(trimmed(" \ta b\t \r\n"), "a b");
    EXPECT_EQ(trimmed(" \t"), "");
}

TEST(Text, HasWordsBetweenAnyNumberOfSpacesAndTabsAndLinesBetweenLineFeeds) {
    EXPECT_EQ(split_words("  one\ttwo   three "), (Words{"one", "two", "three"}));
    EXPECT_EQ(split_words(" \t "), Words());
    EXPECT_EQ(joined({"a", "b", "c"}), "a b c");
    EXPECT_EQ(lines_of("a\n\nb"), (Words{"a", "", "b"}));
    EXPECT_EQ(lines_of("a\n\nb\n"), (Words{"a", "", "b"}));
    EXPECT_EQ(lines_of(""), Words());
}

TEST(Text, TheRestOfALineKeepsItsSpaces) {
    EXPECT_EQ(rest_from_word(" set  services ( a  b )", 2), "( a  b )");
    EXPECT_EQ(rest_from_word("one two", 0), "one two");
    EXPECT_EQ(rest_from_word("one two", 2), "");
    EXPECT_EQ(rest_from_word("", 0), "");
}

TEST(Text, ControlCharactersAreThoseBelowASpaceAndDelete) {
    for (const std::string& text :
         {std::string("a\nb"), std::string("a\0b", 3), std::string("\x7f")})
        EXPECT_TRUE(has_control_characters(text));
    EXPECT_FALSE(has_control_characters("a \"$`\\ \xe4~"));
}

TEST(Text, AWholeNumberIsDigitsOnlyAndWithinItsBounds) {
    long value = -7;
    for (const char* text : {"", "0", "65536", "-1", "+1", "1x", " 1", "99999999999999999999"})
        EXPECT_FALSE(parse_whole(text, 1, 65535, value)) << text;
    EXPECT_FALSE(parse_whole("-1", -5, 5, value));
    EXPECT_EQ(value, -7);
    EXPECT_TRUE(parse_whole("65535", 1, 65535, value));
    EXPECT_EQ(value, 65535);
}

}  // namespace
