#include "cli/console/json_text.h"

#include <fmt/format.h>

#include "cli/console/control_characters.h"

namespace krnqb::cli {
namespace {

// The text's own line ends are between values; those inside texts are escaped already.
std::string WithControlsEscaped(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  while (!text.empty()) {
    const TextPart part = TakePart(text);
    if (IsControl(part.character) && part.character != U'\n') {
      escaped += fmt::format("\\u{:04x}", static_cast<unsigned>(part.character));
    } else {
      escaped += part.bytes;
    }
  }
  return escaped;
}

std::string Text(const Json& json, int indent) {
  return WithControlsEscaped(json.dump(indent, ' ', false, Json::error_handler_t::replace));
}

}  // namespace

std::string JsonText(const Json& json) {
  return Text(json, 2);
}

std::string JsonLine(const Json& json) {
  return Text(json, -1);
}

}  // namespace krnqb::cli
