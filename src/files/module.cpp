#include "files/module.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <system_error>

#include "krnqb/error.h"

namespace krnqb::files {
namespace {

// Call it right after a function of the loader failed.
Error LoaderFailure() {
  const char* reason = ::dlerror();
  return {error_number::unspecified, reason != nullptr ? reason : "unknown reason"};
}

}  // namespace

std::filesystem::path ModulePath(const std::filesystem::path& relative) {
  std::error_code failure;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failure);
  if (failure) {
    throw Error(error_number::unspecified,
                fmt::format("/proc/self/exe cannot be read: {}", failure.message()));
  }
  return (program.parent_path() / relative).lexically_normal();
}

void* FunctionOfModule(const std::filesystem::path& module, const char* name) {
  void* library = ::dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw LoaderFailure();
  void* function = ::dlsym(library, name);
  if (function == nullptr) throw LoaderFailure();
  return function;
}

}  // namespace krnqb::files
