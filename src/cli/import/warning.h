#pragma once

#include <string>
#include <vector>

namespace krnqb::cli {

/// Something that a user should know about an import. It is printed on standard error.
struct ImportWarning {
  std::string code;                        ///< names the kind of warning and never changes
  std::string message;                     ///< one sentence without "krnqb: warning: "
  std::vector<std::string> accounts = {};  ///< the names of the accounts concerned
  std::vector<double> amounts = {};        ///< the sums that the message states
};

}  // namespace krnqb::cli
