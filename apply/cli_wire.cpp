#include "apply/cli_wire.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "wizard/system/secret.h"
#include "wizard/system/signal_gate.h"

namespace {

bool must_wait(ssize_t result) {
    return result == -1 && (errno == EAGAIN || errno == EWOULDBLOCK);
}

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

// A reply line while it is being read.
struct ReplyLine {
    char text[cli_line_limit + 1] = {};
    int length = 0;

    bool isFull() const { return length == cli_line_limit; }
    void add(char character) { text[length++] = character; }
};

enum class Progress { goes_on, complete, failed };

// Behind a CR: LF completes the line, anything else is dropped.
Progress after_carriage_return(int descriptor) {
    char byte = 0;
    const ssize_t result = read_byte(descriptor, byte);
    if (result < 0)
        return Progress::failed;
    return result == 1 && byte == '\n' ? Progress::complete : Progress::goes_on;
}

// At a ">": together with a blank it is a prompt, otherwise both are dropped.
Progress after_angle_bracket(int descriptor, ReplyLine& line) {
    char byte = 0;
    const ssize_t result = read_byte(descriptor, byte);
    if (result < 0)
        return Progress::failed;
    if (result == 0 || byte != ' ')
        return Progress::goes_on;
    line.add('>');
    if (line.isFull())
        return Progress::failed;
    line.add(' ');
    return Progress::complete;
}

Progress take_byte(int descriptor, ReplyLine& line) {
    char byte = 0;
    if (read_byte(descriptor, byte) < 1)
        return Progress::failed;
    if (byte == '\r')
        return after_carriage_return(descriptor);
    if (byte == '>')
        return after_angle_bracket(descriptor, line);
    line.add(byte);
    return line.isFull() ? Progress::failed : Progress::goes_on;
}

int send_all(int descriptor, const char* bytes, size_t length) {
    for (size_t sent = 0; sent < length;) {
        const ssize_t result = write_some(descriptor, bytes + sent, length - sent);
        if (result == -1)
            return errno;
        sent += static_cast<size_t>(result);
    }
    return 0;
}

}  // namespace

int cli_send_line(int descriptor, const char* text) {
    char buffer[cli_command_limit + 3];
    size_t length = std::strlen(text);
    if (length > cli_command_limit)
        return EMSGSIZE;
    std::memcpy(buffer, text, length);
    buffer[length++] = '\r';
    buffer[length++] = '\n';
    const int failure = send_all(descriptor, buffer, length);
    // It may be a password.
    wipe(buffer);
    return failure;
}

char* cli_read_line(int descriptor) {
    ReplyLine line;
    Progress progress = Progress::goes_on;
    while (progress == Progress::goes_on) {
        // A server that never stops talking must not keep the user from interrupting, nor must one
        // that only sends bytes that are left out.
        let_signals_in();
        progress = take_byte(descriptor, line);
    }
    return progress == Progress::complete ? strdup(line.text) : nullptr;
}
