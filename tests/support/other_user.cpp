#include "tests/support/other_user.h"

#include <grp.h>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/descriptor.h"

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
