#pragma once

#include <string>
#include <vector>

#include "build_paths.h"
#include "running_program.h"

namespace krnqb::plan_file {

/// A running plan_write_child.
class WriteProcess : public tests::RunningProgram {
 public:
  explicit WriteProcess(const std::vector<std::string>& arguments)
      : tests::RunningProgram(tests::PlanWriteChild(), arguments) {}
};

}  // namespace krnqb::plan_file
