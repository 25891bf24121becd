#include "tests/reliability/peer/endless_server.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>

#include <utility>

namespace {

constexpr int cli_port = 9091;

bool send_all(int descriptor, const std::string& bytes) {
    return send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(bytes.size());
}

}  // namespace

EndlessServer::EndlessServer(EndlessAnswer endless)
    : endless(std::move(endless)), port(cli_port), end(make_pipe()) {
    port.open("127.0.0.1");
    server = std::thread(&EndlessServer::serve, this);
}

EndlessServer::~EndlessServer() {
    end.write_end.close();
    server.join();
}

void EndlessServer::serve() {
    while (client.get() == -1) {
        constexpr int milliseconds = 10;
        pollfd closed{end.read_end.get(), POLLIN, 0};
        if (poll(&closed, 1, milliseconds) != 0)
            return;
        client = port.takeConnection();
    }
    // It was taken as one that never waits.
    fcntl(client.get(), F_SETFL, 0);
    bool connected = endless.command.empty() ? talk() : send_all(client.get(), "> ");
    std::string command;
    char byte = 0;
    while (connected && recv(client.get(), &byte, 1, 0) == 1) {
        command += byte;
        if (byte == '\n')
            connected = answer(std::exchange(command, ""));
    }
    client.close();
}

bool EndlessServer::answer(const std::string& command) {
    const std::string& wanted = endless.command;
    return command.compare(0, wanted.size(), wanted) == 0
               ? talk()
               : send_all(client.get(), "+OK: done\r\n> ");
}

bool EndlessServer::talk() const {
    constexpr std::size_t block_size = 4096;
    std::string block;
    while (block.size() < block_size)
        block += endless.repeated;
    bool connected = send_all(client.get(), endless.start);
    while (connected)
        connected = send_all(client.get(), block);
    return false;
}
