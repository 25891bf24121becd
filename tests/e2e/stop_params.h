#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/wizard_run.h"

/// A wizard that has been walked to a screen, by the default answers.
class AtScreen : public testing::TestWithParam<Stop> {
  protected:
    AtScreen() { wizard.walk(Stop::password, GetParam()); }

    WizardRun wizard;
};

inline std::string stop_name(const testing::TestParamInfo<Stop>& info) {
    return facts_of(info.param).name;
}
