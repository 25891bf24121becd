#pragma once

#include <string>

#include "tests/screens/wizard_rig.h"

/// The wizard on its domain screen, on a terminal of the usual size.
class DomainRig : public WizardRig {
  public:
    DomainRig();

    /// What the three fields show.
    std::string domainShown() { return fieldText(3, 17); }
    std::string locationShown() { return fieldText(5, 18); }
    std::string postmasterShown() { return fieldText(7, 30); }

  private:
    std::string fieldText(int row, int col);
};

/// Keys that remove so many characters.
std::string backspaces(size_t count);

/// Keys that replace whatever stands in a field by `text`.
std::string retyped(const std::string& text);
