#include "cli/doctor/company_checks.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "cli/exchange/company_file.h"
#include "company/check.h"
#include "plan_file/headings.h"
#include "qbxml/request_catalogue.h"
#include "support/date.h"
#include "support/number_text.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

using company::TransactionChoice;

class CompanyChecks {
 public:
  CompanyChecks(const CompanyChoice& choice, const InterruptWatch& interrupts,
                const Surroundings& surroundings, Checkup& checkup)
      : choice_(choice), interrupts_(interrupts), surroundings_(surroundings), checkup_(checkup) {}

  std::optional<CheckedCompany> Run() {
    if (!Open()) {
      checkup_.Omit({"integrity", "versions", "fiscal-month", "months", "accounts"},
                    "the company cannot be opened");
      return std::nullopt;
    }
    if (!CheckIntegrity()) {
      checkup_.Omit({"versions", "fiscal-month", "months", "accounts"}, "the company is damaged");
      return std::nullopt;
    }
    const bool answers = CheckVersions();
    CheckFiscalMonth();
    if (answers) return std::move(company_);
    checkup_.Omit({"months", "accounts"}, "the company's version is too old");
    return std::nullopt;
  }

 private:
  bool Open() {
    try {
      ImportCommand options;
      static_cast<CompanyChoice&>(options) = choice_;
      const ImportSource source = OpenImportSource(options, interrupts_, surroundings_);
      if (choice_.companyFile)
        company_.file = OpenCompany(*choice_.companyFile, company::FileAccess::ReadOnly, interrupts_);
      company_.session = std::make_unique<CompanySession>(source, interrupts_);
      majorVersion_ = source.majorVersion;
      company_.reports = majorVersion_ == 2;
      const XmlElement answer = company_.session->Ask(request_number::company);
      const auto textOf = [&](const std::string& path) {
        const XmlElement element = answer.Select(path);
        return element ? element.Text() : std::string();
      };
      fiscalMonth_ = textOf("//CompanyRet/FirstMonthFiscalYear");
      checkup_.Ok("company",
                  fmt::format("{} opens: {}", NameOf(choice_), textOf("//CompanyRet/CompanyName")));
      return true;
    } catch (...) {
      checkup_.FailCaught("company", OpeningAdvice());
      return false;
    }
  }

  static std::string NameOf(const CompanyChoice& choice) {
    if (choice.companyFile) return *choice.companyFile;
    const std::string path = choice.quickBooks.value_or("");
    return path.empty() ? "the company in QuickBooks" : fmt::format("{} in QuickBooks", path);
  }

  std::string_view OpeningAdvice() const {
    return choice_.companyFile ? "run krnqb company check"
                               : "open the company in QuickBooks, and let it answer other programs";
  }

  // Of a company file, every page and record.
  bool CheckIntegrity() {
    if (!choice_.companyFile) {
      checkup_.Omit({"integrity"}, "only company files can be checked for damage");
      return true;
    }
    try {
      return ReportIntegrity(
          company::CheckCompany(PathFrom(*choice_.companyFile), FollowInterrupts(interrupts_)));
    } catch (...) {
      checkup_.FailCaught("integrity", "run krnqb company check");
      return false;
    }
  }

  bool ReportIntegrity(const company::CheckReport& report) {
    if (report.findingCount > 0) {
      checkup_.Fail("integrity",
                    fmt::format("{} finding{}: {}", report.findingCount, report.findingCount == 1 ? "" : "s",
                                report.findings.front()),
                    "restore a copy of the file; krnqb company check lists all damage");
      return false;
    }
    const std::string counts =
        fmt::format("{} pages, {} records and {} postings", report.pages, report.records, report.postings);
    if (report.checksums) {
      checkup_.Ok("integrity", fmt::format("{} are whole", counts));
    } else {
      checkup_.Warn("integrity", fmt::format("{} are whole, but have no checksums", counts),
                    "add checksums with krnqb company check --fix, so that damage is noticed");
    }
    return true;
  }

  // Returns whether an import can ask the company at all.
  bool CheckVersions() {
    std::vector<std::string> versions;
    try {
      const XmlElement host = company_.session->Ask(request_number::host);
      for (const XmlElement& version : host.SelectAll("//SupportedQBXMLVersion"))
        versions.push_back(version.Text());
    } catch (...) {
      checkup_.FailCaught("versions", "update QuickBooks, or try again");
      return false;
    }
    const std::string answers = fmt::format("the company answers qbXML {}", fmt::join(versions, ", "));
    const auto has = [&](std::string_view version) {
      return std::ranges::find(versions, version) != versions.end();
    };
    if (!has("1.1")) {
      checkup_.Fail("versions", fmt::format("{}, and imports ask with 1.1", answers),
                    choice_.companyFile
                        ? "load its documents into a company of krnqb company new --processor 1.1"
                        : "update QuickBooks");
      return false;
    }
    if (majorVersion_ == 0) company_.reports = has("2.0");
    checkup_.Ok("versions", fmt::format("{}; amounts come from {}", answers,
                                        company_.reports ? "reports" : "transactions"));
    return true;
  }

  void CheckFiscalMonth() {
    if (const auto month = MonthNumber(fiscalMonth_)) {
      checkup_.Ok("fiscal-month", fmt::format("the fiscal year begins in {}", EnglishMonthName(*month)));
    } else if (fiscalMonth_.empty()) {
      checkup_.Fail("fiscal-month", "the company does not state the first month of its fiscal year",
                    "import with --fiscal-month MONTH");
    } else {
      checkup_.Fail("fiscal-month",
                    fmt::format("the first month of the fiscal year, \"{}\", is not an English month name",
                                fiscalMonth_),
                    "import with --fiscal-month MONTH");
    }
  }

  const CompanyChoice& choice_;
  const InterruptWatch& interrupts_;
  const Surroundings& surroundings_;
  Checkup& checkup_;
  CheckedCompany company_;
  std::int16_t majorVersion_ =
      0;  // that the processor states; 0 if it does not decide where amounts come from
  std::string fiscalMonth_;
};

std::string MonthText(const YearMonth& month) {
  return fmt::format("{:04}-{:02}", month.year, month.month);
}

// "January 2002 and March 2002", or the number of them.
std::string NamesOf(const std::vector<YearMonth>& months) {
  constexpr std::size_t most = 3;
  if (months.size() > most) return fmt::format("{} of the twelve months", months.size());
  std::vector<std::string> names;
  names.reserve(months.size());
  for (const YearMonth& month : months) names.push_back(plan_file::MonthOfYear(month));
  return fmt::format("{}", fmt::join(names, " and "));
}

// The months of twelve that have no transaction.
std::vector<YearMonth> EmptyMonths(const TwelveMonths& year, const std::vector<std::string>& found) {
  std::vector<YearMonth> empty;
  for (std::int16_t number = 1; number <= 12; ++number) {
    const YearMonth month = year.Month(number);
    if (std::ranges::find(found, MonthText(month)) == found.end()) empty.push_back(month);
  }
  return empty;
}

void ReportMonths(const company::CompanyFile& file, const TwelveMonths& year, bool reports,
                  Checkup& checkup) {
  const YearMonth last = year.Last();
  const auto found = file.TransactionMonths(MonthText(year.First()) + "-01",
                                            fmt::format("{}-{:02}", MonthText(last), DaysInMonth(last)),
                                            reports ? TransactionChoice::All : TransactionChoice::Requested);
  const std::vector<YearMonth> empty = EmptyMonths(year, found);
  const std::string period = plan_file::TwelveMonthsText(year.First());
  if (empty.empty()) {
    checkup.Ok("months", fmt::format("every month from {} has transactions", period));
  } else if (!found.empty()) {
    checkup.Warn("months",
                 fmt::format("{} from {} {} no transaction that an import reads", NamesOf(empty), period,
                             empty.size() == 1 ? "has" : "have"),
                 "make sure that nothing is missing, or choose other months with --import-start YYYY-MM");
  } else {
    const auto days = file.TransactionDays();
    checkup.Warn("months", fmt::format("no month from {} has a transaction that an import reads", period),
                 days ? fmt::format("choose other months with --import-start YYYY-MM (the company has "
                                    "transactions from {} to {})",
                                    days->first, days->last)
                      : std::string("load the company's transactions with krnqb company load"));
  }
}

}  // namespace

std::optional<CheckedCompany> CheckCompany(const CompanyChoice& choice, const InterruptWatch& interrupts,
                                           const Surroundings& surroundings, Checkup& checkup) {
  return CompanyChecks(choice, interrupts, surroundings, checkup).Run();
}

void CheckMonths(const CheckedCompany& company, const plan_file::PlanFile* plan, Checkup& checkup) {
  const auto start = plan != nullptr ? plan->Start() : std::nullopt;
  if (!company.file) {
    checkup.Omit({"months"}, "only company files are searched for transactions");
  } else if (plan == nullptr) {
    checkup.Omit({"months"}, "the plan cannot be opened");
  } else if (!start) {
    checkup.Omit({"months"}, "the plan's first month is unknown");
  } else {
    try {
      const YearMonth first{.year = static_cast<std::int16_t>(start->year - 1), .month = start->month};
      ReportMonths(*company.file, TwelveMonths(first), company.reports, checkup);
    } catch (...) {
      checkup.FailCaught("months", "run krnqb company check");
    }
  }
}

}  // namespace krnqb::cli
