#include "company/reports/accounts.h"

#include <unordered_map>

#include "company/records/amount.h"
#include "company/records/boolean.h"
#include "company/records/store.h"
#include "xml/parser.h"

namespace krnqb::company {
namespace {

constexpr std::string_view numberSeparator = " \u00B7 ";

std::string TextOf(const XmlElement& element) {
  return element ? element.Text() : std::string();
}

bool UsesAccountNumbers(const Database& database) {
  const XmlElement preferences = ParseXmlText(ReadSetting(database, "Preferences")).element;
  return IsTrueText(TextOf(preferences.Child("AccountingPreferences").Child("IsUsingAccountNumbers")));
}

std::string LabelOf(const XmlElement& record, bool withNumber) {
  const std::string number = withNumber ? TextOf(record.Child("AccountNumber")) : std::string();
  const std::string name = TextOf(record.Child("Name"));
  return number.empty() ? name : number + std::string(numberSeparator) + name;
}

}  // namespace

std::string FullName(std::string_view ancestors, std::string_view label) {
  constexpr std::size_t longest = 500;
  constexpr std::string_view ellipsis = "...";
  std::string name;
  if (ancestors.size() <= longest) {
    name = ancestors;
  } else {
    std::size_t end = longest - ellipsis.size();
    while (end > 0 && (static_cast<unsigned char>(ancestors[end]) & 0xC0U) == 0x80U) --end;
    name = ancestors.substr(0, end);
    name += ellipsis;
  }
  return name.append(":").append(label);
}

ReportAccounts ReadReportAccounts(const Database& database, std::string_view accountType) {
  const bool withNumbers = UsesAccountNumbers(database);
  ReportAccounts list;
  std::unordered_map<std::string, std::size_t> positions;
  Statement records =
      database.Prepare("SELECT key, parent_key, xml FROM record WHERE account_type = ?1 ORDER BY position");
  for (records.Bind(1, accountType); records.Step();) {
    const XmlElement record = ParseXmlText(records.Text(2)).element;
    ReportAccount account;
    account.key = records.Text(0);
    account.label = account.fullName = LabelOf(record, withNumbers);
    account.balance = Hundredths(TextOf(record.Child("Balance")));
    const std::size_t position = list.accounts.size();
    // Only an earlier account counts as a parent, so that a cycle of parents still has a top level.
    if (const auto parent = positions.find(std::string(records.Text(1))); parent != positions.end()) {
      ReportAccount& above = list.accounts[parent->second];
      account.fullName = FullName(above.fullName, account.label);
      above.children.push_back(position);
    } else {
      list.topLevel.push_back(position);
    }
    positions.emplace(account.key, position);
    list.accounts.push_back(std::move(account));
  }
  return list;
}

}  // namespace krnqb::company
