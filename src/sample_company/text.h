#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "sample_company/calendar.h"

namespace krnqb::sample_company {

/// An amount of money; a debit of an account is positive.
using Cents = std::int64_t;

/// A record's text as a company file keeps it, written element by element: one per line, plain ASCII.
class ElementText {
 public:
  void Open(std::string_view name) { Append("<", name, ">\n"); }
  void Close(std::string_view name) { Append("</", name, ">\n"); }
  /// An element without children; `content` is escaped already and not empty.
  void Text(std::string_view name, std::string_view content);
  void Truth(std::string_view name, bool value) { Text(name, value ? "true" : "false"); }
  void Number(std::string_view name, std::int64_t value);
  void Money(std::string_view name, Cents amount);
  /// A quantity in hundredths, written without trailing zeros.
  void Quantity(std::string_view name, std::int64_t hundredths);
  /// A number and a time as QuickBooks makes its ids of them.
  void Id(std::string_view name, std::int64_t number, std::int64_t unixTime);
  /// An element whose lines of content are `lines`.
  void Block(std::string_view name, std::string_view lines);
  void Lines(std::string_view lines) { xml_ += lines; }
  /// TimeCreated, TimeModified and EditSequence.
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

/// The lines that refer to a list entry: ListID and FullName, the latter plain UTF-8.
std::string ReferenceLines(std::string_view listId, std::string_view fullName);

/// When the entry with this number, counted from 1, came into a list that was begun at a time.
std::int64_t EntryTime(std::int64_t number, std::int64_t begun);
/// That entry's ListID.
std::string ListIdText(std::int64_t number, std::int64_t begun);

/// A plain text as it stands in an element.
std::string Escaped(std::string_view utf8);

}  // namespace krnqb::sample_company
