#include "cli/plan/left_out_amounts.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "cli/console/attempt.h"
#include "cli/console/json_text.h"
#include "files/reading.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

std::string TextOf(const Json& line, const char* member) {
  return line.value(member, std::string());
}

std::string FirstTextOf(const Json& line, const char* member, const char* otherMember) {
  std::string text = TextOf(line, member);
  return text.empty() ? TextOf(line, otherMember) : text;
}

// "account-in-no-list" is "account in no list".
std::string Words(std::string word) {
  std::replace(word.begin(), word.end(), '-', ' ');
  return word;
}

std::string PeriodOf(const Json& line) {
  const std::string from = TextOf(line, "from");
  const std::string to = TextOf(line, "to");
  std::string period = from.empty() || from == to ? to : fmt::format("{} to {}", from, to);
  if (line.contains("past_period")) {
    period += fmt::format("{}past period {}", period.empty() ? "" : ", ", line["past_period"].get<int>());
  }
  return period;
}

void AddLine(const Json& line, spreadsheet::ExportNotes& notes) {
  const std::string kind = line.at("kind").get<std::string>();
  if (kind == "account-in-several-rows") {
    notes.journalWarnings.push_back(fmt::format(
        "a report has the account {} in several rows, which were all added", TextOf(line, "name")));
  } else if (kind == "past-performance-ended") {
    notes.journalWarnings.push_back(fmt::format(
        "past performance ended early: QuickBooks has no account of the type {}", TextOf(line, "name")));
  } else if (kind == "skipped") {
    std::string account = FirstTextOf(line, "account_name", "name");
    if (account.empty()) account = TextOf(line, "account");
    notes.leftOut.push_back({.date = TextOf(line, "date"),
                             .transaction = FirstTextOf(line, "transaction", "source"),
                             .account = std::move(account),
                             .customer = FirstTextOf(line, "customer_name", "customer"),
                             .amount = line.at("amount").get<std::string>(),
                             .reason = Words(line.at("reason").get<std::string>()),
                             .meaning = Words(line.at("meaning").get<std::string>()),
                             .period = PeriodOf(line)});
  } else {
    throw Error(error_number::unspecified, "unknown kind");
  }
}

}  // namespace

void ReadLeftOutAmounts(const std::string& file, spreadsheet::ExportNotes& notes) {
  const std::string text =
      Attempt([&] { return files::ReadFile(PathFrom(file), "cannot read the journal").bytes; });
  notes.journal = TextOfPath(PathFrom(file).filename());
  std::string_view rest = text;
  for (std::size_t number = 1; !rest.empty(); ++number) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    try {
      AddLine(Json::parse(line), notes);
    } catch (...) {
      throw CommandFailure("reading the journal failed",
                           fmt::format("{} line {} is not a line of an import's journal", file, number),
                           "give the file that krnqb import --journal has written");
    }
  }
}

}  // namespace krnqb::cli
