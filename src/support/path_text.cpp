#include "support/path_text.h"

namespace krnqb {

std::filesystem::path PathFrom(std::string_view text) {
  return text;
}

std::string TextOfPath(const std::filesystem::path& path) {
  return path.native();
}

void AssignPath(std::string& text, const std::filesystem::path& path) {
  text = path.native();
}

}  // namespace krnqb
