#include "apply/server_account.h"

#include <pwd.h>
#include <unistd.h>

int give_to_server(int file) {
    const passwd* account = getpwnam("teluma");
    if (account == nullptr)
        return 1;
    return fchown(file, account->pw_uid, account->pw_gid) == 0 ? 0 : 1;
}
