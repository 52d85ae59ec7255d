#pragma once

#include <string>

namespace krnqb::cli {

/// A warning about an option, printed on standard error before the import.
struct ImportWarning {
  std::string code;     ///< names the kind of warning and never changes
  std::string message;  ///< one sentence without "krnqb: warning: "
};

}  // namespace krnqb::cli
