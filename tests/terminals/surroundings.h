#pragma once

#include <gtest/gtest.h>

#include <iosfwd>
#include <string>
#include <vector>

/// A kind of terminal in a locale: what TERM and LC_ALL say.
struct Surroundings {
    std::string term;
    std::string locale;

    bool hasColours() const { return term != "vt220"; }
    bool hasUtf8() const { return locale != "C"; }
};

/// Prints a surroundings in the messages of GoogleTest.
std::ostream& operator<<(std::ostream& out, const Surroundings& surroundings);

/// Every kind of terminal that the wizard is tested on, each with UTF-8 and without.
std::vector<Surroundings> every_surroundings();

/// Those of them with UTF-8.
std::vector<Surroundings> surroundings_with_utf8();

std::string surroundings_name(const testing::TestParamInfo<Surroundings>& info);
