#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::html {

/// A piece of a page. Only the functions of this room make one, so it never holds an unescaped text.
class Fragment {
 public:
  Fragment() = default;

  Fragment& operator+=(const Fragment& other) {
    markup_ += other.markup_;
    return *this;
  }
  friend Fragment operator+(Fragment left, const Fragment& right) { return left += right; }

  bool Empty() const noexcept { return markup_.empty(); }
  const std::string& Markup() const noexcept { return markup_; }

 private:
  explicit Fragment(std::string markup) : markup_(std::move(markup)) {}
  friend Fragment Text(std::string_view text);
  friend struct ElementWriter;

  std::string markup_;
};

/// An attribute of an element; its value is escaped. One with an empty name is left out.
struct Attribute {
  std::string_view name;
  std::string value;
};
using Attributes = std::vector<Attribute>;

/// Returns a UTF-8 text for the content of an element or the value of an attribute. Line ends and tabs become
/// spaces; other control characters, those that change the direction of writing, and invalid bytes become
/// U+FFFD.
std::string Escaped(std::string_view text);

/// Returns a text as content.
Fragment Text(std::string_view text);

/// Returns an element with its content and its end tag. `name` and the names of attributes are written as
/// they are.
Fragment Element(std::string_view name, const Attributes& attributes, const Fragment& content = {});
Fragment Element(std::string_view name, const Fragment& content);

/// Returns an element without content and end tag, such as `meta`.
Fragment EmptyElement(std::string_view name, const Attributes& attributes);

}  // namespace krnqb::html
