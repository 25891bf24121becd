#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

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
    ScriptedSession();
    ~ScriptedSession() override;

    /// Starts over with a peer that has these answers.
    void answer(const std::string& answers);

    /// The same with the answers of a conversation, of which all commands are to be sent and all
    /// answers read while `call` runs.
    void expectConversation(const Conversation& conversation, const std::function<void()>& call);

    std::optional<ScriptedPeer> peer;
};
