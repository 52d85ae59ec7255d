#pragma once

#include <string>
#include <string_view>

namespace krnqb::plan_file {

/// The text of a plan's file before and after the plan element: declaration, comments, line ends.
struct PlanFrame {
  std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  std::string tail = "\n";
};

/// Returns the frame of a well-formed file, with LF line ends. A file in an encoding other than UTF-8 gets
/// the frame of a new plan, because plans are written in UTF-8.
PlanFrame FrameOf(std::string_view bytes);

}  // namespace krnqb::plan_file
