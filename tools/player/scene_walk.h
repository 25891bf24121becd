#pragma once

#include <chrono>
#include <vector>

#include "tests/support/terminal_program.h"
#include "tools/player/other_programs.h"
#include "tools/player/scenes.h"

/// A wizard that is led through the demonstration, to be made in a sandbox with its usual
/// interfaces and the stand-in server installed. A wait in vain throws what ends a test.
class SceneWalk {
  public:
    explicit SceneWalk(const ProgramSetup& setup) : wizard(setup) {}
    virtual ~SceneWalk() = default;
    SceneWalk(const SceneWalk&) = delete;
    SceneWalk& operator=(const SceneWalk&) = delete;

    /// Walks to the wizard's end and returns its status.
    ExitStatus run();

  protected:
    /// Called when a screen has been filled in and is not yet left.
    virtual void show(const Scene& scene) = 0;

    /// Called before each stroke, after each character and after show(), with the time that a
    /// viewer needs to follow. Where it returns false the walk ends with Ctrl-C.
    virtual bool pause(std::chrono::milliseconds /*time*/) { return true; }

    /// What the wizard has drawn is then on the screen.
    void waitForKey();

    TerminalProgram wizard;

  private:
    bool strike(const std::vector<Stroke>& strokes);
    bool strike(const Stroke& stroke);
    bool type(const std::string& text);

    OtherPrograms other_programs;
};
