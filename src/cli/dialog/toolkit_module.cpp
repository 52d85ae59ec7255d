#include "cli/dialog/module.h"
#include "cli/dialog/toolkit.h"

namespace krnqb::cli {

std::function<std::shared_ptr<ui::Toolkit>()> DialogToolkit() {
  return [] { return LoadToolkit(DialogModule()); };
}

}  // namespace krnqb::cli
