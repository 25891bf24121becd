#pragma once

#include <string>
#include <vector>

#include "actions.h"
#include "command_table.h"
#include "store.h"

/// One client's conversation, without its connection: takes lines, gives replies.
///
/// A reply is lines ended by CR LF, the last of them "+OK: ..." or "-ERR: ...", and the prompt. The
/// reply to "user NAME" is only the prompt for the password; the next line is the password.
/// When two sessions change the same thing, the last commit wins.
class Session {
  public:
    /// `shared` must outlive the session.
    explicit Session(Store& shared);

    /// What is sent to a client that has just connected.
    std::string greeting() const;

    /// True when the next line is a password.
    bool expectsPassword() const;

    /// Carries out `line`, without its CR LF, and returns the reply.
    std::string answer(const std::string& line);

    /// The reply to a line that is refused because of `reason`. A password that is refused so ends
    /// the login.
    std::string refuse(Refusal reason);

    /// The prompt alone.
    std::string prompt() const;

  private:
    /// A context that was entered, outermost first.
    struct Level {
        Context context;
        Draft draft;
    };

    Context context() const;
    Draft currentDraft() const;
    std::string logIn(const std::string& password);
    std::string carryOut(const Command& command, const std::vector<std::string>& arguments);
    void move(Move how, Draft draft, Context entered);
    State& outerState();
    std::string failure(const std::string& reason) const;

    Store& store;
    Context outermost = login_context;
    std::vector<Level> levels;
};
