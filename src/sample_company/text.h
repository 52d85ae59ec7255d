#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "sample_company/calendar.h"

namespace krnqb::sample_company {

/// An amount of money; debits are positive.
using Cents = std::int64_t;

/// Writes a record's text as company files store it: one element per line, ASCII.
class ElementText {
 public:
  void Open(std::string_view name) { Append("<", name, ">\n"); }
  void Close(std::string_view name) { Append("</", name, ">\n"); }
  /// Appends an element without children; `content` must be escaped and not empty.
  void Text(std::string_view name, std::string_view content);
  void Boolean(std::string_view name, bool value) { Text(name, value ? "true" : "false"); }
  void Number(std::string_view name, std::int64_t value);
  void Money(std::string_view name, Cents amount);
  /// Appends a quantity in hundredths, without trailing zeros.
  void Quantity(std::string_view name, std::int64_t hundredths);
  /// Appends an id in QuickBooks' form, from a number and a time.
  void Id(std::string_view name, std::int64_t number, std::int64_t unixTime);
  /// Appends an element with the content `lines`.
  void Block(std::string_view name, std::string_view lines);
  void Lines(std::string_view lines) { xml_ += lines; }
  /// Appends TimeCreated, TimeModified and EditSequence.
  void Times(std::string_view dayText, std::int64_t secondOfDay, std::int64_t unixTime);
  void Times(std::int64_t unixTime);

  void Clear() { xml_.clear(); }
  std::size_t Size() const { return xml_.size(); }
  const std::string& Xml() const { return xml_; }

 private:
  void Append(std::string_view begin, std::string_view name, std::string_view end) {
    xml_.append(begin).append(name).append(end);
  }

  std::string xml_;
};

/// Returns the elements of a reference to a list entry: ListID and FullName, which is given as plain UTF-8.
std::string ReferenceLines(std::string_view listId, std::string_view fullName);

/// Returns the creation time of the entry with this number, counted from 1, in a list begun at a time.
std::int64_t EntryTime(std::int64_t number, std::int64_t begun);
/// Returns that entry's ListID.
std::string ListIdText(std::int64_t number, std::int64_t begun);

/// Escapes plain text for element content.
std::string Escaped(std::string_view utf8);

}  // namespace krnqb::sample_company
