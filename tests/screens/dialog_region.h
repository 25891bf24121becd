#pragma once

#include <string>

#include "tests/support/screen_image.h"
#include "tests/support/wait_until.h"

/// The part of the screen where a dialog stands that is `cols` wide and whose message takes `lines`
/// lines.
ScreenImage dialog_region(const ScreenImage& screen, int lines, int cols);

/// The same for a pending box with a message of `length` characters.
ScreenImage pending_region(const ScreenImage& screen, int length);

/// The words on a screen or a part of it, one blank between them, without frames.
std::string words_on(const ScreenImage& image);

/// Expects an "Error!" box with a message on one line and an "OK" button in the middle of the
/// screen.
void expect_error_box(const ScreenImage& screen, const std::string& message,
                      const Caller& caller = Caller::here());
