#include "tests/apply/scripted_session.h"

#include <unistd.h>

#include <csignal>

#include "apply/server_session.h"

ScriptedSession::ScriptedSession() {
    // As the wizard does: a broken connection is an error of the write.
    std::signal(SIGPIPE, SIG_IGN);
    answer("");
}

ScriptedSession::~ScriptedSession() { server_session = {}; }

void ScriptedSession::answer(const std::string& answers) {
    peer.emplace(answers);
    server_session.socket = Descriptor(dup(peer->clientEnd()));
}

void ScriptedSession::expectConversation(const Conversation& conversation,
                                         const std::function<void()>& call) {
    std::string answers;
    std::string commands;
    for (const Exchange& exchange : conversation) {
        answers += exchange.answer;
        commands += exchange.command + "\r\n";
    }
    SCOPED_TRACE(commands);
    answer(answers);
    call();
    EXPECT_EQ(peer->received(), commands);
    EXPECT_EQ(peer->unread(), "");
}
