#pragma once

#include <filesystem>
#include <memory>

#include "ui/toolkit.h"

namespace krnqb::cli {

/// Returns where this program's module with the dialogs is, whether it exists or not. Throws Failure if the
/// program's own place cannot be found out.
std::filesystem::path DialogModule();

/// Loads a module with dialogs (ui/toolkit_module.h) and returns a toolkit made by it. The module stays
/// loaded. Throws Failure if the file is missing, cannot be loaded or is of another version, and Error with
/// the toolkit's own reason if it cannot show windows.
std::shared_ptr<ui::Toolkit> LoadToolkit(const std::filesystem::path& module);

}  // namespace krnqb::cli
