#include "cli/doctor/account_checks.h"

#include <fmt/format.h>

#include <map>
#include <unordered_map>
#include <unordered_set>

#include "cli/doctor/plan_layout.h"
#include "krnqb/keyed_collection.h"
#include "plan/account_rows.h"
#include "plan_file/views/planned_names.h"
#include "qbxml/request_catalogue.h"

namespace krnqb::cli {
namespace {

using Names = std::vector<std::string>;

// The names of the top-level accounts of a list, in its order.
Names TopLevelNames(const XmlElement& answer) {
  Names names;
  for (const XmlElement& account : answer.SelectAll("//AccountRet")) {
    const XmlElement name = account.Child("Name");
    if (IsTopLevelAccount(account) && name) names.push_back(name.Text());
  }
  return names;
}

// The rows of a block by their folded names.
using RowsByName = std::unordered_map<std::string, Names>;

RowsByName RowsOf(const plan_file::PlanBlock& block) {
  RowsByName rows;
  for (const plan_file::PlanRow& row : block.rows) {
    if (row.empty() || plan_file::IsNamelessCell(row.front())) continue;
    rows[FoldedKey(row.front())].push_back(row.front());
  }
  return rows;
}

// How the accounts of all lists meet the rows of the plan.
class Meeting {
 public:
  // `selected`: only accounts with a row are imported unless others are named.
  void Add(const Names& accounts, const plan_file::PlanBlock& block, std::size_t closingRows, bool selected) {
    const RowsByName rows = RowsOf(block);
    std::unordered_map<std::string, std::string> folded;
    for (const std::string& account : accounts) {
      const auto [other, added] = folded.emplace(FoldedKey(account), account);
      if (!added) twice_.push_back(fmt::format(R"("{}" and "{}")", other->second, account));
      if (selected && account.find('"') != std::string::npos) quoted_.push_back(account);
      Meet(account, rows, selected);
    }
    for (std::size_t row = 0; row + closingRows < block.rows.size(); ++row) {
      const plan_file::PlanRow& cells = block.rows[row];
      if (cells.empty() || plan_file::IsNamelessCell(cells.front())) continue;
      if (!folded.contains(FoldedKey(cells.front()))) withoutAccount_.push_back(cells.front());
    }
  }

  void Report(Checkup& checkup) const {
    if (!twice_.empty()) {
      checkup.Fail("accounts", fmt::format("names of accounts differ only in case: {}", FirstOf(twice_)),
                   "rename one of the accounts, or an import of amounts ends early");
    } else if (!rowTwice_.empty()) {
      checkup.Warn("accounts", FirstOf(rowTwice_),
                   "keep one row of the account, named exactly as the account, or its amounts count twice");
    } else if (!quoted_.empty()) {
      checkup.Warn("accounts",
                   fmt::format("accounts cannot be selected because of their names: {}", FirstOf(quoted_)),
                   "rename the accounts without quotation marks");
    } else {
      checkup.Ok("accounts", Counts());
    }
  }

 private:
  void Meet(const std::string& account, const RowsByName& rows, bool selected) {
    const auto found = rows.find(FoldedKey(account));
    if (found == rows.end()) {
      // An import adds such an account to the row Depreciation.
      const bool depreciation = depreciationKeyword.find(account) != std::string_view::npos;
      ++(selected ? unselected_ : depreciation ? met_ : new_);
      return;
    }
    ++met_;
    const Names& names = found->second;
    if (names.size() > 1) {
      rowTwice_.push_back(fmt::format("the account \"{}\" has {} rows", account, names.size()));
    } else if (names.front() != account) {
      rowTwice_.push_back(
          fmt::format(R"(the row "{}" is not written as the account "{}", which gets a row of its own)",
                      names.front(), account));
    }
  }

  std::string Counts() const {
    std::string text = fmt::format("{} of {} top-level accounts {} a row", met_, met_ + new_ + unselected_,
                                   met_ == 1 ? "has" : "have");
    if (new_ > 0) text += fmt::format(", {} {} a new one", new_, new_ == 1 ? "gets" : "get");
    if (unselected_ > 0) text += fmt::format(", {} are imported only if selected", unselected_);
    if (!withoutAccount_.empty())
      text += fmt::format("; rows without an account: {}", FirstOf(withoutAccount_));
    return text;
  }

  std::size_t met_ = 0;
  std::size_t new_ = 0;
  std::size_t unselected_ = 0;
  Names twice_;
  Names rowTwice_;
  Names quoted_;
  Names withoutAccount_;
};

}  // namespace

void CheckAccounts(CompanySession& company, const plan_file::PlanFile* plan, Checkup& checkup) {
  const auto product = plan != nullptr ? plan->Product() : std::nullopt;
  if (!product) {
    checkup.Omit({"accounts"},
                 plan == nullptr ? "the plan cannot be opened" : "the plan's edition is unknown");
    return;
  }
  constexpr std::array requests{request_number::incomeAccounts, request_number::costAccounts,
                                request_number::expenseAccounts};
  const plan_file::PlanContent content = plan_file::ReadPlanContent(*plan);
  const std::vector<BlockTwins> twins = TwinsOf(*product);
  Meeting meeting;
  try {
    for (std::size_t list = 0; list < requests.size(); ++list) {
      const Names accounts = TopLevelNames(company.Ask(requests[list]));
      const plan_file::PlanBlock* const block =
          FindBlock(content, twins[list].plannedTable, twins[list].plannedBlock);
      const bool selected = *product == QBKRN_BRI && requests[list] == request_number::expenseAccounts;
      if (block != nullptr) meeting.Add(accounts, *block, twins[list].closingRows, selected);
    }
  } catch (...) {
    checkup.FailCaught("accounts", "run krnqb accounts with the same company");
    return;
  }
  meeting.Report(checkup);
}

}  // namespace krnqb::cli
