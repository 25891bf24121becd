#include "apply/cli_session.h"

#include <cerrno>

#include "apply/cli_wire.h"
#include "apply/server_process.h"
#include "apply/server_session.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/host_facts.h"
#include "wizard/system/end_owners.h"
#include "wizard/system/signal_gate.h"
#include "wizard/system/tcp_client.h"

namespace {

// The server writes its pid file when it is ready, which may be a moment after it was started.
// Returns 0, or 1 when no process id is known in time.
int wait_for_server_pid() {
    constexpr int most_sleeps = 4;
    for (int sleeps = 0; server_session.pid == 0; ++sleeps) {
        if (sleeps == most_sleeps) return 1;
        sleep_seconds(1);
        server_read_pid();
    }
    return 0;
}

// A row of a table may be left out while the table changes, and comes when the server accepts the
// connection, which it has done once it has greeted.
EndOwners look_for_owners(uid_t& own, uid_t& peer) {
    constexpr int most_sleeps = 2;
    EndOwners owners = find_end_owners(server_session.socket.get(), own, peer);
    for (int sleeps = 0; owners == EndOwners::missing && sleeps < most_sleeps; ++sleeps) {
        sleep_seconds(1);
        owners = find_end_owners(server_session.socket.get(), own, peer);
    }
    return owners;
}

// Any user of this host may have taken the port before the server.
bool peer_is_trusted() {
    uid_t own = 0;
    uid_t peer = 0;
    const EndOwners owners = look_for_owners(own, peer);
    server_session.peer_is_root = owners == EndOwners::known && peer == own;
    if (owners != EndOwners::known || server_session.peer_is_root)
        return owners != EndOwners::missing;
    const ServerAccount account = find_server_account();
    return account.exists && peer == account.user;
}

int close_session(int failure) {
    server_session.socket.close();
    return failure;
}

}  // namespace

int cli_connect() {
    server_session.socket = Descriptor(open_tcp_socket());
    if (!server_session.socket.isOpen()) return errno;
    sockaddr_in address{};
    if (!resolve_host(server_session.cli_host, server_session.cli_port, address))
        return close_session(errno != 0 ? errno : EHOSTUNREACH);
    sleep_seconds(2);
    const int failure = connect_socket(server_session.socket.get(), address);
    return failure != 0 ? close_session(failure) : 0;
}

int cli_read_reply(const std::function<bool(const std::string&)>& take) {
    for (;;) {
        const HeapText line(cli_read_line(server_session.socket.get()));
        if (line == nullptr) return 1;
        if (take(line.get())) return 0;
    }
}

int cli_ask(const char* command, const std::function<bool(const std::string&)>& take) {
    return cli_send_line(server_session.socket.get(), command) != 0 ? 1 : cli_read_reply(take);
}

int cli_wait_prompt() {
    return cli_read_reply([](const std::string& line) { return holds(line, "> "); });
}

int cli_command(const char* text) {
    bool succeeded = false;
    const int failure = cli_ask(text, [&](const std::string& line) {
        succeeded = succeeded || holds(line, "+OK:");
        return holds(line, "> ");
    });
    return failure == 0 && succeeded ? 0 : 1;
}

int cli_login() {
    if (wait_for_server_pid() != 0 || cli_connect() != 0) return 1;
    cli_wait_prompt();
    if (!peer_is_trusted()) return close_session(1);
    cli_command("user admin");
    return cli_command(install_profiles[os_kind].admin_password);
}
