#include "cli/dialog/toolkit.h"
#include "ui/qt/toolkit.h"

namespace krnqb::cli {

std::function<std::shared_ptr<ui::Toolkit>()> DialogToolkit() {
  return ui::qt::QtToolkit;
}

}  // namespace krnqb::cli
