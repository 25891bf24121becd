#pragma once

#include <string>
#include <variant>
#include <vector>

#include "tests/support/emulator.h"

/// Not typed: the program ends that lets the port check wait, see OtherPrograms.
struct EndOfBusyProgram {};

/// What the player does at a time: it types a text or a key, or ends the busy program.
using Stroke = std::variant<std::string, Key, EndOfBusyProgram>;

/// One screen of a demonstration run.
struct Scene {
    std::string name;             ///< what the viewer is told that it is
    std::string picture;          ///< the name of its picture; empty for a screen seen before
    std::string shows;            ///< a text by which the screen is recognised
    std::vector<Stroke> answers;  ///< what fills the screen in
    std::vector<Stroke> leaves;   ///< what leaves it, once it has been looked at
};

/// A whole run of the wizard from the first screen to the end, wrong answers included, for the
/// interfaces of the sandbox and beside OtherPrograms.
std::vector<Scene> demonstration();
