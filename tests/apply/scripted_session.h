#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "apply/server_session.h"
#include "tests/apply/scripted_peer.h"

/// A command and what the server answers to it.
struct Exchange {
    std::string command;
    std::string answer = accepted;
};

using Conversation = std::vector<Exchange>;

/// Gives the session of the code under test a scripted peer.
class ScriptedSession : public testing::Test {
  protected:
    ScriptedSession() {
        // As the wizard does: a broken connection is an error of the write.
        std::signal(SIGPIPE, SIG_IGN);
        answer("");
    }

    ~ScriptedSession() override { server_session = {}; }

    /// Starts over with a peer that has these answers.
    void answer(const std::string& answers) {
        peer.emplace(answers);
        server_session.socket = Descriptor(dup(peer->clientEnd()));
    }

    /// Starts over with the answers of a conversation, and expects `call` to send all of its
    /// commands and to read all of its answers.
    void expectConversation(const Conversation& conversation, const std::function<void()>& call) {
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

    std::optional<ScriptedPeer> peer;
};
