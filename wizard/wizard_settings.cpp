#include "wizard/wizard_settings.h"

WizardSettings wizard_settings{};
