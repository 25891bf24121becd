// What the run makes of the system's sendmail and of the wrapper.

#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/e2e/apply_screen.h"
#include "tests/e2e/apply_test.h"
#include "tests/support/files.h"
#include "tests/support/server_account.h"

namespace {

const char* const sendmail = "/usr/sbin/sendmail";
const char* const wrapper = "/opt/teluma/bin/sendmail";

std::string backup(const std::string& suffix = "") {
    return "/usr/sbin/sendmail.beforeteluma" + suffix;
}

class ApplySendmail : public ApplyTest {
  protected:
    ApplySendmail() {
        askForLittle();
        answers.sendmail = true;
        write_file(sendmail, "of the system", 0755);
    }

    static void linkSendmailTo(const std::string& target) {
        unlink(sendmail);
        makeLink(target, sendmail);
    }

    static void makeLink(const std::string& target, const std::string& path) {
        ASSERT_EQ(symlink(target.c_str(), path.c_str()), 0) << path;
    }
};

TEST_F(ApplySendmail, is_left_alone_after_no) {
    answers.sendmail = false;
    const FileFacts before = file_facts(wrapper);
    runThrough();
    EXPECT_EQ(read_file(sendmail), "of the system");
    EXPECT_FALSE(exists(backup()));
    EXPECT_EQ(file_facts(wrapper).mode, before.mode);
    EXPECT_EQ(file_facts(wrapper).owner, before.owner);
}

TEST_F(ApplySendmail, becomes_a_link_to_the_wrapper_and_the_file_its_backup) {
    runThrough();
    EXPECT_EQ(link_target(sendmail), wrapper);
    EXPECT_EQ(read_file(backup()), "of the system");
    EXPECT_EQ(file_facts(backup()).mode, 0755u);
}

TEST_F(ApplySendmail, has_a_wrapper_that_runs_as_the_servers_account) {
    runThrough();
    expect_server_owns(wrapper);
    EXPECT_EQ(file_facts(wrapper).mode, 06755u);
}

TEST_F(ApplySendmail, is_linked_without_a_backup_where_there_was_none) {
    unlink(sendmail);
    runThrough();
    EXPECT_EQ(link_target(sendmail), wrapper);
    EXPECT_FALSE(exists(backup()));
}

TEST_F(ApplySendmail, that_is_a_link_elsewhere_is_renamed_as_a_link) {
    linkSendmailTo("/usr/sbin/exim4");
    runThrough();
    EXPECT_EQ(link_target(sendmail), wrapper);
    EXPECT_EQ(link_target(backup()), "/usr/sbin/exim4");
}

TEST_F(ApplySendmail, that_is_a_link_to_the_wrapper_already_stays_without_a_backup) {
    linkSendmailTo(wrapper);
    runThrough();
    EXPECT_EQ(link_target(sendmail), wrapper);
    EXPECT_FALSE(exists(backup()));
    EXPECT_EQ(file_facts(wrapper).mode, 06755u);
}

TEST_F(ApplySendmail, that_is_a_link_with_a_longer_name_than_the_wrappers_is_not_taken_for_it) {
    linkSendmailTo("/opt/teluma/bin/sendmail.old");
    runThrough();
    EXPECT_EQ(link_target(sendmail), wrapper);
    EXPECT_EQ(link_target(backup()), "/opt/teluma/bin/sendmail.old");
}

TEST_F(ApplySendmail, is_one_link_and_one_backup_after_two_runs) {
    runThrough();
    answers.domain = "second.test";
    WizardRun second;
    second.walkToTheEnd(answers);
    ASSERT_EQ(second.finish(), exited(0));
    EXPECT_EQ(link_target(sendmail), wrapper);
    EXPECT_EQ(read_file(backup()), "of the system");
    EXPECT_FALSE(exists(backup("1")));
}

TEST_F(ApplySendmail, gets_a_backup_with_the_suffix_1_when_there_is_a_backup) {
    write_file(backup(), "older");
    runThrough();
    EXPECT_EQ(read_file(backup()), "older");
    EXPECT_EQ(read_file(backup("1")), "of the system");
}

TEST_F(ApplySendmail, gets_a_backup_with_the_suffix_2_when_there_are_two) {
    write_file(backup(), "older");
    makeLink("/nowhere", backup("1"));
    runThrough();
    EXPECT_EQ(link_target(backup("1")), "/nowhere");
    EXPECT_EQ(read_file(backup("2")), "of the system");
}

TEST_F(ApplySendmail, overwrites_the_backup_with_the_suffix_99_when_all_names_are_taken) {
    write_file(backup(), "older");
    for (int number = 1; number < 100; ++number)
        write_file(backup(std::to_string(number)), "older");
    runThrough();
    EXPECT_EQ(read_file(backup("99")), "of the system");
    EXPECT_EQ(read_file(backup("98")), "older");
    EXPECT_FALSE(exists(backup("100")));
    EXPECT_EQ(link_target(sendmail), wrapper);
}

TEST_F(ApplySendmail, that_is_a_link_saved_before_gets_no_second_backup) {
    linkSendmailTo("/usr/sbin/exim4");
    write_file(backup(), "older");
    makeLink("/usr/sbin/exim4", backup("1"));
    runThrough();
    EXPECT_EQ(link_target(sendmail), wrapper);
    EXPECT_EQ(link_target(backup("1")), "/usr/sbin/exim4");
    EXPECT_FALSE(exists(backup("2")));
}

TEST_F(ApplySendmail, that_is_a_link_whose_target_only_begins_as_a_saved_one_is_saved_too) {
    linkSendmailTo("/usr/sbin/exim4");
    makeLink("/usr/sbin/exim", backup());
    makeLink("/usr/sbin/exim4.old", backup("1"));
    runThrough();
    EXPECT_EQ(link_target(backup("2")), "/usr/sbin/exim4");
}

TEST_F(ApplySendmail, has_no_line_on_the_screen_after_no) {
    answers.sendmail = false;
    wizard.walkToTheEnd(answers);
    wizard.waitForText(" OK ");
    EXPECT_FALSE(wizard.image().shows("sendmail"));
    EXPECT_EQ(wizard.finish(), exited(0));
}

TEST_F(ApplySendmail, has_a_line_on_the_screen_after_yes) {
    wizard.walkToTheEnd(answers);
    wizard.waitForText(done("configuring TELUMA sendmail"));
    EXPECT_EQ(wizard.finish(), exited(0));
}

}  // namespace
