#include "tests/apply/sendmail_case.h"

#include <sys/mount.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "apply/sendmail_install.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/server_account.h"

SendmailCase::SendmailCase() {
    unlink(sendmail);
}

std::string SendmailCase::backup(int number) {
    const std::string base = "/usr/sbin/sendmail.beforeteluma";
    return number == 0 ? base : base + std::to_string(number);
}

void SendmailCase::makeBackups(int first, int last) {
    for (int number = first; number <= last; ++number)
        write_file(backup(number), std::to_string(number));
}

void SendmailCase::link(const std::string& target, const std::string& path) {
    checked(symlink(target.c_str(), path.c_str()), "symlink");
}

void SendmailCase::makeReadOnly() {
    checked(mount(nullptr, "/usr/sbin", nullptr, MS_REMOUNT | MS_RDONLY, nullptr), "mount");
}

std::vector<std::string> SendmailCase::names() {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator("/usr/sbin")) {
        const std::string name = entry.path().filename();
        if (name.compare(0, 8, "sendmail") == 0)
            found.push_back(name);
    }
    std::sort(found.begin(), found.end());
    return found;
}

void SendmailCase::expectInstalled() {
    EXPECT_EQ(sendmail_install(1), 0);
    EXPECT_EQ(link_target(sendmail), wrapper);
}

void SendmailCase::expectWrapperPrepared() {
    expect_server_owns(wrapper);
    EXPECT_EQ(file_facts(wrapper).mode, 06755u);
}
