#include "wizard/base/wizard_settings.h"

WizardSettings wizard_settings{};
