#include "cli/import/notices/skipped_journal.h"

#include <fmt/format.h>

#include "cli/console/attempt.h"
#include "cli/console/interrupt_watch.h"
#include "cli/console/json_text.h"
#include "cli/import/notices/skipped_amounts.h"
#include "files/fault.h"
#include "files/output_file.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

std::string_view KindWord(NoticeKind kind) {
  switch (kind) {
    case NoticeKind::AccountInSeveralRows:
      return "account-in-several-rows";
    case NoticeKind::PastPerformanceEnded:
      return "past-performance-ended";
    default:
      return "skipped";
  }
}

Json LineOf(const Notice& notice) {
  Json line{{"kind", KindWord(notice.kind)}};
  if (notice.skipped) {
    line["reason"] = ReasonWord(notice.skipped->reason);
    line["meaning"] = MeaningWord(notice.skipped->kind);
  }
  line["operation"] = OperationName(notice.place.operation);
  if (notice.place.request) line["request"] = *notice.place.request;
  if (!notice.place.fromDate.empty()) line["from"] = notice.place.fromDate;
  if (!notice.place.toDate.empty()) line["to"] = notice.place.toDate;
  if (notice.place.pastPeriod) line["past_period"] = *notice.place.pastPeriod;
  if (!notice.description.empty()) line["name"] = notice.description;
  if (notice.skipped) {
    const Skipped& skipped = *notice.skipped;
    if (!skipped.transactionId.empty()) line["transaction"] = skipped.transactionId;
    if (!skipped.transactionDate.empty()) line["date"] = skipped.transactionDate;
    line["source"] = skipped.source;
    if (!skipped.account.empty()) line["account"] = skipped.account;
    if (!skipped.accountName.empty()) line["account_name"] = skipped.accountName;
    if (!skipped.customer.empty()) line["customer"] = skipped.customer;
    if (!skipped.customerName.empty()) line["customer_name"] = skipped.customerName;
    line["amount"] = skipped.amount;
  }
  return line;
}

}  // namespace

void WriteJournal(const std::string& file, const ImportReport& report) {
  constexpr std::string_view failed = "writing the journal failed";
  files::SystemFileOperations operations;
  Attempt(failed, "choose a file in a folder that you can write to", [&] {
    files::OutputFile lines(PathFrom(file), InterruptRequested, operations);
    for (const Notice& notice : report.Journal()) lines.Stream() << JsonLine(LineOf(notice)) << '\n';
    const std::error_code failure = lines.Finish();
    if (failure) {
      throw CommandFailure(
          failed, fmt::format("{} could not be written completely: {}", file, files::ReasonText(failure)),
          fmt::format("{}, or import without --journal", files::FileAdvice(failure)));
    }
  });
}

}  // namespace krnqb::cli
