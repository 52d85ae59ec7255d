#include "cli/reconcile/reconciling.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "cli/console/attempt.h"
#include "cli/exchange/company_file.h"
#include "cli/import/settings.h"
#include "cli/import/source.h"
#include "cli/reconcile/repeated_import.h"
#include "cli/reconcile/replayed_books.h"
#include "files/reading.h"
#include "plan_file/content.h"
#include "plan_file/views/row_figures.h"
#include "profit_and_loss/merging.h"
#include "profit_and_loss/reading.h"
#include "reconcile/entry_causes.h"
#include "reconcile/plan_causes.h"
#include "reconcile/reconciliation.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

using profit_and_loss::ProfitAndLoss;

constexpr std::string_view failed = "reconciling failed";

bool Has(const plan_file::ImportFacts& facts, std::string_view option) {
  return std::ranges::find(facts.options, option) != facts.options.end();
}

std::optional<ProfitAndLoss> ReadStatements(const std::vector<std::string>& documents) {
  if (documents.empty()) return std::nullopt;
  const auto read = [](const std::string& document) {
    return Attempt(failed, "check the path and its permissions",
                   [&] { return files::ReadDocument(PathFrom(document), InterruptRequested); });
  };
  std::vector<std::string> texts;
  std::ranges::transform(documents, std::back_inserter(texts), read);
  return Attempt(failed, "correct the document, or leave it out", [&] {
    std::vector<ProfitAndLoss> statements;
    for (std::size_t index = 0; index < documents.size(); ++index) {
      statements.push_back(profit_and_loss::ReadProfitAndLoss(documents[index], texts[index]));
    }
    return std::optional(profit_and_loss::MergeStatements(std::move(statements)));
  });
}

std::vector<std::string> FindingsOf(const ProfitAndLoss& statement) {
  std::vector<std::string> findings = statement.findings;
  if (statement.basis == "Cash") {
    findings.push_back(fmt::format(
        "{} is on the cash basis, but imports are on the accrual basis: unpaid bills and invoices differ",
        statement.document));
  }
  return findings;
}

class Reconciling {
 public:
  Reconciling(const ReconcileOptions& options, std::optional<ReconciledPlan> plan,
              const InterruptWatch& interrupts, const Surroundings& surroundings)
      : options_(options), interrupts_(interrupts), surroundings_(surroundings) {
    if (!plan) return;
    plan_ = std::move(plan->plan);
    lastImport_ = std::move(plan->lastImport);
  }

  ReconcileResult Run() {
    const std::optional<ProfitAndLoss> statement = ReadStatements(options_.statements);
    if (plan_ == nullptr) ReadPlan();
    ImportCommand command = Command();
    const ImportSource source = OpenImportSource(command, interrupts_, surroundings_);
    ShapeAfterRecording(command, source);
    const ImportSettings settings = SettleImport(command, *plan_);
    start_ = settings.importStart;
    const plan_file::PlanContent content = plan_file::ReadPlanContent(*plan_);
    const std::vector<std::string> answers =
        RepeatImport(settings, source, plan_, !options_.companyFile, interrupts_, surroundings_, booked_);
    const std::optional<reconcile::BooksPeriods> books = AddTheBooks(statement, answers);
    AddPlan(table_, PlanAmounts(content, settings), booked_.Rows());
    ReconcileResult result{.planFile = options_.planFile,
                           .source = source.description,
                           .books = booksText_,
                           .reconciliation = {}};
    result.reconciliation =
        Summarize(table_, start_, books,
                  options_.months ? reconcile::LinePeriods::Months : reconcile::LinePeriods::Years);
    if (posted_) result.reconciliation.balances = posted_->balances;
    if (statement) result.findings = FindingsOf(*statement);
    result.agrees = Agrees(result.reconciliation, options_.tolerance);
    return result;
  }

 private:
  void ReadPlan() {
    plan_ = Attempt([&] { return plan_file::PlanFile::Open(PathFrom(options_.planFile)); });
    lastImport_ =
        Attempt(failed, "remove the plan's damaged history", [&] { return ReadLastImport(plan_->Path()); });
  }

  ImportCommand Command() const {
    ImportCommand command;
    command.companyFile = options_.companyFile;
    command.quickBooks = options_.quickBooks;
    command.replayFile = options_.replayFile;
    command.planFile = options_.planFile;
    command.expenses = true;
    command.income = true;
    command.balances = BalImport_All;
    command.importStart = options_.importStart;
    if (lastImport_) RepeatOptions(command, lastImport_->facts);
    return command;
  }

  // Repeats what the last import was asked, as far as the user does not ask for something else and the plan
  // does not say it.
  void RepeatOptions(ImportCommand& command, const plan_file::ImportFacts& facts) const {
    if (!command.importStart) command.importStart = plan_file::PlanStartFromText(facts.periodFrom);
    if (!plan_->Product()) command.product = plan_file::ProductFromText(facts.product);
    if (!plan_->Start()) command.planStart = plan_file::PlanStartFromText(facts.planStart);
    if (options_.replayFile) return;
    if (Has(facts, "--amounts-from transactions")) command.amountsFrom = AmountsPath::Transactions;
    if (options_.quickBooks && Has(facts, "--amounts-from reports"))
      command.amountsFrom = AmountsPath::Reports;
    for (std::int16_t month = 1; month <= cSubtotals::monthCount; ++month) {
      if (Has(facts, fmt::format("--fiscal-month {}", month))) command.fiscalMonth = month;
    }
  }

  // A recording has the answers to one import only.
  static void ShapeAfterRecording(ImportCommand& command, const ImportSource& source) {
    if (source.recording == nullptr) return;
    const std::optional<RecordedImport>& recorded = source.recording->Header().import;
    if (!recorded) return;
    command.expenses = recorded->expenses;
    command.income = recorded->income;
    command.fiscalMonth = recorded->fiscalMonth;
    if (!command.importStart) command.importStart = recorded->start;
  }

  reconcile::PlanAmounts PlanAmounts(const plan_file::PlanContent& content,
                                     const ImportSettings& settings) const {
    using plan_file::FigureSource;
    reconcile::PlanAmounts plan;
    plan.product = settings.product;
    const bool onlyPlanned = lastImport_ && Has(lastImport_->facts, "--balances planned");
    plan.rows = RowFiguresOf(content, settings.product,
                             onlyPlanned ? FigureSource::GrowthFormulas : FigureSource::ActualCells);
    if (!lastImport_) return plan;
    const plan_file::ImportFacts& facts = lastImport_->facts;
    const bool amounts = !Has(facts, "--balances none");
    plan.lastImport = {.samePeriod = facts.periodFrom == plan_file::PlanStartText(start_),
                       .expenses = amounts && Has(facts, "--expenses"),
                       .income = amounts && Has(facts, "--income"),
                       .asWritten = lastImport_->asWritten,
                       .rows = facts.rows};
    return plan;
  }

  // Returns how finely the books are known; nullopt if they are not.
  std::optional<reconcile::BooksPeriods> AddTheBooks(const std::optional<ProfitAndLoss>& statement,
                                                     const std::vector<std::string>& answers) {
    const bool recordedReports = !options_.companyFile && booked_.FromReports();
    if (options_.companyFile) {
      posted_ = PostCompany(*options_.companyFile);
    } else if (!recordedReports) {
      posted_ = PostAnswers(answers, start_, table_, keys_, interrupts_);
    }
    std::optional<reconcile::BooksPeriods> periods;
    if (statement) {
      booksText_ = statement->document;
      periods = Add(*statement);
    } else if (recordedReports) {
      if (const auto reported =
              Attempt(failed, "record the exchange again", [&] { return ReportedBooks(answers); })) {
        booksText_ = options_.replayFile ? "the recorded reports" : "the reports of QuickBooks";
        periods = Add(*reported);
      }
    } else if (options_.companyFile) {
      booksText_ = "the company's own transactions";
      reconcile::TakeLedgerAsBooks(table_);
      periods = reconcile::BooksPeriods::Months;
    }
    if (posted_) ExplainEntries(table_, booked_, *posted_);
    return periods;
  }

  reconcile::BooksPeriods Add(const ProfitAndLoss& statement) {
    return Attempt(failed, "give a profit and loss of these twelve months with --profit-and-loss", [&] {
      return AddBooks(table_, statement, start_, posted_ ? &posted_->entries : nullptr);
    });
  }

  reconcile::PostedEntries PostCompany(const std::string& companyFile) {
    const company::CompanyFile company = OpenCompany(companyFile, company::FileAccess::ReadOnly, interrupts_);
    return Attempt(failed, "run krnqb company check",
                   [&] { return reconcile::ReadPostedEntries(company, start_, table_, keys_); });
  }

  const ReconcileOptions& options_;
  const InterruptWatch& interrupts_;
  const Surroundings& surroundings_;
  std::shared_ptr<plan_file::PlanFile> plan_;
  std::optional<KnownImport> lastImport_;
  YearMonth start_;
  reconcile::WorkTable table_;
  reconcile::LineKeys keys_;
  reconcile::BookedEntries booked_{table_, keys_};
  std::optional<reconcile::PostedEntries> posted_;
  std::string booksText_;
};

}  // namespace

ReconcileResult Reconcile(const ReconcileOptions& options, std::optional<ReconciledPlan> plan,
                          const InterruptWatch& interrupts, const Surroundings& surroundings) {
  return Reconciling(options, std::move(plan), interrupts, surroundings).Run();
}

}  // namespace krnqb::cli
