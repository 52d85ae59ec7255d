#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "krnqb/booking.h"
#include "krnqb/observer.h"

namespace krnqb::ledger {

/// What a ledger says about the import that wrote it. Empty texts are unknown.
struct LedgerFacts {
  std::string program = {};          ///< the version of the program that wrote it
  std::string when = {};             ///< local time, YYYY-MM-DDTHH:MM:SS
  std::string plan = {};             ///< absolute path of the plan
  std::string planDigest = {};       ///< of the version of the plan that has the ledger's cells
  std::string planVersion = {};      ///< "written", "unchanged" or "dry-run": what became of that version
  std::string company = {};          ///< path of the company file
  std::string companyName = {};      ///< the company's name
  std::string product = {};          ///< ald, bri or cor
  std::string planStart = {};        ///< YYYY-MM, as the next two
  std::string periodFrom = {};       ///< first month of the imported amounts
  std::string periodTo = {};         ///< last month
  std::vector<std::string> options;  ///< as on a command line, such as "--balances all"

  bool operator==(const LedgerFacts&) const = default;
};

/// The version of a plan that a ledger belongs to was written, was there already, or was not written by a dry
/// run.
namespace plan_version {
inline constexpr const char* written = "written";
inline constexpr const char* unchanged = "unchanged";
inline constexpr const char* dryRun = "dry-run";
}  // namespace plan_version

/// A sum, see `AmountSlot`.
struct LedgerSlot {
  std::int64_t id = 0;
  AmountGroup group = AmountGroup::Expenses;
  std::string name = {};
  std::int16_t number = 1;
  std::optional<std::int16_t> pastPeriod = {};
};

/// A transaction as one request answered it. A transaction may be read again for past performance.
struct LedgerDocument {
  std::int64_t id = 0;
  std::int32_t request = 0;
  std::optional<std::int16_t> pastPeriod = {};
  std::string transactionId = {};
  std::string date = {};
  std::string number = {};
  std::string party = {};
};

/// A line of a transaction, see `SourceLine`.
struct LedgerLine {
  std::int64_t number = 0;
  std::int64_t document = 0;
  std::int16_t month = 1;
  std::string lineId = {};
  std::string element = {};
  std::string customer = {};
  std::string account = {};
  std::string accountName = {};
  std::string item = {};
  std::string itemName = {};
  std::string amount = {};
  std::string quantity = {};
};

/// An amount that was added to a sum, see `Booking`.
struct LedgerBooking {
  std::int64_t id = 0;
  std::int64_t slot = 0;
  BookingRule rule = BookingRule::ChargedToExpense;
  double amount = 0;
  bool replaces = false;
  std::int64_t line = 0;  ///< 0 if it is not that of a line
  std::string account = {};
  std::string accountName = {};
  std::string text = {};
  std::optional<double> quantity = {};
  std::optional<double> averageCost = {};
  std::int64_t billedLine = 0;
  bool billedAgain = false;
  std::int32_t request = 0;
  std::string fromDate = {};
  std::string toDate = {};
};

/// An amount that was left out, see `Skipped`.
struct LedgerOmission {
  std::int64_t line = 0;  ///< 0 if it is not that of a line
  SkipReason reason = SkipReason::NoAccount;
  SkipKind kind = SkipKind::NotImported;
  std::optional<std::int16_t> pastPeriod = {};
  std::int32_t request = 0;
  std::string fromDate = {};
  std::string toDate = {};
  std::string source = {};
  std::string account = {};
  std::string accountName = {};
  std::string amount = {};
};

struct LedgerTerm {
  std::int64_t slot = 0;
  bool subtracted = false;

  bool operator==(const LedgerTerm&) const = default;
};

/// A cell that was written, see `WrittenCell`.
struct LedgerCell {
  std::int64_t id = 0;
  CellContent content = CellContent::Amount;
  std::string table = {};
  std::string block = {};
  std::string row = {};
  std::int32_t rowNumber = 1;
  std::int32_t column = 0;
  std::int16_t number = 0;
  std::string text = {};
  std::vector<LedgerTerm> terms = {};
};

}  // namespace krnqb::ledger
