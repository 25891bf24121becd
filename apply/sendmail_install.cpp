#include "apply/sendmail_install.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

#include "apply/named_file.h"
#include "apply/server_process.h"
#include "wizard/base/tel_help.h"
#include "wizard/system/child_process.h"
#include "wizard/system/signal_gate.h"

namespace {

constexpr char sendmail[] = "/usr/sbin/sendmail";
constexpr char wrapper[] = "/opt/teluma/bin/sendmail";

constexpr int last_backup = 99;

// A system log that takes no more connections may block.
void open_log() {
    const ChangedMask here = let_all_in();
    openlog("WIZARD", LOG_NDELAY, LOG_USER);
}

// One that takes no more messages may.
int fail(int result, const std::string& message) {
    run_in_child([&] { syslog(LOG_ERR, "%s", message.c_str()); });
    closelog();
    return result;
}

// The target of a symbolic link; empty for anything else.
std::string link_target(const std::string& path) {
    char target[4096];  // PATH_MAX, which not every system defines
    const ssize_t length = readlink(path.c_str(), target, sizeof(target));
    return length > 0 ? std::string(target, static_cast<size_t>(length)) : "";
}

// Whether anything stands at `path`, a link that leads nowhere included. A name that can't be
// looked at counts too: what may stand there would be lost in a rename.
bool exists(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 || errno != ENOENT;
}

std::string backup_name(int number) {
    return std::string(sendmail) + ".beforeteluma" + (number == 0 ? "" : std::to_string(number));
}

// Moves whatever stands in the place of the link out of its way: to the first free backup name, or
// to the last one where none is free. A link of which there is a backup before that is removed.
int save_system_sendmail(const std::string& target) {
    int number = 0;
    const auto is_saved = [&] {
        return !target.empty() && link_target(backup_name(number)) == target;
    };
    while (number < last_backup && exists(backup_name(number)) && !is_saved()) ++number;
    if (is_saved() && unlink(sendmail) == 0) return 0;
    if (is_saved()) return fail(-1, std::string("Unable to unlink file '") + sendmail + "'");
    return exists(sendmail) ? std::rename(sendmail, backup_name(number).c_str()) : 0;
}

// Gives the wrapper to the server's account and sets its mode; returns as sendmail_install().
int prepare_wrapper() {
    const Descriptor file = open_named_file(wrapper, O_RDONLY);
    const ServerAccount account = find_server_account();
    // Of root's it would give everybody root's rights.
    const bool given = file.isOpen() && account.exists && (account.user != 0 || has_one_user()) &&
                       fchown(file.get(), account.user, account.group) == 0;
    if (!given) return fail(-1, std::string("Unable to chown ") + wrapper);
    return fchmod(file.get(), 06755) == 0 ? 0 : fail(1, std::string("Unable to chmod ") + wrapper);
}

}  // namespace

int sendmail_install(int yes) {
    if (yes == 0) return 0;
    open_log();
    if (const int failure = prepare_wrapper(); failure != 0) return failure;
    const std::string target = link_target(sendmail);
    if (target == wrapper) return 0;
    if (const int failure = save_system_sendmail(target); failure != 0) return failure;
    if (symlink(wrapper, sendmail) == 0) return 0;
    return fail(-1, std::string("Unable to symlink ") + wrapper + " to " + sendmail);
}
