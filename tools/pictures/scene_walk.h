#pragma once

#include <functional>

#include "tests/support/terminal_program.h"
#include "tools/player/other_programs.h"
#include "tools/player/scenes.h"

/// A wizard that is led through the demonstration, to be made in a sandbox with its usual
/// interfaces and the stand-in server installed. A wait in vain throws what ends a test.
class SceneWalk {
  public:
    explicit SceneWalk(const ProgramSetup& setup) : wizard(setup) {}

    TerminalProgram& terminal() { return wizard; }

    /// Walks to the wizard's end, calling `filled_in` where a screen has been filled in and is not
    /// yet left.
    void run(const std::function<void(const Scene&)>& filled_in);

    /// What the wizard has drawn is then on the screen.
    void waitForKey();

  private:
    void strike(const std::vector<Stroke>& strokes);

    OtherPrograms other_programs;
    TerminalProgram wizard;
};
