#pragma once

#include <gtest/gtest.h>

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

/// The answers of a conversation one after another.
std::string answers_of(const Conversation& conversation);

/// The commands of a conversation as they are sent.
std::string commands_of(const Conversation& conversation);

/// Gives the session of the code under test a scripted peer.
class ScriptedSession : public testing::Test {
  protected:
    ScriptedSession();
    ~ScriptedSession() override;

    /// Starts over with a peer that has these answers.
    void answer(const std::string& answers);

    std::optional<ScriptedPeer> peer;
};
