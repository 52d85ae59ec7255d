#include "cli/company/json_output.h"

#include "cli/console/json_text.h"

namespace krnqb::cli {
namespace {

Json AccountJson(const AccountNode& account) {
  Json json{{"list_id", account.listId},
            {"name", account.name},
            {"type", account.type},
            {"balance", account.balance},
            {"total_balance", account.totalBalance}};
  if (account.selected) json["selected"] = *account.selected;
  json["accounts"] = Json::array();
  for (const AccountNode& subAccount : account.subAccounts)
    json["accounts"].push_back(AccountJson(subAccount));
  return json;
}

}  // namespace

std::string AccountsJson(const std::vector<AccountNode>& accounts) {
  Json json{{"result", "done"}, {"accounts", Json::array()}};
  for (const AccountNode& account : accounts) json["accounts"].push_back(AccountJson(account));
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

std::string CompaniesJson(const std::vector<Company>& companies) {
  Json json{{"result", "done"}, {"companies", Json::array()}};
  for (const Company& company : companies) {
    json["companies"].push_back({{"name", company.name}, {"path", company.path}});
  }
  return JsonText(json);
}

}  // namespace krnqb::cli
