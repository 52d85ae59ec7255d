#include "cli/import/skipped_journal.h"

#include <fmt/format.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "cli/console/failure.h"
#include "cli/import/skipped_amounts.h"

namespace krnqb::cli {
namespace {

using Json = nlohmann::ordered_json;

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
  if (notice.skipped) line["reason"] = ReasonWord(notice.skipped->reason);
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
    line["amount"] = skipped.amount;
  }
  return line;
}

}  // namespace

void WriteJournal(const std::string& file, const ImportReport& report) {
  std::ofstream lines(file, std::ios::binary | std::ios::trunc);
  for (const Notice& notice : report.Journal()) {
    lines << LineOf(notice).dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
  }
  lines.close();
  if (!lines) {
    throw CommandFailure("import failed", fmt::format("the journal {} cannot be written", file),
                         "choose a file in a folder that you can write to");
  }
}

}  // namespace krnqb::cli
