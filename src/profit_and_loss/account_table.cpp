#include "profit_and_loss/account_table.h"

#include <fmt/format.h>

#include "profit_and_loss/messages.h"
#include "profit_and_loss/words.h"

namespace krnqb::profit_and_loss {
std::string AccountTable::KeyOf(const std::vector<std::string>& names) {
  std::string key;
  for (const std::string& name : names) key.append(Folded(name)).append(1, '\n');
  return key;
}

std::pair<std::size_t, bool> AccountTable::Find(const CapturedReport& report, const ReportRow& row,
                                                AccountPath path) {
  const auto [found, isNew] = indices_.try_emplace(KeyOf(path.names), accounts_.size());
  if (!isNew) return {found->second, false};
  if (accounts_.size() == mostAccounts) {
    Refuse(PlaceOf(report, row.number), fmt::format("the report has more than {} accounts", mostAccounts),
           "check that the document is a profit and loss");
  }
  accounts_.push_back({.section = path.section,
                       .names = std::move(path.names),
                       .numbers = std::move(path.numbers),
                       .amounts = {},
                       .place = PlaceOf(report, row.number)});
  return {found->second, true};
}

}  // namespace krnqb::profit_and_loss
