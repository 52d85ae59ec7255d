#include "files/fault.h"

#include <fmt/format.h>

#include "support/path_text.h"

namespace krnqb::files {

Error FileError(std::string_view failure, const std::filesystem::path& file, std::error_code reason) {
  return FileError(failure, file, ReasonText(reason), FileAdvice(reason));
}

Error FileError(std::string_view failure, const std::filesystem::path& file, std::string_view reason,
                std::string_view advice) {
  return Error(error_number::unspecified,
               fmt::format("{} {}: {}; {}", failure, TextOfPath(file), reason, advice));
}

std::filesystem::path WithSuffix(const std::filesystem::path& file, std::string_view suffix) {
  std::filesystem::path beside = file;
  beside += suffix;
  return beside;
}

}  // namespace krnqb::files
