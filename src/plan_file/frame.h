#pragma once

#include <string>
#include <string_view>

namespace krnqb::plan_file {

/// The text of a plan's file before and after the plan element: declaration, comments, line ends.
struct PlanFrame {
  std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  std::string tail = "\n";
};

/// Returns the frame of a well-formed file, with LF line ends. Plans are written in UTF-8: of a file in
/// another encoding, the comments, instructions and document type are kept, one per line, after the
/// declaration of a new plan.
PlanFrame FrameOf(std::string_view bytes);

}  // namespace krnqb::plan_file
