#pragma once

#include <exception>
#include <memory>

#include "ui/toolkit.h"

namespace krnqb::ui {

/// What the function of a toolkit module makes: a toolkit, or the exception that it ended with.
struct MadeToolkit {
  std::shared_ptr<Toolkit> toolkit;
  std::exception_ptr failure;
};

/// The one function of a toolkit module, a library that a program loads when it shows a dialog. Has C linkage
/// and the name `makeToolkitName`. Returns the version of the module, a constant. Sets `made` only if
/// `programVersion` is the same: the classes of two versions do not fit together.
using MakeToolkitFunction = const char*(const char* programVersion, MadeToolkit* made) noexcept;

inline constexpr const char* makeToolkitName = "KrnqbMakeToolkit";

}  // namespace krnqb::ui
