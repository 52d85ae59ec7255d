#include "cli/dialog/toolkit.h"
#include "ui/win32/toolkit.h"

namespace krnqb::cli {

std::function<std::shared_ptr<ui::Toolkit>()> DialogToolkit() {
  return ui::win32::Win32Toolkit;
}

}  // namespace krnqb::cli
