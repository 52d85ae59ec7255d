#include "plan_file/frame.h"

#include <algorithm>

#include "plan_file/prolog.h"
#include "xml/surroundings.h"

namespace krnqb::plan_file {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

char LowerCase(char letter) noexcept {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::string_view AfterMark(std::string_view bytes) noexcept {
  if (bytes.starts_with(byteOrderMark)) bytes.remove_prefix(byteOrderMark.size());
  return bytes;
}

// Without a declaration a document is in UTF-8 or UTF-16; in UTF-16 its first "<" is next to a zero byte or a
// byte order mark.
bool IsInUtf8(std::string_view bytes) {
  const std::string_view text = AfterMark(bytes);
  if (text.empty() || static_cast<unsigned char>(text[0]) >= 0x80 ||
      text.substr(0, 2).find('\0') != std::string_view::npos) {
    return false;
  }
  if (!text.starts_with("<?xml ") && !text.starts_with("<?xml\t") && !text.starts_with("<?xml\r") &&
      !text.starts_with("<?xml\n")) {
    return true;
  }
  std::string declaration(text.substr(0, text.find("?>")));
  std::transform(declaration.begin(), declaration.end(), declaration.begin(), LowerCase);
  return declaration.find("encoding") == std::string::npos || declaration.find("utf-8") != std::string::npos;
}

std::string WithLineFeeds(std::string_view text) {
  std::string lines;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '\r') {
      lines += text[at];
    } else if (at + 1 == text.size() || text[at + 1] != '\n') {
      lines += '\n';
    }
  }
  return lines;
}

// The frame of a document whose bytes cannot be copied: what its tree contains, written in UTF-8.
PlanFrame WrittenFrame(std::string_view bytes) {
  const XmlSurroundings surroundings = SurroundingsOf(bytes);
  PlanFrame frame;
  frame.head += surroundings.before;
  frame.tail += surroundings.after;
  return frame;
}

}  // namespace

PlanFrame FrameOf(std::string_view bytes) {
  if (!IsInUtf8(bytes)) return WrittenFrame(bytes);
  const ElementPlace plan = FindDocumentElement(bytes);
  return {WithLineFeeds(bytes.substr(0, plan.begin)), WithLineFeeds(bytes.substr(plan.end))};
}

}  // namespace krnqb::plan_file
