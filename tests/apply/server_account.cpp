#include "tests/apply/server_account.h"

#include <gtest/gtest.h>
#include <pwd.h>

#include "standin/text.h"
#include "tests/support/files.h"

void remove_server_account() {
    std::string users;
    for (const std::string& user : standin::split_lines(read_file("/etc/passwd"))) {
        if (!standin::begins_with(user, "teluma:"))
            users += user + "\n";
    }
    write_file("/etc/passwd", users);
}

void expect_server_owns(const std::string& path) {
    const passwd* account = getpwnam("teluma");
    ASSERT_NE(account, nullptr);
    const FileFacts facts = file_facts(path);
    EXPECT_EQ(facts.owner, account->pw_uid);
    EXPECT_EQ(facts.group, account->pw_gid);
}
