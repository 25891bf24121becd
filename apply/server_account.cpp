#include "apply/server_account.h"

#include <pwd.h>

#include "wizard/system/child_process.h"

namespace {

struct Account {
    bool exists;
    uid_t user;
    gid_t group;
};

Account look_up_account() {
    const passwd* entry = getpwnam("teluma");
    return entry == nullptr ? Account{} : Account{true, entry->pw_uid, entry->pw_gid};
}

}  // namespace

bool find_server_account(uid_t& user, gid_t& group) {
    Account account{};
    if (!ask_in_child([&] { account = look_up_account(); }, &account, sizeof(account)) ||
        !account.exists)
        return false;
    user = account.user;
    group = account.group;
    return true;
}
