#pragma once

#include <filesystem>

namespace krnqb::files {

// A module is a library of this program that is loaded when it is first needed.

/// Returns the path of a module, whether it exists or not. `relative` is its path from the folder of the
/// program. Throws Error if the program's own place cannot be read.
std::filesystem::path ModulePath(const std::filesystem::path& relative);

/// Loads a module and returns the address of its function `name`. The module stays loaded. Throws Error, with
/// the loader's reason, if the module cannot be loaded or has no such function.
void* FunctionOfModule(const std::filesystem::path& module, const char* name);

}  // namespace krnqb::files
