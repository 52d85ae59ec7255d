#include "cli/doctor/output.h"

#include <fmt/format.h>

#include "cli/console/json_text.h"
#include "cli/console/text_table.h"

namespace krnqb::cli {
namespace {

// "not checked: versions, months (the company cannot be opened)", one line for each reason.
std::string OmittedText(const std::vector<OmittedCheck>& omitted) {
  std::vector<std::pair<std::string, std::string>> byReason;
  for (const OmittedCheck& check : omitted) {
    const auto found = std::ranges::find(byReason, check.reason, &std::pair<std::string, std::string>::first);
    if (found == byReason.end()) {
      byReason.emplace_back(check.reason, check.check);
    } else {
      found->second += ", " + check.check;
    }
  }
  std::string text;
  for (const auto& [reason, checks] : byReason) text += fmt::format("not checked: {} ({})\n", checks, reason);
  return text;
}

std::string CountsText(const Checkup& checkup) {
  const std::size_t warnings = checkup.Count(Verdict::Warn);
  const std::size_t failures = checkup.Count(Verdict::Fail);
  if (failures > 0)
    return fmt::format("An import would fail: {} check{} failed.\n", failures, failures == 1 ? "" : "s");
  if (warnings > 0)
    return fmt::format("An import runs; look at {} warning{} first.\n", warnings, warnings == 1 ? "" : "s");
  return "An import has everything it needs.\n";
}

}  // namespace

std::string CheckupText(const Checkup& checkup) {
  std::string text;
  for (const CheckLine& line : checkup.Lines()) {
    const std::string end = line.whatToDo.empty() ? "" : "; " + line.whatToDo;
    text +=
        fmt::format("{:<4}  {:<12}  {}\n", VerdictWord(line.verdict), line.check, OneLine(line.found + end));
  }
  return text + OmittedText(checkup.Omitted()) + CountsText(checkup);
}

std::string CheckupJson(const Checkup& checkup) {
  Json json{{"result", VerdictWord(checkup.Worst())},
            {"ok", checkup.Count(Verdict::Ok)},
            {"warn", checkup.Count(Verdict::Warn)},
            {"fail", checkup.Count(Verdict::Fail)},
            {"checks", Json::array()},
            {"not_checked", Json::array()}};
  for (const CheckLine& line : checkup.Lines()) {
    json["checks"].push_back({{"check", line.check},
                              {"verdict", VerdictWord(line.verdict)},
                              {"found", line.found},
                              {"what_to_do", line.whatToDo.empty() ? Json() : Json(line.whatToDo)}});
  }
  for (const OmittedCheck& check : checkup.Omitted())
    json["not_checked"].push_back({{"check", check.check}, {"reason", check.reason}});
  return JsonText(json);
}

}  // namespace krnqb::cli
