#pragma once

#include <string>
#include <variant>
#include <vector>

#include "tests/support/key.h"

/// What the player types at a time: a text or a key.
using Stroke = std::variant<std::string, Key>;

/// One screen of a demonstration run.
struct Scene {
    std::string name;             ///< what the viewer is told that it is
    std::string picture;          ///< the name of its picture; empty for a screen seen before
    std::string shows;            ///< a text by which the screen is recognised
    std::vector<Stroke> answers;  ///< what fills the screen in
    std::vector<Stroke> leaves;   ///< what leaves it, once it has been looked at
};

/// A port that one of the scenes expects some program to have.
constexpr int port_in_use = 8080;

/// A whole run of the wizard from the first screen to the end, wrong answers included, for the
/// interfaces of the sandbox.
std::vector<Scene> demonstration();
