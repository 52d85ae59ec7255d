#include "sample_company/generator.h"

#include <fmt/format.h>

#include <system_error>
#include <utility>

#include "company/file.h"
#include "krnqb/error.h"
#include "sample_company/business.h"
#include "sample_company/list_text.h"

namespace krnqb::sample_company {
namespace {

constexpr std::int16_t fiscalMonth = 1;  // transactions are spread over calendar years

void CheckRange(std::string_view what, std::int64_t value, std::int64_t least, std::int64_t most) {
  if (value >= least && value <= most) return;
  throw Error(error_number::invalidProcedureCall,
              fmt::format("A generated company must have {} to {} {}, not {}.", least, most, what, value));
}

void CheckSettings(const GeneratorSettings& settings) {
  using Bounds = GeneratorBounds;
  CheckRange("accounts", settings.accounts, Bounds::leastAccounts, Bounds::mostAccounts);
  CheckRange("items", settings.items, Bounds::leastItems, Bounds::mostItems);
  CheckRange("customers", settings.customers, Bounds::leastCustomers, Bounds::mostCustomers);
  CheckRange("transactions", settings.transactions, 0, Bounds::mostTransactions);
  for (const std::int16_t year : {settings.firstYear, settings.lastYear}) {
    if (year >= Bounds::earliestYear && year <= Bounds::latestYear) continue;
    throw Error(error_number::invalidProcedureCall,
                fmt::format("The years of a generated company must be from {} to {}, not {}.",
                            Bounds::earliestYear, Bounds::latestYear, year));
  }
  if (settings.lastYear < settings.firstYear) {
    throw Error(error_number::invalidProcedureCall, fmt::format("The last year, {}, is before the first, {}.",
                                                                settings.lastYear, settings.firstYear));
  }
  CheckRange("years", settings.lastYear - settings.firstYear + 1, 1, Bounds::mostYears);
}

// List entries are few, so they are parsed from their text like those of a loaded document.
void StoreLists(const Company& company, const company::RecordReceiver& receive) {
  company::ElementTree tree;
  const auto store = [&](const std::string& xml) {
    company::RecordText text;
    company::WriteRecordText(xml, text);
    company::CompanyRecord record = company::ReadRecord(tree.Read(text.xml));
    record.text = std::move(text);
    receive(std::move(record));
  };
  store(CompanyText(company.settings));
  store(PreferencesText(company.settings));
  const std::vector<Cents> totals = company.accounts.TotalBalances();
  for (std::size_t account = 0; account < company.accounts.Size(); ++account) {
    store(AccountText(company.accounts, account, totals[account], company.settings.features.accountNumbers));
  }
  for (std::size_t item = 0; item < company.items.items.size(); ++item) {
    store(ItemText(company.items, item, company.accounts, company.people));
  }
}

// Transactions come first, because the lists contain the final balances and stock.
std::int64_t StoreCompany(const GeneratorSettings& settings, const company::RecordReceiver& receive) {
  Random random(settings.seed);
  const std::vector<MonthPlan> months =
      PlanMonths(settings.firstYear, settings.lastYear, settings.transactions);
  Company company(settings, FewestInAYear(months), random);
  const std::int64_t years = settings.lastYear - settings.firstYear + 1;
  PostOpeningBalances(company, settings.transactions / years, random);
  const std::int64_t lines = Business(company, months, random).Run(receive);
  PostClosingBalances(company);
  StoreLists(company, receive);
  return lines;
}

GeneratorSummary Fill(company::CompanyFile company, const GeneratorSettings& settings) {
  GeneratorSummary summary;
  company.Store("the generated company", [&](const company::RecordReceiver& receive) {
    summary.transactionLines = StoreCompany(settings, receive);
  });
  summary.records = company.Info().records;
  return summary;
}

}  // namespace

GeneratorSummary GenerateCompany(const std::filesystem::path& file, const GeneratorSettings& settings,
                                 company::Interruption interrupted) {
  CheckSettings(settings);
  company::CompanyFile company = company::CompanyFile::Create(
      file, settings.companyName, fiscalMonth, settings.processorVersion, std::move(interrupted));
  const std::filesystem::path made = company.Path();
  try {
    GeneratorSummary summary = Fill(std::move(company), settings);
    summary.fileSize = std::filesystem::file_size(made);
    return summary;
  } catch (...) {
    std::error_code ignored;
    std::filesystem::remove(made, ignored);
    throw;
  }
}

}  // namespace krnqb::sample_company
