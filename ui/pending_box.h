#pragma once

#include "ui/message_dialogs.h"  // moved
