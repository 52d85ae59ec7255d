#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "krnqb/enumerations.h"
#include "qbxml/recorded_values.h"
#include "support/year_month.h"

namespace krnqb {

/// The highest qbXML version of a request processor.
struct ProcessorVersion {
  std::int16_t major = 0;
  std::int16_t minor = 0;

  bool operator==(const ProcessorVersion&) const = default;
};

/// Where an import takes amounts from.
enum class AmountsPath : std::uint8_t { None, Transactions, Reports };

/// What an import asks QuickBooks for.
struct RecordedImport {
  YearMonth start;  ///< first of the twelve months of amounts
  QBKRNproduct product = QBKRN_ALD;
  AmountsPath amounts = AmountsPath::None;
  bool expenses = false;
  bool income = false;
  bool pastPerformance = false;
  std::optional<std::int16_t> fiscalMonth = {};  ///< 1 to 12, if it is not the company's own

  bool operator==(const RecordedImport&) const = default;
};

/// The imports that a recording of whole books has the answers to: of any twelve months from the first to the
/// last, into plans that begin in `planStart`.
struct RecordedSpan {
  YearMonth from;
  YearMonth to;
  YearMonth planStart;

  bool operator==(const RecordedSpan&) const = default;
};

/// What the first line of a recording says:
///
///     {"exchange":1,"company":"...","major":2,"minor":0,
///      "presented":{"major":1,"minor":1},
///      "import":{"start":"2002-01","product":"ald","amounts":"transactions",
///                "expenses":true,"income":true,"past_performance":false,"fiscal_month":7},
///      "span":{"from":"2001-01","to":"2002-12","plan_start":"2003-01"}}
///
/// The last three members and the fiscal month are optional. A recording has been made of one import or, with
/// a span, of many.
struct ExchangeHeader {
  std::string company;                             ///< its path
  ProcessorVersion processor;                      ///< the processor's own version
  std::optional<ProcessorVersion> presented = {};  ///< the version that the import was shown instead
  std::optional<RecordedImport> import = {};
  std::optional<RecordedSpan> span = {};
};

/// Returns the first line of a recording, with its line end.
std::string ExchangeHeaderLine(const ExchangeHeader& header);

/// Reads the first line of a recording. Throws Error -2147467259, which describes the fault, if a member is
/// missing or malformed.
ExchangeHeader ReadExchangeHeader(const RecordedObject& line);

}  // namespace krnqb
