// The helpers that cut a program's output apart.

#include <gtest/gtest.h>

#include "tests/support/plain_text.h"
#include "tests/support/repeat_expander.h"
#include "tests/support/sequence_filter.h"

namespace {

TEST(SequenceFilter, takes_the_sequence_out_wherever_the_stream_is_cut) {
    const std::string stream = "a<X>b<<X>X>c<X<X>d";
    for (size_t cut = 0; cut <= stream.size(); ++cut) {
        SequenceFilter filter("<X>");
        const std::string first = filter.filter(stream.substr(0, cut));
        EXPECT_EQ(first + filter.filter(stream.substr(cut)), "ab<X>c<Xd") << "cut at " << cut;
    }
}

TEST(RepeatExpander, writes_a_repeated_character_out_wherever_the_stream_is_cut) {
    const std::string stream =
        "ab\x1b[3bc\x1b[1;37m\x1b[2b\x1b(0d\x1b[b\xe2\x94\x80\x1b[2b\r\x1b[12be\x1b\x1b[2bf";
    for (size_t cut = 0; cut <= stream.size(); ++cut) {
        RepeatExpander expander;
        const std::string first = expander.expand(stream.substr(0, cut));
        EXPECT_EQ(first + expander.expand(stream.substr(cut)),
                  "abbbbc\x1b[1;37mcc\x1b(0dd\xe2\x94\x80\xe2\x94\x80\xe2\x94\x80\r\x1b[12be\x1b"
                  "eef")
            << "cut at " << cut;
    }
}

TEST(PlainText, leaves_escape_sequences_and_carriage_returns_out) {
    EXPECT_EQ(plain_text("\x1b[1;37;44mone\x1b(B\x1b[m\r\n\ttwo\x1b[?1l\x1b>\x07"), "one\n\ttwo");
    EXPECT_EQ(plain_text("\x1b]0;a title\x07one\x1b]0;another\x1b\\two\x1b]Rthree"), "onetwothree");
}

TEST(PlainText, an_unfinished_sequence_at_the_end_is_left_out) {
    EXPECT_EQ(plain_text("one\x1b"), "one");
    EXPECT_EQ(plain_text("one\x1b["), "one");
    EXPECT_EQ(plain_text("one\x1b]0;tit"), "one");
}

TEST(AfterAlternateScreen, begins_behind_the_last_switch_back_or_at_the_start) {
    EXPECT_EQ(after_alternate_screen("a\x1b[?1049hb\x1b[?1049lc\x1b[?1049hd\x1b[?1049le"), "e");
    EXPECT_EQ(after_alternate_screen("plain"), "plain");
}

}  // namespace
