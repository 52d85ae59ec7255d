#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "company/records/store.h"

namespace krnqb::sample_company {

/// What a generated company has beyond plain purchases and sales.
struct CompanyFeatures {
  bool billableExpenses = true;  ///< purchase lines for customers, invoiced later: most of them exactly, some
                                 ///< marked up
  bool inventory = true;         ///< items kept in stock, with a cost of their sale
  bool purchasedGroups = true;   ///< item groups on bills, checks and charges
  bool parentPostings = true;    ///< postings to accounts that have sub-accounts
  bool unpostedExpenses = true;  ///< an expense account whose balance comes from no posting
  bool discounts = true;         ///< discount items on invoices and sales receipts
  bool accountNumbers = false;   ///< the preferences show account numbers
};

/// Least and greatest values of the settings.
struct GeneratorBounds {
  static constexpr std::int64_t leastAccounts = 43;
  static constexpr std::int64_t mostAccounts = 10'000;
  static constexpr std::int64_t leastItems = 16;
  static constexpr std::int64_t mostItems = 100'000;
  static constexpr std::int64_t leastCustomers = 1;
  static constexpr std::int64_t mostCustomers = 100'000;
  static constexpr std::int64_t mostTransactions = 5'000'000;
  static constexpr std::int16_t earliestYear = 1980;
  static constexpr std::int16_t latestYear = 2099;
  static constexpr std::int16_t mostYears = 50;
};

struct GeneratorSettings {
  std::string companyName = "Larch Valley Supply";
  std::int64_t accounts = 120;
  std::int64_t items = 80;
  std::int64_t customers = 60;        ///< their jobs included
  std::int64_t transactions = 2'000;  ///< of all five kinds and all years together
  std::int16_t firstYear = 2001;
  std::int16_t lastYear = 2002;
  std::uint64_t seed = 1;
  std::string processorVersion = "1.1";  ///< "1.0", "1.1" or "2.0"
  CompanyFeatures features;
};

/// What was generated.
struct GeneratorSummary {
  std::vector<company::RecordCount> records;
  std::int64_t transactionLines = 0;  ///< those inside groups included, the groups themselves not
  std::uintmax_t fileSize = 0;        ///< in bytes
};

/// Makes a company file with a believable synthetic company: accounts of every type three levels deep, items
/// of every kind, and bills, checks, charges, invoices and sales receipts over whole calendar years, busier
/// in spring and before Christmas and growing from year to year. The same settings give the same records, on
/// any machine.
///
/// An account's balance is its opening balance and all its postings, and all balances together come to zero.
/// A top-level expense account without sub-accounts that is posted to at all is posted to in every year that
/// has transactions. The company has no sales tax.
///
/// Error 5 when a setting is outside its bounds; 58 when there is a file of that name, which is left as it
/// is; `company::company_error::cannotOpen` or `unexpected` when it cannot be written: no file is left then.
GeneratorSummary GenerateCompany(const std::filesystem::path& file, const GeneratorSettings& settings);

}  // namespace krnqb::sample_company
