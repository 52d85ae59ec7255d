#include "plan_file/prolog.h"

#include <algorithm>

namespace krnqb::plan_file {
namespace {

constexpr auto npos = std::string_view::npos;

// Reads the pieces of markup of a text one after the other.
class MarkupScanner {
 public:
  explicit MarkupScanner(std::string_view text) noexcept : text_(text) {}

  std::size_t Position() const noexcept { return position_; }
  bool AtEnd() const noexcept { return position_ >= text_.size(); }
  bool At(std::string_view begin) const noexcept { return text_.substr(position_).starts_with(begin); }
  void Step() noexcept { ++position_; }

  // Goes to the next "<".
  void SkipText() noexcept { position_ = std::min(text_.find('<', position_), text_.size()); }

  // Skips a piece of markup up to and with its end, and returns whether the piece was there.
  bool Skip(std::string_view begin, std::string_view end) noexcept {
    if (!At(begin)) return false;
    const std::size_t found = text_.find(end, position_ + begin.size());
    position_ = found == npos ? text_.size() : found + end.size();
    return true;
  }

  bool SkipOpaque() noexcept { return Skip("<!--", "-->") || Skip("<?", "?>") || Skip("<![CDATA[", "]]>"); }
  bool SkipQuoted() noexcept { return Skip("\"", "\"") || Skip("'", "'"); }

  // Skips a declaration: quoted texts may contain its end. Pieces of an internal subset are declarations too.
  void SkipDeclaration() noexcept {
    int brackets = 0;
    for (Step(); !AtEnd();) {
      if (SkipOpaque() || SkipQuoted()) continue;
      if (At("[")) ++brackets;
      if (At("]")) --brackets;
      const bool ends = At(">") && brackets == 0;
      Step();
      if (ends) return;
    }
  }

  // Skips a tag and returns whether it is that of an empty element.
  bool SkipTag() noexcept {
    for (Step(); !AtEnd();) {
      if (SkipQuoted()) continue;
      const bool empty = At("/>");
      const bool ends = empty || At(">");
      position_ += empty ? 2U : 1U;
      if (ends) return empty;
    }
    return false;
  }

 private:
  std::string_view text_;
  std::size_t position_ = 0;
};

}  // namespace

ElementPlace FindDocumentElement(std::string_view text) noexcept {
  MarkupScanner scanner(text);
  ElementPlace place{text.size(), text.size()};
  std::size_t depth = 0;
  for (scanner.SkipText(); !scanner.AtEnd(); scanner.SkipText()) {
    if (scanner.SkipOpaque()) continue;
    if (scanner.At("<!")) {
      scanner.SkipDeclaration();
      continue;
    }
    if (depth == 0) place.begin = scanner.Position();
    const bool closes = scanner.At("</");
    const bool empty = scanner.SkipTag();
    if (closes) --depth;
    if (!closes && !empty) ++depth;
    if (depth == 0) {
      place.end = scanner.Position();
      return place;
    }
  }
  return place;
}

}  // namespace krnqb::plan_file
