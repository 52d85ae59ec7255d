#include "cli/dialog_toolkit.h"
#include "ui/qt/qt_toolkit.h"

namespace krnqb::cli {

std::function<std::shared_ptr<ui::Toolkit>()> DialogToolkit() {
  return ui::qt::QtToolkit;
}

}  // namespace krnqb::cli
