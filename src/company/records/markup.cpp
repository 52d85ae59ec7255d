#include "company/records/markup.h"

#include <algorithm>

namespace krnqb::company {
namespace {

// Returns the position of the bracket that closes a tag, ignoring brackets inside quoted attribute values.
std::size_t TagEnd(std::string_view tag) {
  const std::size_t first = std::min(tag.find('>'), tag.size());
  if (tag.substr(0, first).find('=') == std::string_view::npos) return first;  // without attributes
  char quote = 0;
  for (std::size_t position = 0; position < tag.size(); ++position) {
    const char character = tag[position];
    if (quote != 0) {
      if (character == quote) quote = 0;
    } else if (character == '"' || character == '\'') {
      quote = character;
    } else if (character == '>') {
      return position;
    }
  }
  return tag.size();
}

}  // namespace

Markup MarkupReader::Next() {
  while (!rest_.empty()) {
    if (rest_.front() != '<') {
      const std::string_view text = rest_.substr(0, rest_.find('<'));
      rest_.remove_prefix(text.size());
      return {MarkupKind::Text, text};
    }
    const char kind = rest_.size() < 2 ? '\0' : rest_[1];
    if (kind == '/') return {MarkupKind::EndTag, TakeThrough("</", ">")};
    if (kind == '!' && rest_.starts_with("<![CDATA[")) {
      return {MarkupKind::PlainText, TakeThrough("<![CDATA[", "]]>")};
    }
    if (kind == '!' && rest_.starts_with("<!--")) {
      TakeThrough("<!--", "-->");
    } else if (kind == '?') {
      TakeThrough("<?", "?>");
    } else {
      return TakeTag();
    }
  }
  return {MarkupKind::End, {}};
}

std::string_view MarkupReader::TakeThrough(std::string_view begin, std::string_view end) {
  rest_.remove_prefix(begin.size());
  const std::string_view inside = rest_.substr(0, rest_.find(end));
  rest_.remove_prefix(std::min(rest_.size(), inside.size() + end.size()));
  return inside;
}

Markup MarkupReader::TakeTag() {
  rest_.remove_prefix(1);
  std::string_view tag = rest_.substr(0, TagEnd(rest_));
  rest_.remove_prefix(std::min(rest_.size(), tag.size() + 1));
  if (!tag.ends_with('/')) return {MarkupKind::StartTag, tag};
  tag.remove_suffix(1);
  return {MarkupKind::EmptyTag, tag};
}

}  // namespace krnqb::company
