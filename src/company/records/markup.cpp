#include "company/records/markup.h"

#include <algorithm>

namespace krnqb::company {
namespace {

// Returns the position of the bracket that closes a tag, ignoring brackets inside quoted attribute values.
std::size_t TagEnd(std::string_view tag) {
  std::size_t position = 0;
  // Most tags are a name of letters alone, and letters come after the bracket and the quotes.
  while (position < tag.size() && tag[position] > '>') ++position;
  char quote = 0;
  for (; position < tag.size(); ++position) {
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
    if (kind == '/') return TakeEndTag();
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

Markup MarkupReader::NextTag() {
  // Between tags is seldom more than a line end.
  while (!rest_.empty() && rest_.front() != '<') rest_.remove_prefix(1);
  Markup markup = Next();
  while (markup.kind == MarkupKind::Text || markup.kind == MarkupKind::PlainText) markup = Next();
  return markup;
}

std::string_view MarkupReader::TakeThrough(std::string_view begin, std::string_view end) {
  rest_.remove_prefix(begin.size());
  const std::string_view inside = rest_.substr(0, rest_.find(end));
  rest_.remove_prefix(std::min(rest_.size(), inside.size() + end.size()));
  return inside;
}

std::optional<std::string_view> MarkupReader::TakeContent(std::string_view name) noexcept {
  constexpr std::size_t brackets = 3;  // "</" and ">"
  const std::string_view text = rest_.substr(0, rest_.find('<'));
  const std::string_view end = rest_.substr(text.size(), name.size() + brackets);
  const bool isEnd = end.size() == name.size() + brackets && end[1] == '/' && end.ends_with('>') &&
                     end.substr(2, name.size()) == name;
  if (!isEnd) return std::nullopt;
  rest_.remove_prefix(text.size() + end.size());
  return text;
}

Markup MarkupReader::TakeEndTag() {
  rest_.remove_prefix(2);
  const std::string_view tag = rest_.substr(0, rest_.find('>'));
  rest_.remove_prefix(std::min(rest_.size(), tag.size() + 1));
  return {MarkupKind::EndTag, tag};
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
