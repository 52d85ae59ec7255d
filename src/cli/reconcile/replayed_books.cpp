#include "cli/reconcile/replayed_books.h"

#include <fmt/format.h>

#include <utility>

#include "cli/console/attempt.h"
#include "cli/exchange/company_file.h"
#include "cli/exchange/scratch_folder.h"
#include "company/records/document.h"
#include "profit_and_loss/merging.h"
#include "profit_and_loss/reading.h"

namespace krnqb::cli {
namespace {

bool IsReport(const std::string& answer) {
  return answer.find("<GeneralSummaryReportQueryRs") != std::string::npos;
}

std::string NameOfAnswer(std::size_t index) {
  return fmt::format("answer {} of the recording", index + 1);
}

void ReadAnswers(const std::vector<std::string>& answers, const company::RecordReceiver& receive) {
  for (std::size_t index = 0; index < answers.size(); ++index) {
    if (IsReport(answers[index])) continue;
    company::ReadDocument(NameOfAnswer(index), BytesOf(answers[index]), receive,
                          [](std::string_view /*element*/) {});
  }
}

}  // namespace

reconcile::PostedEntries PostAnswers(const std::vector<std::string>& answers, const YearMonth& start,
                                     reconcile::WorkTable& table, reconcile::LineKeys& keys,
                                     const InterruptWatch& interrupts) {
  return Attempt(
      "adding up the recorded transactions failed", "free some space in the folder for temporary files", [&] {
        const ScratchFolder folder;
        company::CompanyFile company = company::CompanyFile::Create(
            folder.Path() / "recorded.qbw", "Recorded", 1, "1.1", FollowInterrupts(interrupts));
        company.Store("the recording",
                      [&](const company::RecordReceiver& receive) { ReadAnswers(answers, receive); });
        return reconcile::ReadPostedEntries(company, start, table, keys);
      });
}

std::optional<profit_and_loss::ProfitAndLoss> ReportedBooks(const std::vector<std::string>& answers) {
  std::vector<profit_and_loss::ProfitAndLoss> reports;
  for (std::size_t index = 0; index < answers.size(); ++index) {
    if (!IsReport(answers[index])) continue;
    reports.push_back(profit_and_loss::ReadProfitAndLoss(NameOfAnswer(index), answers[index]));
  }
  if (reports.empty()) return std::nullopt;
  return profit_and_loss::MergeStatements(std::move(reports));
}

}  // namespace krnqb::cli
