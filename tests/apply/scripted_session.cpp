#include "tests/apply/scripted_session.h"

#include <csignal>

#include "apply/cli_session.h"

std::string answers_of(const Conversation& conversation) {
    std::string answers;
    for (const Exchange& exchange : conversation)
        answers += exchange.answer;
    return answers;
}

std::string commands_of(const Conversation& conversation) {
    std::string commands;
    for (const Exchange& exchange : conversation)
        commands += exchange.command + "\r\n";
    return commands;
}

ScriptedSession::ScriptedSession() {
    // As the wizard does: a broken connection is an error of the write.
    std::signal(SIGPIPE, SIG_IGN);
    answer("");
}

ScriptedSession::~ScriptedSession() {
    cli_socket = -1;
}

void ScriptedSession::answer(const std::string& answers) {
    peer.emplace(answers);
    cli_socket = peer->clientEnd();
}
