#include "tests/apply/listening_peer.h"

#include <sys/socket.h>
#include <unistd.h>

#include <utility>

ListeningPeer::ListeningPeer(std::string answersToGive) : answers(std::move(answersToGive)) {
    listener.open("127.0.0.1");
}

bool ListeningPeer::hasClient() {
    if (client.get() == -1)
        client = listener.takeConnection();
    return client.get() != -1;
}

void ListeningPeer::serve() {
    if (served || !hasClient())
        return;
    served = true;
    checked(static_cast<int>(write(client.get(), answers.data(), answers.size())), "write");
    checked(shutdown(client.get(), SHUT_WR), "shutdown");
}

std::string ListeningPeer::received() const {
    char bytes[4096];
    const ssize_t length = recv(client.get(), bytes, sizeof bytes, MSG_PEEK);
    return {bytes, static_cast<size_t>(checked(static_cast<int>(length), "recv"))};
}
