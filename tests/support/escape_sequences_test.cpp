#include "tests/support/escape_sequences.h"

#include <gtest/gtest.h>

namespace {

TEST(OutputFilter, gives_the_same_wherever_the_stream_is_cut) {
    const std::string stream =
        "ab\x1b[3bc\x1b[1;37m\x1b[2b\x1b(0d\x1b[b\xe2\x94\x80\x1b[2b\r\x1b[12be\x1b\x1b[2bf"
        "\xe2\x94\x1b]Rg\xc3h\x1b]0;title\x07i";
    const std::string filtered =
        "abbbbc\x1b[1;37mcc\x1b(0dd\xe2\x94\x80\xe2\x94\x80\xe2\x94\x80\r\x1b[12be\x1b"
        "eefgh\x1b]0;title\x07i";
    for (size_t cut = 0; cut <= stream.size(); ++cut) {
        OutputFilter filter(true);
        const std::string first = filter.filter(stream.substr(0, cut));
        EXPECT_EQ(first + filter.filter(stream.substr(cut)), filtered) << "cut at " << cut;
    }
    EXPECT_EQ(OutputFilter(false).filter("\x1b]Ra"), "\x1b]Ra") << "no Linux console";
}

TEST(PlainText, leaves_escape_sequences_and_carriage_returns_out) {
    EXPECT_EQ(plain_text("\x1b[1;37;44mone\x1b(B\x1b[m\r\n\ttwo\x1b[?1l\x1b>\x07"), "one\n\ttwo");
    EXPECT_EQ(plain_text("\x1b]0;a title\x07one\x1b]0;another\x1b\\two\x1b]Rthree"), "onetwothree");
    for (const char* unfinished : {"one\x1b", "one\x1b[", "one\x1b]0;tit", "one\x1b]0;tit\x1b"})
        EXPECT_EQ(plain_text(unfinished), "one");
}

}  // namespace
