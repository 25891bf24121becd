#include "tests/support/server_account.h"

#include <gtest/gtest.h>
#include <pwd.h>

#include <sstream>

#include "tests/support/files.h"

void remove_server_account() {
    std::istringstream users(read_file("/etc/passwd"));
    std::string others;
    for (std::string user; std::getline(users, user);) {
        if (user.rfind("teluma:", 0) != 0)
            others += user + "\n";
    }
    write_file("/etc/passwd", others);
}

void expect_server_owns(const std::string& path) {
    const passwd* account = getpwnam("teluma");
    ASSERT_NE(account, nullptr);
    const FileFacts facts = file_facts(path);
    EXPECT_EQ(facts.owner, account->pw_uid);
    EXPECT_EQ(facts.group, account->pw_gid);
}
