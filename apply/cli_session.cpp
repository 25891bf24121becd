#include "apply/cli_session.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "apply/server_process.h"
#include "apply/server_session.h"
#include "wizard/base/heap_text.h"
#include "wizard/base/host_facts.h"
#include "wizard/system/end_owners.h"
#include "wizard/system/secret.h"
#include "wizard/system/signal_gate.h"
#include "wizard/system/tcp_client.h"

namespace {

// What `call`, a read(2) or write(2), returns on a descriptor that blocks.
template <class Call>
ssize_t when_ready(int descriptor, short event, Call call) {
    ssize_t result = call();
    while (result == -1 && errno == EAGAIN && wait_for(descriptor, event) == 0) result = call();
    return result;
}

ssize_t read_byte(int descriptor, char& byte) {
    return when_ready(descriptor, POLLIN, [&] { return read(descriptor, &byte, 1); });
}

int send_all(int descriptor, const char* bytes, size_t length) {
    for (size_t sent = 0; sent < length;) {
        const ssize_t result = when_ready(
            descriptor, POLLOUT, [&] { return write(descriptor, bytes + sent, length - sent); });
        if (result == -1) return errno;
        sent += static_cast<size_t>(result);
    }
    return 0;
}

// Waits for it: the server writes its pid file when it is ready, a moment after it was started.
bool knows_server_pid() {
    constexpr int most_sleeps = 4;
    for (int sleeps = 0; server_session.pid == 0 && sleeps < most_sleeps; ++sleeps) {
        sleep_seconds(1);
        server_read_pid();
    }
    return server_session.pid != 0;
}

// Any user of this host may have taken the port before the server. The kernel may leave a row out
// of a table that changes, and has one only once the server has accepted the connection, which it
// has when it has greeted.
bool peer_is_trusted() {
    constexpr int most_looks = 3;
    uid_t own = 0;
    uid_t peer = 0;
    EndOwners owners = EndOwners::missing;
    for (int looks = 0; owners == EndOwners::missing && looks < most_looks; ++looks) {
        if (looks > 0) sleep_seconds(1);
        owners = find_end_owners(server_session.socket.get(), own, peer);
    }
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

int cli_send_line(int descriptor, const char* text) {
    if (std::strlen(text) > cli_command_limit) return EMSGSIZE;
    char line[cli_command_limit + 3];
    const int length = std::snprintf(line, sizeof(line), "%s\r\n", text);
    const int failure = send_all(descriptor, line, static_cast<size_t>(length));
    // It may be a password.
    wipe(line);
    return failure;
}

char* cli_read_line(int descriptor) {
    std::string line;
    while (line.size() < cli_line_limit) {
        // A server that never stops talking must not keep the user from interrupting, nor must one
        // that only sends bytes that are left out.
        let_signals_in();
        char byte = 0;
        if (read_byte(descriptor, byte) < 1) return nullptr;
        if (byte != '\r' && byte != '>') {
            line += byte;
            continue;
        }
        char next = 0;
        if (read_byte(descriptor, next) < 0) return nullptr;
        if (byte == '\r' && next == '\n') return strdup(line.c_str());
        if (byte == '>' && next == ' ')
            return line.size() + 2 > cli_line_limit ? nullptr : strdup((line + "> ").c_str());
    }
    return nullptr;
}

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

Reply cli_ask(const char* command, const TakesLine& take, const char* prompt, const char* success) {
    const int socket = server_session.socket.get();
    if (command != nullptr && cli_send_line(socket, command) != 0) return Reply::none;
    Reply reply = Reply::refused;
    for (;;) {
        const HeapText text(cli_read_line(socket));
        if (text == nullptr) return Reply::none;
        const std::string line = text.get();
        if (take(line)) continue;
        if (holds(line, success)) reply = Reply::accepted;
        if (holds(line, prompt)) return reply;
    }
}

int cli_wait_prompt() { return cli_ask(nullptr) == Reply::none ? 1 : 0; }

int cli_command(const char* text) { return cli_ask(text) == Reply::accepted ? 0 : 1; }

int cli_login() {
    if (!knows_server_pid() || cli_connect() != 0) return 1;
    cli_wait_prompt();
    if (!peer_is_trusted()) return close_session(1);
    cli_command("user admin");
    return cli_command(install_profiles[os_kind].admin_password);
}
