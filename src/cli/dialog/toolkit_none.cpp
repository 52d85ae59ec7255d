#include "cli/dialog/toolkit.h"

namespace krnqb::cli {

std::function<std::shared_ptr<ui::Toolkit>()> DialogToolkit() {
  return {};
}

}  // namespace krnqb::cli
