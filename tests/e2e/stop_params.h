#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/wizard_run.h"

/// For tests that are run for several screens or several choices on one.

/// A wizard that has been walked to a screen, by the default answers.
class AtScreen : public testing::TestWithParam<Stop> {
  protected:
    AtScreen() { wizard.walk(Stop::password, GetParam()); }

    /// Where the walk goes on to, as all services are ticked.
    static Stop nextStop() { return stop_at(place_of(GetParam()) + 1); }

    /// And where it came from.
    static Stop stopBefore() { return stop_at(place_of(GetParam()) - 1); }

    WizardRun wizard;
};

std::vector<Stop> every_stop();

std::vector<Stop> listener_stops();

std::string stop_name(const testing::TestParamInfo<Stop>& info);

/// All choices that three check boxes allow.
std::vector<std::vector<bool>> every_choice_of_three();

/// The name of a choice: those of its ticked boxes, or "none".
std::string choice_name(const std::vector<bool>& ticks, const std::vector<std::string>& names);
