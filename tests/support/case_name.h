#pragma once

#include <gtest/gtest.h>

#include <string>

/// Names the cases of a suite after the member `name` of their parameters.
struct CaseName {
    template <class Parameter>
    std::string operator()(const testing::TestParamInfo<Parameter>& parameter) const {
        return parameter.param.name;
    }
};
