#include "apply/cli_session.h"

#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "apply/cli_wire.h"
#include "apply/server_account.h"
#include "apply/server_config.h"
#include "apply/server_process.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/install_profile.h"
#include "wizard/system/end_owners.h"
#include "wizard/system/secret.h"
#include "wizard/system/signal_gate.h"
#include "wizard/system/tcp_client.h"

int cli_socket = -1;

namespace {

// The server writes its pid file when it is ready, which may be a moment after it was started.
// Returns 0, or 1 when no process id is known in time.
int wait_for_server_pid() {
    constexpr int most_sleeps = 4;
    for (int sleeps = 0; server_pid == 0; ++sleeps) {
        if (sleeps == most_sleeps)
            return 1;
        sleep_seconds(1);
        server_read_pid();
    }
    return 0;
}

bool server_is_root = false;

// A row of a table may be left out while the table changes, and comes when the server accepts the
// connection, which it has done once it has greeted.
EndOwners look_for_owners(uid_t& own, uid_t& peer) {
    constexpr int most_sleeps = 2;
    EndOwners owners = find_end_owners(cli_socket, own, peer);
    for (int sleeps = 0; owners == EndOwners::missing && sleeps < most_sleeps; ++sleeps) {
        sleep_seconds(1);
        owners = find_end_owners(cli_socket, own, peer);
    }
    return owners;
}

// Any user of this host may have taken the port before the server.
bool peer_is_trusted() {
    uid_t own = 0;
    uid_t peer = 0;
    const EndOwners owners = look_for_owners(own, peer);
    server_is_root = owners == EndOwners::known && peer == own;
    if (owners != EndOwners::known || server_is_root)
        return owners != EndOwners::missing;
    uid_t user = 0;
    gid_t group = 0;
    return find_server_account(user, group) && peer == user;
}

int close_session(int failure) {
    close(cli_socket);
    cli_socket = -1;
    return failure;
}

}  // namespace

int cli_connect() {
    cli_socket = open_tcp_socket();
    if (cli_socket == -1)
        return errno;
    sockaddr_in address{};
    if (!resolve_host(cli_host, cli_port, address))
        return close_session(errno != 0 ? errno : EHOSTUNREACH);
    sleep_seconds(2);
    const int failure = connect_socket(cli_socket, address);
    return failure != 0 ? close_session(failure) : 0;
}

int cli_wait_prompt() {
    for (;;) {
        const HeapText line(cli_read_line(cli_socket));
        if (line == nullptr)
            return 1;
        if (std::strstr(line.get(), "> ") != nullptr)
            return 0;
    }
}

int cli_command(const char* text) {
    if (cli_send_line(cli_socket, text) != 0)
        return 1;
    bool succeeded = false;
    for (;;) {
        const HeapText line(cli_read_line(cli_socket));
        if (line == nullptr)
            return 1;
        if (std::strstr(line.get(), "+OK:") != nullptr)
            succeeded = true;
        if (std::strstr(line.get(), "> ") != nullptr)
            return succeeded ? 0 : 1;
    }
}

int cli_command_format(const char* format, ...) {
    char command[cli_command_limit + 1];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(command, sizeof(command), format, arguments);
    va_end(arguments);
    if (length < 0 || length > cli_command_limit)
        return 1;
    const int failure = cli_command(command);
    // It may have a password in it.
    wipe(command);
    return failure;
}

int cli_login() {
    if (wait_for_server_pid() != 0 || cli_connect() != 0)
        return 1;
    cli_wait_prompt();
    if (!peer_is_trusted())
        return close_session(1);
    cli_command("user admin");
    return cli_command(install_profiles[os_kind].admin_password);
}

bool cli_server_is_root() {
    return server_is_root;
}
