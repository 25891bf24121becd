#pragma once

#include <gtest/gtest.h>

#include <string>

/// Names the cases of a parametrised suite by the member `name` of their parameters.
template <class Case>
std::string case_name(const testing::TestParamInfo<Case>& info) {
    return info.param.name;
}
