#include "cli/company/json_output.h"

#include <fmt/format.h>

#include <vector>

#include "cli/console/decimal_text.h"
#include "cli/console/failure.h"
#include "cli/console/json_text.h"

namespace krnqb::cli {
namespace {

// Indentation makes a deeper text grow with the square of the depth, and few programs read it.
constexpr std::size_t mostLevels = 100;

// A balance that the company does not state is null.
Json BalanceJson(const std::string& text) {
  const std::optional<std::string> money = DecimalText(std::string_view(text));
  return money ? Json(*money) : Json();
}

Json AccountJson(const AccountNode& account) {
  Json json{{"list_id", account.listId},
            {"name", account.name},
            {"type", account.type},
            {"balance", BalanceJson(account.balance)},
            {"total_balance", BalanceJson(account.totalBalance)}};
  if (account.selected) json["selected"] = *account.selected;
  json["accounts"] = Json::array();
  return json;
}

}  // namespace

std::string AccountsJson(const std::vector<AccountNode>& accounts) {
  Json json{{"result", "done"}, {"accounts", Json::array()}};
  std::vector<Json*> lists{&json["accounts"]};  // those that the current account may be added to, by level
  for (const AccountNode& account : accounts) {
    if (account.level >= mostLevels) {
      throw CommandFailure("listing accounts failed",
                           fmt::format("the accounts are nested more than {} deep", mostLevels),
                           "list the accounts without --json");
    }
    lists.resize(account.level + 1);
    lists.back()->push_back(AccountJson(account));
    lists.push_back(&lists.back()->back()["accounts"]);
  }
  return JsonText(json);
}

std::string CompanyInfoJson(const company::CompanyInfo& info) {
  Json json{{"result", "done"},
            {"path", info.path},
            {"name", info.name},
            {"processor", info.processorVersion},
            {"fiscal_month", info.fiscalMonth},
            {"records", Json::object()}};
  for (const company::RecordCount& record : info.records) json["records"][record.kind] = record.count;
  return JsonText(json);
}

std::string CompanyCheckJson(const company::FixReport& report) {
  const company::CheckReport& check = report.check;
  Json json{{"result", check.findingCount == 0 ? "done" : "failed"},
            {"path", check.path},
            {"checksums", check.checksums || report.backup.has_value()},
            {"pages", check.pages},
            {"records", check.records},
            {"postings", check.postings},
            {"finding_count", check.findingCount},
            {"findings", check.findings},
            {"load_undone", report.loadUndone}};
  if (report.backup) json["backup"] = report.backup->string();
  return JsonText(json);
}

std::string CompaniesJson(const std::vector<Company>& companies,
                          const std::vector<UnlistedCompany>& unlisted) {
  Json json{{"result", unlisted.empty() ? "done" : "incomplete"}, {"companies", Json::array()}};
  for (const Company& company : companies) {
    json["companies"].push_back({{"name", company.name}, {"path", company.path}});
  }
  for (const UnlistedCompany& company : unlisted) {
    json["unlisted"].push_back({{"path", company.path}, {"reason", company.reason}});
  }
  return JsonText(json);
}

}  // namespace krnqb::cli
