#include "qbxml/exchange_header.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <string_view>
#include <utility>

#include "qbxml/recording_text.h"

namespace krnqb {
namespace {

constexpr std::int16_t readVersion = 1;

template <typename Value, std::size_t Count>
using Words = std::array<std::pair<Value, std::string_view>, Count>;

constexpr Words<QBKRNproduct, 3> productWords{{{QBKRN_ALD, "ald"}, {QBKRN_BRI, "bri"}, {QBKRN_COR, "cor"}}};

constexpr Words<AmountsPath, 3> amountsWords{{{AmountsPath::None, "none"},
                                              {AmountsPath::Transactions, "transactions"},
                                              {AmountsPath::Reports, "reports"}}};

template <typename Value, std::size_t Count>
std::string_view WordOf(const Words<Value, Count>& words, Value value) {
  for (const auto& [known, word] : words) {
    if (known == value) return word;
  }
  return words.front().second;
}

template <typename Value, std::size_t Count>
Value ReadWord(const RecordedObject& object, std::string_view name, const Words<Value, Count>& words) {
  std::string expected;
  for (std::size_t index = 0; index < Count; ++index) {
    expected += fmt::format("{}\"{}\"",
                            index == 0           ? ""
                            : index + 1 == Count ? " or "
                                                 : ", ",
                            words.at(index).second);
  }
  const RecordedValue& value = RequiredMember(object, name, expected);
  for (const auto& [known, word] : words) {
    if (value.text == word) return known;
  }
  throw UnexpectedValue(name, value, expected);
}

std::optional<std::int16_t> Digits(std::string_view text) {
  std::int16_t number = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool digits = failure == std::errc() && end == text.data() + text.size() && text.front() != '-';
  return digits ? std::optional(number) : std::nullopt;
}

YearMonth ReadMonth(const RecordedObject& object, std::string_view name) {
  constexpr std::string_view expected = "a month written YYYY-MM";
  const RecordedValue& value = RequiredMember(object, name, expected);
  if (value.text.size() == 7 && value.text[4] == '-') {
    const auto year = Digits(value.text.substr(0, 4));
    const auto month = Digits(value.text.substr(5));
    if (year && month && *month >= 1 && *month <= 12) return {*year, *month};
  }
  throw UnexpectedValue(name, value, expected);
}

ProcessorVersion ReadVersion(const RecordedObject& object) {
  return {.major = RecordedNumber<std::int16_t>(object, "major", 0),
          .minor = RecordedNumber<std::int16_t>(object, "minor", 0)};
}

RecordedImport ReadImport(const RecordedObject& object) {
  RecordedImport import{.start = ReadMonth(object, "start"),
                        .product = ReadWord(object, "product", productWords),
                        .amounts = ReadWord(object, "amounts", amountsWords),
                        .expenses = RecordedTruth(object, "expenses"),
                        .income = RecordedTruth(object, "income"),
                        .pastPerformance = RecordedTruth(object, "past_performance")};
  if (object.Find("fiscal_month") != nullptr)
    import.fiscalMonth = static_cast<std::int16_t>(RecordedInteger(object, "fiscal_month", 1, 12));
  return import;
}

std::string MonthText(const YearMonth& month) {
  return fmt::format("{:04}-{:02}", month.year, month.month);
}

RecordedSpan ReadSpan(const RecordedObject& object) {
  return {.from = ReadMonth(object, "from"),
          .to = ReadMonth(object, "to"),
          .planStart = ReadMonth(object, "plan_start")};
}

RecordedLine SpanLine(const RecordedSpan& span) {
  return {
      {"from", MonthText(span.from)}, {"to", MonthText(span.to)}, {"plan_start", MonthText(span.planStart)}};
}

RecordedLine VersionLine(const ProcessorVersion& version) {
  return {{"major", version.major}, {"minor", version.minor}};
}

RecordedLine ImportLine(const RecordedImport& import) {
  RecordedLine line{{"start", MonthText(import.start)},
                    {"product", WordOf(productWords, import.product)},
                    {"amounts", WordOf(amountsWords, import.amounts)},
                    {"expenses", import.expenses},
                    {"income", import.income},
                    {"past_performance", import.pastPerformance}};
  if (import.fiscalMonth) line["fiscal_month"] = *import.fiscalMonth;
  return line;
}

}  // namespace

std::string ExchangeHeaderLine(const ExchangeHeader& header) {
  RecordedLine line{{"exchange", readVersion},
                    {"company", header.company},
                    {"major", header.processor.major},
                    {"minor", header.processor.minor}};
  if (header.presented) line["presented"] = VersionLine(*header.presented);
  if (header.import) line["import"] = ImportLine(*header.import);
  if (header.span) line["span"] = SpanLine(*header.span);
  return RecordedLineText(line);
}

ExchangeHeader ReadExchangeHeader(const RecordedObject& line) {
  const auto version = RecordedNumber<std::int16_t>(line, "exchange", 1);
  if (version != readVersion) {
    throw RecordingFault(
        fmt::format("\"exchange\" is {}; this program reads recordings of version {}", version, readVersion));
  }
  ExchangeHeader header{.company = std::string(RecordedText(line, "company")),
                        .processor = ReadVersion(line)};
  if (const RecordedObject* presented = OptionalObject(line, "presented"))
    header.presented = ReadVersion(*presented);
  if (const RecordedObject* import = OptionalObject(line, "import")) header.import = ReadImport(*import);
  if (const RecordedObject* span = OptionalObject(line, "span")) header.span = ReadSpan(*span);
  return header;
}

}  // namespace krnqb
