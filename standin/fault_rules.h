#pragma once

#include <string>
#include <vector>

/// `Fault::amount` of a pid file that is never removed.
constexpr double stays_for_ever = -1;

/// What can go wrong at.
enum class Event : unsigned {
    command = 1U << 0,   ///< a command was received
    password = 1U << 1,  ///< the line after "user NAME" was received
    connect = 1U << 2,   ///< a client has connected and waits for the greeting
    start = 1U << 3,     ///< the server starts
    stop = 1U << 4,      ///< the server was told to stop
};

/// How it goes wrong; `Fault::amount` is in brackets.
enum class FaultKind {
    none,
    refuse,          ///< a "-ERR:" reply; at start: does not start
    close,           ///< the connection is closed in place of a reply
    silent,          ///< no reply
    late,            ///< the reply, at start the pid file, comes later [seconds]
    dribble,         ///< the reply comes byte by byte [seconds between two bytes]
    overlong,        ///< a long line before the reply [bytes]
    garbage,         ///< garbage in place of the reply [bytes]
    garbage_prompt,  ///< garbage in place of the reply, then a prompt [bytes]
    crash,           ///< the server dies at once and leaves everything as it is
    missing,         ///< no pid file is written
    stays,           ///< the pid file is removed late or not at all [seconds, stays_for_ever]
};

/// How the server misbehaves at one event.
struct Fault {
    FaultKind kind = FaultKind::none;
    double amount = 0;
};

/// One line of the fault file.
struct FaultRule {
    std::string source;  ///< the line itself, trimmed
    Event event = Event::command;
    std::string text;      ///< for commands: what they begin with, or are
    bool exactly = false;  ///< the command is `text`, not only begins with it
    long occurrence = 0;   ///< the how-manieth such event; 0: every one
    Fault fault;
};

/// Reads a fault file into `rules`. Returns an empty text, or what is wrong with which line.
///
/// A line is empty, a comment ("#" first), or WHAT WHICH ACTION:
///
///     "TEXT"    a command that begins with TEXT     ="TEXT"   the command TEXT
///     connect   a new connection                    password  the line at a password prompt
///     start     the server's start                  stop      its end by SIGTERM
///
/// WHICH is a number, 1 for the first, or "*" for every one. ACTION is the name of a kind of fault
/// that fits the event ("garbage-prompt" with a hyphen), with its amount where it has one. TEXT
/// ends at the last quotation mark of the line, so that it may hold some. No line may stand twice.
std::string parse_fault_rules(const std::string& text, std::vector<FaultRule>& rules);

/// True when `rule` is about this event; `command` is the text of a command.
bool is_about(const FaultRule& rule, Event event, const std::string& command);
