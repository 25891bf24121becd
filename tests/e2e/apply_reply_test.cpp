// Replies that come slowly or in a form of their own.

#include <gtest/gtest.h>

#include "tests/e2e/apply_test.h"
#include "tests/support/case_name.h"
#include "tests/support/golden.h"

namespace {

struct ReplyCase {
    const char* name;
    const char* rules;  // for the server's faults
};

class OddReply : public ApplyTest, public testing::WithParamInterface<ReplyCase> {
  protected:
    OddReply() {
        askForLittle();
        server.faults(GetParam().rules);
    }
};

using ApplyOddReply = OddReply;

TEST_P(ApplyOddReply, is_as_good_as_any) {
    runThrough();
    EXPECT_EQ(server.commands(), wire());
}

const ReplyCase good_replies[] = {
    {"byte_by_byte", "connect * dribble\npassword * dribble\n\"\" * dribble\n"},
    {"late", "connect * late 0.2\npassword * late 0.2\n\"\" * late 0.02\n"},
    {"with_a_line_of_255_characters_in_front", "\"\" * overlong 255\n"},
};

INSTANTIATE_TEST_SUITE_P(Coming, ApplyOddReply, testing::ValuesIn(good_replies), CaseName());

using ApplyReply = OddReply;

TEST_P(ApplyReply, fails_the_step_and_never_reaches_the_screen) {
    answers.domain = "example.com";
    wizard.walkToTheEnd(answers);
    EXPECT_SCREEN(wizard, "../apply/golden/domain_error");
    EXPECT_EQ(wizard.output().find("-ERR"), std::string::npos);
}

const ReplyCase bad_replies[] = {
    {"of_refusal", "\"create domain\" 1 refuse\n"},
    {"of_garbage", "\"create domain\" 1 garbage-prompt 200\n"},
    {"with_a_line_of_256_characters", "\"create domain\" 1 overlong 256\n"},
};

INSTANTIATE_TEST_SUITE_P(Bad, ApplyReply, testing::ValuesIn(bad_replies), CaseName());

}  // namespace
