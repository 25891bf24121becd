#include "apply/server_account.h"

#include <pwd.h>
#include <unistd.h>

int give_to_server(const char* path) {
    const passwd* account = getpwnam("teluma");
    if (account == nullptr)
        return 1;
    return chown(path, account->pw_uid, account->pw_gid) == 0 ? 0 : 1;
}
