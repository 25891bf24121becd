#include "apply/sendmail_install.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "tests/apply/sendmail_case.h"
#include "tests/support/files.h"

namespace {

using Names = std::vector<std::string>;

class SendmailInstall : public SendmailCase {
  protected:
    // Nothing goes wrong in these cases.
    void TearDown() override { EXPECT_TRUE(log.messages().empty()); }
};

TEST_F(SendmailInstall, does_nothing_for_no) {
    const FileFacts before = file_facts(wrapper);
    EXPECT_EQ(sendmail_install(0), 0);
    EXPECT_EQ(names(), Names{});
    EXPECT_EQ(file_facts(wrapper).mode, before.mode);
    EXPECT_EQ(file_facts(wrapper).owner, before.owner);
}

TEST_F(SendmailInstall, gives_the_wrapper_to_the_server_with_set_user_and_group_id) {
    expectInstalled();
    expectWrapperPrepared();
}

TEST_F(SendmailInstall, a_system_without_sendmail_gets_the_link_and_no_backup) {
    expectInstalled();
    EXPECT_EQ(names(), Names{"sendmail"});
}

TEST_F(SendmailInstall, a_file_is_renamed_to_the_backup_name) {
    write_file(sendmail, "original", 0751);
    expectInstalled();
    EXPECT_EQ(names(), (Names{"sendmail", "sendmail.beforeteluma"}));
    EXPECT_EQ(read_file(backup(0)), "original");
    EXPECT_EQ(file_facts(backup(0)).mode, 0751u);
}

TEST_F(SendmailInstall, running_it_twice_leaves_one_link_and_one_backup) {
    write_file(sendmail, "original");
    expectInstalled();
    expectInstalled();
    EXPECT_EQ(names(), (Names{"sendmail", "sendmail.beforeteluma"}));
    EXPECT_EQ(read_file(backup(0)), "original");
}

TEST_F(SendmailInstall, a_link_to_the_wrapper_stays_but_the_wrapper_is_prepared_anew) {
    link(wrapper, sendmail);
    makeBackups(0, 1);
    expectInstalled();
    expectWrapperPrepared();
    EXPECT_EQ(names(), (Names{"sendmail", "sendmail.beforeteluma", "sendmail.beforeteluma1"}));
}

TEST_F(SendmailInstall, with_the_bare_backup_name_taken_the_suffix_is_1) {
    makeBackups(0, 0);
    write_file(sendmail, "original");
    expectInstalled();
    EXPECT_EQ(read_file(backup(0)), "0");
    EXPECT_EQ(read_file(backup(1)), "original");
}

TEST_F(SendmailInstall, with_suffix_1_taken_too_it_is_2) {
    makeBackups(0, 1);
    write_file(sendmail, "original");
    expectInstalled();
    EXPECT_EQ(read_file(backup(1)), "1");
    EXPECT_EQ(read_file(backup(2)), "original");
}

TEST_F(SendmailInstall, the_first_gap_between_the_backups_is_used) {
    makeBackups(0, 4);
    makeBackups(6, 9);
    write_file(sendmail, "original");
    expectInstalled();
    EXPECT_EQ(read_file(backup(5)), "original");
}

TEST_F(SendmailInstall, with_the_suffixes_to_98_taken_it_is_99) {
    makeBackups(0, 98);
    write_file(sendmail, "original");
    expectInstalled();
    EXPECT_EQ(read_file(backup(98)), "98");
    EXPECT_EQ(read_file(backup(99)), "original");
}

TEST_F(SendmailInstall, with_all_suffixes_to_99_taken_the_last_is_overwritten) {
    makeBackups(0, 100);
    write_file(sendmail, "original");
    expectInstalled();
    EXPECT_EQ(read_file(backup(98)), "98");
    EXPECT_EQ(read_file(backup(99)), "original");
    EXPECT_EQ(read_file(backup(100)), "100");
    EXPECT_FALSE(exists(backup(101)));
}

TEST_F(SendmailInstall, a_backup_name_taken_by_a_directory_or_a_dangling_link_is_not_free) {
    mkdir(backup(0).c_str(), 0755);
    link("/nowhere", backup(1));
    write_file(sendmail, "original");
    expectInstalled();
    EXPECT_TRUE(file_facts(backup(0)).is_directory);
    EXPECT_EQ(link_target(backup(1)), "/nowhere");
    EXPECT_EQ(read_file(backup(2)), "original");
}

class SendmailInstallOverLink : public SendmailInstall {
  protected:
    SendmailInstallOverLink() { link("/opt/mailer", sendmail); }
};

TEST_F(SendmailInstallOverLink, the_link_itself_is_renamed_to_the_backup_name) {
    expectInstalled();
    EXPECT_EQ(link_target(backup(0)), "/opt/mailer");
}

TEST_F(SendmailInstallOverLink, the_link_is_renamed_also_when_its_target_exists) {
    mkdir("/opt/mailer", 0755);
    expectInstalled();
    EXPECT_EQ(link_target(backup(0)), "/opt/mailer");
}

TEST_F(SendmailInstallOverLink, a_backup_that_is_such_a_link_is_enough) {
    link("/opt/mailer", backup(0));
    expectInstalled();
    EXPECT_EQ(names(), (Names{"sendmail", "sendmail.beforeteluma"}));
    EXPECT_EQ(link_target(backup(0)), "/opt/mailer");
}

TEST_F(SendmailInstallOverLink, such_a_backup_is_found_behind_others) {
    makeBackups(0, 1);
    link("/opt/other", backup(2));
    link("/opt/mailer", backup(3));
    expectInstalled();
    EXPECT_FALSE(exists(backup(4)));
    EXPECT_EQ(link_target(backup(3)), "/opt/mailer");
}

TEST_F(SendmailInstallOverLink, such_a_backup_behind_the_first_free_name_is_not_looked_for) {
    link("/opt/mailer", backup(1));
    expectInstalled();
    EXPECT_EQ(link_target(backup(0)), "/opt/mailer");
    EXPECT_EQ(link_target(backup(1)), "/opt/mailer");
}

TEST_F(SendmailInstallOverLink, a_backup_to_a_longer_or_shorter_target_is_another) {
    link("/opt/mailer2", backup(0));
    link("/opt/maile", backup(1));
    expectInstalled();
    EXPECT_EQ(link_target(backup(2)), "/opt/mailer");
}

TEST_F(SendmailInstallOverLink, with_all_suffixes_to_99_taken_the_last_is_overwritten) {
    makeBackups(0, 99);
    expectInstalled();
    EXPECT_EQ(link_target(backup(99)), "/opt/mailer");
    EXPECT_EQ(read_file(backup(98)), "98");
}

TEST_F(SendmailInstallOverLink, the_last_suffix_may_be_the_saved_link) {
    makeBackups(0, 98);
    link("/opt/mailer", backup(99));
    expectInstalled();
    EXPECT_EQ(link_target(backup(99)), "/opt/mailer");
}

class SendmailInstallOverOddLink : public SendmailInstall {
  protected:
    // A link to `target` is renamed, and an equal backup is taken for the same.
    static void expectSaved(const std::string& target) {
        link(target, sendmail);
        expectInstalled();
        EXPECT_EQ(link_target(backup(0)), target);
        unlink(sendmail);
        link(target, sendmail);
        expectInstalled();
        EXPECT_FALSE(exists(backup(1)));
    }
};

TEST_F(SendmailInstallOverOddLink, a_target_that_begins_like_the_wrapper_is_another) {
    expectSaved(std::string(wrapper) + ".old");
}

TEST_F(SendmailInstallOverOddLink, a_relative_target_is_compared_as_it_stands) {
    expectSaved("../../opt/teluma/bin/sendmail");
}

TEST_F(SendmailInstallOverOddLink, a_target_of_more_than_200_characters_is_saved_whole) {
    expectSaved("/" + std::string(250, 't'));
}

TEST_F(SendmailInstallOverOddLink, two_long_targets_that_differ_at_their_ends_are_not_the_same) {
    const std::string target = "/" + std::string(250, 't');
    link(target + "1", sendmail);
    link(target + "2", backup(0));
    expectInstalled();
    EXPECT_EQ(link_target(backup(1)), target + "1");
}

}  // namespace
