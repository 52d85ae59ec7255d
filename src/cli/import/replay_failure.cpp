#include "cli/import/replay_failure.h"

#include <fmt/format.h>

#include <charconv>
#include <optional>

#include "cli/import/asked_data.h"
#include "cli/import/notices/request_names.h"
#include "plan_file/headings.h"
#include "qbxml/request_catalogue.h"

namespace krnqb::cli {
namespace {

// Returns what is between the first `begin` and the next `end`; an empty text without them.
std::string_view Between(std::string_view text, std::string_view begin, std::string_view end) {
  const std::size_t found = text.find(begin);
  if (found == std::string_view::npos) return {};
  text.remove_prefix(found + begin.size());
  return text.substr(0, text.find(end));
}

std::string DateIn(std::string_view request, std::string_view transactionsElement,
                   std::string_view reportsElement) {
  const std::string_view date = Between(request, transactionsElement, "<");
  return std::string(date.empty() ? Between(request, reportsElement, "<") : date);
}

// Reports have no requestID; they are distinguished by their accounts.
std::optional<std::int32_t> NumberOf(std::string_view request) {
  const std::string_view id = Between(request, "requestID=\"", "\"");
  std::int32_t number = 0;
  if (std::from_chars(id.data(), id.data() + id.size(), number).ec == std::errc()) return number;
  if (request.find("<GeneralSummaryReportQueryRq>") == std::string_view::npos) return std::nullopt;
  constexpr std::string_view filter = "<AccountTypeFilter>";
  for (const std::int32_t report :
       {request_number::incomeByMonth, request_number::expenseByMonth, request_number::costByMonth}) {
    if (Between(request, filter, "<") == Between(BuildRequest(report, {}, {}), filter, "<")) return report;
  }
  return request_number::balanceSheetByType;
}

Place PlaceOf(const std::string& request) {
  Place place;
  place.request = NumberOf(request);
  place.fromDate = DateIn(request, "<FromTxnDate>", "<FromReportDate>");
  place.toDate = DateIn(request, "<ToTxnDate>", "<ToReportDate>");
  return place;
}

std::string HeldText(const ExchangeHeader& header, const RecordedImport& asked) {
  if (header.span) {
    return fmt::format("it holds imports of {} to {} into plans from {}, but the import asks for {}",
                       plan_file::MonthOfYear(header.span->from), plan_file::MonthOfYear(header.span->to),
                       plan_file::MonthOfYear(header.span->planStart), AskedText(asked));
  }
  const std::optional<RecordedImport>& recorded = header.import;
  if (!recorded)
    return fmt::format("it does not say what it was recorded for; the import asks for {}", AskedText(asked));
  if (*recorded == asked) return fmt::format("it was recorded for the same import, {}", AskedText(asked));
  return fmt::format("it holds {}, but the import asks for {}", AskedText(*recorded), AskedText(asked));
}

}  // namespace

std::optional<Failure> ReplayFailure(const ImportSettings& settings, const ImportSource& source) {
  if (source.recording == nullptr) return std::nullopt;
  const std::optional<std::string>& unanswered = source.recording->UnansweredRequest();
  if (!unanswered) return std::nullopt;
  const std::string held = HeldText(source.recording->Header(), AskedData(settings, source));
  return CommandFailure(
      "import failed",
      fmt::format("{} has no answer to {}: {}", source.description, RequestText(PlaceOf(*unanswered)), held),
      "give the options with which it was recorded, or record the company again; nothing was written");
}

}  // namespace krnqb::cli
