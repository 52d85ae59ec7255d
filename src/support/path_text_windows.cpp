#include "support/path_text.h"
#include "support/windows_text.h"

namespace krnqb {

std::filesystem::path PathFrom(std::string_view text) {
  return Wide(text);
}

std::string TextOfPath(const std::filesystem::path& path) {
  return Utf8(path.native());
}

void AssignPath(std::string& text, const std::filesystem::path& path) {
  text = TextOfPath(path);
}

}  // namespace krnqb
