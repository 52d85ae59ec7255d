#pragma once

#include <string>
#include <vector>

#include "running_program.h"

namespace krnqb::plan_file {

/// A running plan_write_child.
class WriteProcess : public tests::RunningProgram {
 public:
  explicit WriteProcess(const std::vector<std::string>& arguments)
      : tests::RunningProgram(KRNQB_PLAN_WRITE_CHILD, arguments) {}
};

}  // namespace krnqb::plan_file
