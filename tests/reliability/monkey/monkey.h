#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <string>

#include "tests/e2e/wizard_run.h"

/// Somebody who knows nothing: presses keys, resizes the terminal and sends signals at random. What
/// comes when depends on the seed alone, so that a failure can be repeated.
///
/// The wizard ends now and then, by "Exit" or because all the answers have been applied. The monkey
/// expects that it ended in one of these ways, starts another and goes on.
class Monkey {
  public:
    /// Starts from a wizard on the screen `home`.
    Monkey(Stop screen, std::uint32_t seed);

    /// Does so many things. Every now and then, and at the end, expects that the screen looks like
    /// one that is drawn afresh.
    void play(int events);

    /// How often the wizard has ended and been started again.
    int restarts() const { return restart_count; }

  private:
    void doSomething();
    void pressKey();
    void typeBytes();
    void resize();
    void resizeStorm();
    void stopAndGoOn();

    void start();
    bool hasEnded() const;
    void expectProperEnd();
    void settle();
    void expectScreenAsRedrawn();

    std::uint32_t chance(std::uint32_t below) {
        return static_cast<std::uint32_t>(random()) % below;
    }

    Stop home;
    std::mt19937 random;
    std::unique_ptr<WizardRun> wizard;
    int restart_count = 0;
};
