// Replies that come slowly or in a form of their own.

#include <gtest/gtest.h>

#include "tests/e2e/apply_test.h"
#include "tests/e2e/apply_wire.h"
#include "tests/support/golden.h"

namespace {

class ApplyReply : public ApplyTest {
  protected:
    ApplyReply() { askForLittle(); }
};

TEST_F(ApplyReply, may_come_byte_by_byte) {
    server.faults("connect * dribble\npassword * dribble\n\"\" * dribble\n");
    runThrough();
    EXPECT_EQ(server.commands(), run_commands(answers));
}

TEST_F(ApplyReply, may_come_late) {
    server.faults("connect * late 0.2\npassword * late 0.2\n\"\" * late 0.02\n");
    runThrough();
    EXPECT_EQ(server.commands(), run_commands(answers));
}

TEST_F(ApplyReply, may_have_a_line_of_255_characters_in_front) {
    server.faults("\"\" * overlong 255\n");
    runThrough();
    EXPECT_EQ(server.commands(), run_commands(answers));
}

TEST_F(ApplyReply, with_a_line_of_256_characters_is_a_failure) {
    server.faults("\"create domain\" 1 overlong 256\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("Error!");
    EXPECT_SCREEN(wizard, "golden/apply/domain_failed");
}

TEST_F(ApplyReply, of_garbage_is_a_failure_and_never_reaches_the_screen) {
    server.faults("\"create domain\" 1 garbage-prompt 200\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("Error!");
    EXPECT_SCREEN(wizard, "golden/apply/domain_failed");
}

TEST_F(ApplyReply, of_refusal_never_reaches_the_screen) {
    server.faults("\"create domain\" 1 refuse\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("Error!");
    wizard.waitForKey();
    EXPECT_EQ(wizard.output().find("-ERR"), std::string::npos);
}

}  // namespace
