#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "xml/parser.h"

namespace krnqb {

/// The attributes of a starting element.
class XmlEventAttributes {
 public:
  /// `pointers` are those that the XML library passes, five for each of `count` attributes.
  XmlEventAttributes(const unsigned char** pointers, int count) noexcept
      : pointers_(pointers), count_(count) {}

  bool IsEmpty() const noexcept { return count_ == 0; }
  /// Returns the value of the attribute with this name and no namespace, or nothing if it is missing.
  std::optional<std::string> Find(std::string_view name) const;

 private:
  const unsigned char** pointers_;
  int count_;
};

/// The name of a starting element. Empty if the element is in a namespace, because no path selects such an
/// element, or if the handler has a vocabulary without it.
class XmlEventName {
 public:
  static constexpr int notListed = -1;

  XmlEventName(int number, const char* text) noexcept : number_(number), text_(text) {}

  /// Returns the name's place in the handler's vocabulary, from 0, or `notListed`.
  int Number() const noexcept { return number_; }
  /// Returns the name in UTF-8; valid until the parse ends.
  std::string_view Text() const noexcept { return text_; }

 private:
  int number_;
  const char* text_;
};

/// Receives the content of a document while it is parsed. Texts are UTF-8. They are valid only during the
/// call, except a piece that lies inside the parsed text.
class XmlEventHandler {
 public:
  virtual ~XmlEventHandler() = default;
  /// Returns the names that arrive with a number, at most 40; an empty one never
  /// arrives. Called before the document is parsed. If there are names, an element that has another
  /// name, no attribute and no listed element in it does not arrive itself; its text does.
  virtual std::span<const std::string_view> Vocabulary() const { return {}; }
  virtual void StartElement(const XmlEventName& name, const XmlEventAttributes& attributes) = 0;
  /// Receives text of the innermost open element. One text may arrive in several pieces.
  virtual void Text(std::string_view piece) = 0;
  virtual void EndElement() = 0;

  /// Returns whether `Text` is called from here on. Asked when the parse begins and after each `StartElement`
  /// and `EndElement`.
  bool WantsText() const noexcept { return wantsText_; }

 protected:
  void WantText(bool wanted) noexcept { wantsText_ = wanted; }

 private:
  bool wantsText_ = true;
};

/// Parses a text as strictly as `ParseXmlText` and passes its content to the handler without building a tree
/// or copying the text.
/// Returns the fault if the text is not well-formed; the handler's result is then unusable. An exception from
/// the handler ends the parse and reaches the caller.
std::optional<XmlFault> ParseXmlEvents(const std::string& text, XmlEventHandler& handler);

}  // namespace krnqb
