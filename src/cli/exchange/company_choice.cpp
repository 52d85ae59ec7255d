#include "cli/exchange/company_choice.h"

#include <fmt/format.h>

#include "cli/console/failure.h"

namespace krnqb::cli {
namespace {

Failure BothGiven(std::string_view one, std::string_view other) {
  return WrongUsage(fmt::format("{} and {} are both given", one, other), "give one of them");
}

}  // namespace

void RequireOneCompany(const CompanyChoice& choice) {
  if (choice.companyFile && choice.quickBooks) throw BothGiven("--company", "--quickbooks");
  if (choice.companyFile || choice.quickBooks) return;
  throw WrongUsage("no company is given", "give --company FILE, or --quickbooks on Windows");
}

void RequireOneCompany(const CompanyChoice& choice, const std::optional<std::string>& replayFile) {
  if (replayFile && choice.quickBooks) throw BothGiven("--quickbooks", "--replay");
  if (choice.companyFile && choice.quickBooks) throw BothGiven("--company", "--quickbooks");
  if (choice.companyFile || choice.quickBooks || replayFile) return;
  throw WrongUsage("no company is given",
                   "give --company FILE, --quickbooks on Windows, or --replay FILE for a recorded exchange");
}

}  // namespace krnqb::cli
