#include "sample_company/text.h"

#include <fmt/format.h>

#include <cstdlib>
#include <iterator>

#include "company/records/ascii.h"

namespace krnqb::sample_company {
namespace {

constexpr std::int64_t idStep = 0x10000;  // list entries are numbered in the high digits of the id
constexpr std::int64_t secondsPerDay = std::int64_t{24} * 60 * 60;
constexpr std::int64_t secondsPerEntry = 97;  // time to enter one

// Appends hundredths as a decimal number.
void AppendHundredths(std::string& text, std::int64_t hundredths, bool keepZeros) {
  if (hundredths < 0) text += '-';
  const std::int64_t size = std::abs(hundredths);
  const fmt::format_int whole(size / 100);
  text.append(whole.data(), whole.size());
  const auto rest = static_cast<char>(size % 100);
  if (rest == 0 && !keepZeros) return;
  text += '.';
  text += static_cast<char>('0' + rest / 10);
  if (keepZeros || rest % 10 != 0) text += static_cast<char>('0' + rest % 10);
}

void AppendTwoDigits(std::string& text, std::int64_t number) {
  text += static_cast<char>('0' + number / 10);
  text += static_cast<char>('0' + number % 10);
}

}  // namespace

void ElementText::Text(std::string_view name, std::string_view content) {
  Append("<", name, ">");
  xml_ += content;
  Close(name);
}

void ElementText::Number(std::string_view name, std::int64_t value) {
  const fmt::format_int digits(value);
  Text(name, {digits.data(), digits.size()});
}

void ElementText::Money(std::string_view name, Cents amount) {
  Append("<", name, ">");
  AppendHundredths(xml_, amount, true);
  Close(name);
}

void ElementText::Quantity(std::string_view name, std::int64_t hundredths) {
  Append("<", name, ">");
  AppendHundredths(xml_, hundredths, false);
  Close(name);
}

void ElementText::Id(std::string_view name, std::int64_t number, std::int64_t unixTime) {
  Append("<", name, ">");
  fmt::format_to(std::back_inserter(xml_), "{:X}-{}", number, unixTime);
  Close(name);
}

void ElementText::Block(std::string_view name, std::string_view lines) {
  Open(name);
  xml_ += lines;
  Close(name);
}

void ElementText::Times(std::string_view dayText, std::int64_t secondOfDay, std::int64_t unixTime) {
  for (const std::string_view name : {"TimeCreated", "TimeModified"}) {
    Append("<", name, ">");
    xml_.append(dayText).append("T");
    AppendTwoDigits(xml_, secondOfDay / 3600);
    xml_ += ':';
    AppendTwoDigits(xml_, secondOfDay / 60 % 60);
    xml_ += ':';
    AppendTwoDigits(xml_, secondOfDay % 60);
    Close(name);
  }
  Number("EditSequence", unixTime);
}

void ElementText::Times(std::int64_t unixTime) {
  const Day day(std::chrono::days(unixTime / secondsPerDay));
  Times(DayText(day), unixTime % secondsPerDay, unixTime);
}

std::string ReferenceLines(std::string_view listId, std::string_view fullName) {
  ElementText text;
  text.Text("ListID", listId);
  text.Text("FullName", Escaped(fullName));
  return text.Xml();
}

std::int64_t EntryTime(std::int64_t number, std::int64_t begun) {
  return begun + number * secondsPerEntry;
}

std::string ListIdText(std::int64_t number, std::int64_t begun) {
  return fmt::format("{:X}-{}", number * idStep, EntryTime(number, begun));
}

std::string Escaped(std::string_view utf8) {
  std::string text;
  company::AppendAsciiText(text, utf8);
  return text;
}

}  // namespace krnqb::sample_company
