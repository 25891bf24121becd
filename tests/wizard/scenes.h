#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

/// Something that can stand on the screen, in a ScreenSession, with the focus on one of its
/// controls.
struct Scene {
    std::string name;
    int state;                  ///< the value of `screen_state` while it is there
    std::function<void()> run;  ///< shows it until it is left
    std::string keys_before;    ///< typed ahead, these lead to it
    std::string keys_after;     ///< and these, typed when it waits, lead out of run() again
};

/// Every screen, with the focus on each of its controls in turn.
std::vector<Scene> screen_scenes();

/// One scene for each screen: the focus is on its first control.
std::vector<Scene> first_screen_scenes();

/// Every kind of dialog, with the focus on each of its buttons in turn.
std::vector<Scene> dialog_scenes();

/// The screen of this name ("password", "domain", "webadmin" ...), the focus on a control, counted
/// from 0 in TAB order.
Scene screen_scene(const std::string& name, int control);

/// The dialog of this name ("message", "no", "yes", "retry", "back", "pending" ...).
Scene dialog_scene(const std::string& name);

/// How GoogleTest prints a scene.
void PrintTo(const Scene& scene, std::ostream* out);
