#include "plan_file/frame.h"

#include <algorithm>

#include "krnqb/xml_element.h"

namespace krnqb::plan_file {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view blanks = " \t\r\n";

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
  if (!text.starts_with("<?xml")) return true;
  std::string declaration(text.substr(0, text.find("?>")));
  std::transform(declaration.begin(), declaration.end(), declaration.begin(), LowerCase);
  return declaration.find("encoding") == std::string::npos || declaration.find("utf-8") != std::string::npos;
}

// Returns the end of a processing instruction, comment or document type at the start of the text.
std::size_t EndOfMarkup(std::string_view text) noexcept {
  std::string_view end;
  if (text.starts_with("<?")) {
    end = "?>";
  } else if (text.starts_with("<!--")) {
    end = "-->";
  } else if (text.starts_with("<!")) {
    const std::size_t mark = text.find_first_of("[>");
    end = mark != std::string_view::npos && text[mark] == '[' ? "]>" : ">";
  } else {
    return std::string_view::npos;
  }
  const std::size_t found = text.find(end);
  return found == std::string_view::npos ? std::string_view::npos : found + end.size();
}

std::size_t HeadLength(std::string_view bytes) noexcept {
  std::size_t length = bytes.size() - AfterMark(bytes).size();
  for (;;) {
    const std::size_t next = bytes.find_first_not_of(blanks, length);
    if (next == std::string_view::npos) return length;
    const std::size_t end = EndOfMarkup(bytes.substr(next));
    if (end == std::string_view::npos) return next;
    length = next + end;
  }
}

std::size_t TailBegin(std::string_view bytes) noexcept {
  std::size_t begin = bytes.size();
  for (;;) {
    const std::size_t last = bytes.substr(0, begin).find_last_not_of(blanks);
    if (last == std::string_view::npos) return begin;
    const std::string_view rest = bytes.substr(0, last + 1);
    const std::size_t markup = rest.ends_with("-->")  ? rest.rfind("<!--")
                               : rest.ends_with("?>") ? rest.rfind("<?")
                                                      : std::string_view::npos;
    if (markup == std::string_view::npos) return rest.size();
    begin = markup;
  }
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

}  // namespace

PlanFrame FrameOf(std::string_view bytes) {
  if (!IsInUtf8(bytes)) return {};
  const std::size_t head = HeadLength(bytes);
  const std::size_t tail = TailBegin(bytes);
  PlanFrame frame{WithLineFeeds(bytes.substr(0, head)), WithLineFeeds(bytes.substr(tail))};
  // Comments and instructions may contain each other's delimiters; a frame cut in the wrong place is
  // discarded.
  if (!XmlElement::Parse(std::string(AfterMark(frame.head)) + "<plan/>" + frame.tail)) return {};
  return frame;
}

}  // namespace krnqb::plan_file
