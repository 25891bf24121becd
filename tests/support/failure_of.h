#pragma once

#include <functional>
#include <string>

/// Runs a piece of a test that is meant to fail and returns the messages of its failures, an empty
/// text if there were none. The running test is not marked as failed by them.
std::string failure_of(const std::function<void()>& piece);
