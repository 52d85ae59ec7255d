#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "company/records/store.h"

namespace krnqb::sample_company {

/// Optional features of a generated company.
struct CompanyFeatures {
  bool billableExpenses = true;  ///< purchase lines invoiced later, most exactly, some with a markup
  bool inventory = true;         ///< inventory items, with a cost of sale
  bool purchasedGroups = true;   ///< item groups on bills, checks and charges
  bool parentPostings = true;    ///< postings to parent accounts
  bool unpostedExpenses = true;  ///< an expense account with a balance but no postings
  bool discounts = true;         ///< discount items on invoices and sales receipts
  bool accountNumbers = false;   ///< accounts are shown with numbers
};

/// Minimum and maximum values of the settings.
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
  std::int64_t customers = 60;        ///< including jobs
  std::int64_t transactions = 2'000;  ///< of all five kinds and all years
  std::int16_t firstYear = 2001;
  std::int16_t lastYear = 2002;
  std::uint64_t seed = 1;
  std::string processorVersion = "1.1";  ///< "1.0", "1.1" or "2.0"
  CompanyFeatures features;
};

/// The size of a generated company.
struct GeneratorSummary {
  std::vector<company::RecordCount> records;
  std::int64_t transactionLines = 0;  ///< including lines inside groups, but not the groups themselves
  std::uintmax_t fileSize = 0;        ///< in bytes
};

/// Creates a company file with a realistic synthetic company: accounts of every type on three levels, items
/// of every kind, and bills, checks, charges, invoices and sales receipts over whole calendar years, busier
/// in spring and before Christmas and growing from year to year. The same settings generate the same records
/// on any machine.
///
/// An account's balance is the sum of its opening balance and postings; all balances sum to zero. A top-level
/// expense account without sub-accounts that has postings has some in every year with transactions. The
/// company has no sales tax.
///
/// Throws Error 5 if a setting is out of bounds, Error 58 if the file exists, which is then unchanged, and
/// `company::company_error::cannotOpen` or `unexpected` if it cannot be written, and "interrupted" soon after
/// `interrupted` returns true; no file is left then.
GeneratorSummary GenerateCompany(const std::filesystem::path& file, const GeneratorSettings& settings,
                                 company::Interruption interrupted = {});

}  // namespace krnqb::sample_company
