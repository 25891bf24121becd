#include "tests/support/server_account.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/descriptor.h"
#include "tests/support/files.h"

uid_t server_user() {
    const passwd* account = getpwnam("teluma");
    return account == nullptr ? 0 : account->pw_uid;
}

ExitStatus as_user(uid_t user, const std::function<void()>& piece) {
    const pid_t child = checked(fork(), "fork");
    if (child == 0) {
        if (user != geteuid() &&
            (setgroups(0, nullptr) != 0 || setgid(user) != 0 || setuid(user) != 0))
            _exit(126);
        piece();
        _exit(0);
    }
    int status = 0;
    checked(waitpid(child, &status, 0), "waitpid");
    return from_wait_status(status);
}

void remove_server_account() { run_command({"sed", "-i", "/^teluma:/d", "/etc/passwd"}); }

void expect_server_owns(const std::string& path) {
    const passwd* account = getpwnam("teluma");
    ASSERT_NE(account, nullptr);
    const FileFacts facts = file_facts(path);
    EXPECT_EQ(facts.owner, account->pw_uid);
    EXPECT_EQ(facts.group, account->pw_gid);
}
