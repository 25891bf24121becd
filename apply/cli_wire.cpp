#include "apply/cli_wire.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "wizard/system/secret.h"
#include "wizard/system/signal_gate.h"

namespace {

bool must_wait(ssize_t result) { return result == -1 && (errno == EAGAIN || errno == EWOULDBLOCK); }

// As read(2) of one byte on a descriptor that blocks.
ssize_t read_byte(int descriptor, char& byte) {
    ssize_t result = read(descriptor, &byte, 1);
    while (must_wait(result) && wait_for(descriptor, POLLIN) == 0)
        result = read(descriptor, &byte, 1);
    return result;
}

// As write(2) on a descriptor that blocks.
ssize_t write_some(int descriptor, const char* bytes, size_t count) {
    ssize_t result = write(descriptor, bytes, count);
    while (must_wait(result) && wait_for(descriptor, POLLOUT) == 0)
        result = write(descriptor, bytes, count);
    return result;
}

int send_all(int descriptor, const char* bytes, size_t length) {
    for (size_t sent = 0; sent < length;) {
        const ssize_t result = write_some(descriptor, bytes + sent, length - sent);
        if (result == -1) return errno;
        sent += static_cast<size_t>(result);
    }
    return 0;
}

}  // namespace

int cli_send_line(int descriptor, const char* text) {
    char buffer[cli_command_limit + 3];
    size_t length = std::strlen(text);
    if (length > cli_command_limit) return EMSGSIZE;
    std::memcpy(buffer, text, length);
    buffer[length++] = '\r';
    buffer[length++] = '\n';
    const int failure = send_all(descriptor, buffer, length);
    // It may be a password.
    wipe(buffer);
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
        if (byte == '>' && next == ' ')
            return line.size() + 2 > cli_line_limit ? nullptr : strdup((line + "> ").c_str());
        if (byte == '\r' && next == '\n') return strdup(line.c_str());
    }
    return nullptr;
}
