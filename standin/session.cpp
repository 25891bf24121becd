#include "session.h"

#include <utility>

namespace {
const char* const administrator = "admin";
const char* const line_end = "\r\n";
}  // namespace

Session::Session(Store& shared) : store(shared) {}

std::string Session::greeting() const {
    return std::string("TELUMA stand-in server, command line interface") + line_end + prompt();
}

bool Session::expectsPassword() const { return context() == password_context; }

std::string Session::answer(const std::string& line) {
    if (expectsPassword()) return logIn(line);
    const Match match = find_command(context(), line);
    return match.command == nullptr ? failure(match.refusal)
                                    : carryOut(*match.command, match.arguments);
}

std::string Session::refuse(Refusal reason) {
    if (expectsPassword()) {
        levels.clear();
        outermost = login_context;
    }
    return failure(reason);
}

std::string Session::prompt() const { return prompt_of(context()); }

Context Session::context() const { return levels.empty() ? outermost : levels.back().context; }

Draft Session::currentDraft() const {
    if (!levels.empty()) return levels.back().draft;
    Draft draft;
    draft.state = store.live;
    return draft;
}

std::string Session::logIn(const std::string& password) {
    if (levels.back().draft.user != administrator || !store.isPassword(password))
        return refuse("wrong user name or password");
    levels.clear();
    outermost = root_context;
    return std::string("+OK: welcome") + line_end + prompt();
}

std::string Session::carryOut(const Command& command, const std::vector<std::string>& arguments) {
    Draft draft = currentDraft();
    std::vector<std::string> lines;
    Call call{arguments, store, draft, lines};
    const Refusal refusal = command.action(call);
    if (refusal != nullptr) return failure(refusal);
    move(command.move, std::move(draft), command.entered);
    if (expectsPassword()) return prompt();
    std::string reply;
    for (const std::string& line : lines) reply += line + line_end;
    return reply + "+OK: done" + line_end + prompt();
}

void Session::move(Move how, Draft draft, Context entered) {
    if (how == Move::enter) {
        levels.push_back({entered, std::move(draft)});
    } else if (levels.empty()) {
        return;
    } else if (how == Move::stay) {
        levels.back().draft = std::move(draft);
    } else {
        levels.pop_back();
        if (how == Move::keep) outerState() = std::move(draft.state);
    }
}

State& Session::outerState() { return levels.empty() ? store.live : levels.back().draft.state; }

std::string Session::failure(const std::string& reason) const {
    return "-ERR: " + reason + line_end + prompt();
}
