// Names the runs of a parameterised test after the cases' member `name`.
#pragma once

#include <gtest/gtest.h>

#include <string>

struct CaseName {
  template <class Case>
  std::string operator()(const testing::TestParamInfo<Case>& parameter) const {
    return parameter.param.name;
  }
};
