#include "cli/batch/import_result.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace krnqb::cli {
namespace {

using nlohmann::json;

constexpr std::string_view runAgain = "run the import again";

struct ResultKind {
  std::string_view word;
  bool done;
};
constexpr std::array kinds{ResultKind{"imported", true},     ResultKind{"unchanged", true},
                           ResultKind{"dry-run", true},      ResultKind{"incomplete", false},
                           ResultKind{"cancelled", false},   ResultKind{"failed", false},
                           ResultKind{"wrong-usage", false}, ResultKind{"interrupted", false}};

// Returns a member of an object; null if the value is not an object or has no such member.
const json& Member(const json& value, const char* name) {
  static const json missing;
  if (!value.is_object()) return missing;
  const auto found = value.find(name);
  return found == value.end() ? missing : *found;
}

std::string TextOf(const json& value) {
  return value.is_string() ? value.get<std::string>() : std::string();
}

// Counts are never negative.
std::int64_t CountOf(const json& value) {
  return value.is_number_integer() ? std::max<std::int64_t>(value.get<std::int64_t>(), 0) : 0;
}

// The cells of a large plan and the progress of its import are most of a result and are not needed.
json ParseWithoutDetails(std::string_view text) {
  constexpr int memberDepth = 1;
  const auto keep = [](int depth, json::parse_event_t event, json& parsed) {
    return event != json::parse_event_t::key || depth != memberDepth ||
           (parsed != "changes" && parsed != "events");
  };
  return json::parse(text, keep, false);
}

void ReadWarnings(const json& warnings, ImportResultFile& result) {
  for (const json& warning : warnings) {
    const std::string code = TextOf(Member(warning, "code"));
    if (code.empty()) continue;
    auto known = std::ranges::find(result.warnings, code, &ResultWarning::code);
    if (known == result.warnings.end()) known = result.warnings.insert(known, {code, 0});
    known->accounts += Member(warning, "accounts").size();
  }
}

// The error's description says that something could not be read; what it was is among what is missing.
std::string ReasonOf(const json& import) {
  std::string reason = TextOf(Member(import, "error_description"));
  const json& missing = Member(import, "incomplete");
  if (missing.empty()) return reason;
  const std::string first = TextOf(Member(missing.front(), "text"));
  if (first.empty()) return reason;
  reason += fmt::format("{}{}", reason.empty() ? "" : ": ", first);
  if (missing.size() > 1) reason += fmt::format(" and {} more", missing.size() - 1);
  return reason;
}

// A description may end with the remedy, and a sentence with its full stop; both are followed by the remedy.
void Part(ImportResultFile& result) {
  std::string& reason = result.reason;
  if (const std::string end = "; " + result.remedy; !result.remedy.empty() && reason.ends_with(end))
    reason.resize(reason.size() - end.size());
  if (reason.ends_with('.') && !reason.ends_with("..")) reason.pop_back();
}

// The sums of the tables and of what was left out.
void ReadCounts(const json& import, ImportResultFile& result) {
  for (const json& table : Member(import, "tables")) {
    result.rowsAdded += CountOf(Member(table, "rows_added"));
    result.cellsChanged += CountOf(Member(table, "cells_changed"));
    result.formulasCleared += CountOf(Member(table, "formulas_cleared"));
  }
  const json& skipped = Member(import, "skipped");
  result.amountsLeftOut = CountOf(Member(skipped, "count"));
  result.sumLeftOut = ExactAmount::FromText(TextOf(Member(skipped, "sum")));
  result.milliseconds = CountOf(Member(import, "elapsed_ms"));
}

}  // namespace

ImportResultFile UnreadableResult(std::string reason, std::string remedy) {
  ImportResultFile result;
  result.result = "unreadable";
  result.reason = std::move(reason);
  result.remedy = std::move(remedy);
  return result;
}

ImportResultFile ReadImportResult(std::string_view text) {
  if (text.find_first_not_of(" \t\r\n") == std::string_view::npos) {
    return UnreadableResult("the file is empty: the import did not run, or was ended before its result",
                            std::string(runAgain));
  }
  const json import = ParseWithoutDetails(text);
  if (import.is_discarded())
    return UnreadableResult("the file is cut off or is not JSON", std::string(runAgain));
  const std::string word = TextOf(Member(import, "result"));
  const auto* const kind = std::ranges::find(kinds, word, &ResultKind::word);
  const bool isImport = Member(import, "tables").is_array() && Member(import, "skipped").is_object();
  if (kind == kinds.end() || !isImport)
    return UnreadableResult("the file is not the result of krnqb import --json", "move it to another folder");
  ImportResultFile result;
  result.result = word;
  result.done = kind->done;
  if (!result.done) {
    result.reason = ReasonOf(import);
    result.remedy = TextOf(Member(import, "remedy"));
    if (word == "incomplete" && result.remedy.empty())
      result.remedy = "fix the cause and run the import again";
    Part(result);
  }
  result.companyName = TextOf(Member(Member(import, "company"), "name"));
  result.companyPath = TextOf(Member(Member(import, "company"), "path"));
  result.plan = TextOf(Member(Member(import, "paths"), "plan"));
  result.periodFrom = TextOf(Member(Member(import, "period"), "from"));
  ReadCounts(import, result);
  ReadWarnings(Member(import, "warnings"), result);
  return result;
}

}  // namespace krnqb::cli
