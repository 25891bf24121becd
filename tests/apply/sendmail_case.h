#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <string>
#include <vector>

#include "tests/support/system_log.h"

/// The wrapper and /usr/sbin of the sandbox that the test runs in, without a sendmail at first, and
/// its system log.
class SendmailCase : public testing::Test {
  protected:
    static constexpr const char* sendmail = "/usr/sbin/sendmail";
    static constexpr const char* wrapper = "/opt/teluma/bin/sendmail";

    SendmailCase();

    /// The name of a backup: 0 for the one without a number.
    static std::string backup(int number);

    /// Makes the backups of these numbers, files that hold their numbers.
    static void makeBackups(int first, int last);

    /// Makes a symbolic link.
    static void link(const std::string& target, const std::string& path);

    /// From now on nothing in /usr/sbin can be changed.
    static void makeReadOnly();

    /// Every name in /usr/sbin that begins with "sendmail", in order.
    static std::vector<std::string> names();

    /// What sendmail_install(1) returns, and that it leaves the link to the wrapper.
    static void expectInstalled();

    /// That the wrapper has the server's owner and is set-user-ID and set-group-ID.
    static void expectWrapperPrepared();

    SystemLog log;
};
