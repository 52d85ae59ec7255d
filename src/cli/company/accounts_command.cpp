#include "cli/company/accounts_command.h"

#include <unordered_set>

#include "cli/company/account_tree.h"
#include "cli/company/inquiry.h"
#include "cli/company/interruptible.h"
#include "cli/company/json_output.h"
#include "cli/console/attempt.h"
#include "cli/import/expense_selection.h"
#include "plan_file/file.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view listingFailed = "listing accounts failed";

// Returns whether the plan selects accounts of the list; warns if it does not.
bool HasSelection(const plan_file::PlanFile& plan, ListedAccounts list, const Console& console) {
  if (list == ListedAccounts::Income) {
    Warn(console, "--plan is ignored because income accounts are not selected");
    return false;
  }
  if (plan.Product() == QBKRN_BRI) return true;
  Warn(console, "--plan is ignored because only plans of product bri select expense accounts");
  return false;
}

void MarkSelected(std::vector<AccountNode>& accounts, const XmlElement& selection) {
  const std::vector<std::string> names = SelectionNames(selection, SelectionPart::Selected);
  const std::unordered_set<std::string> selected(names.begin(), names.end());
  for (AccountNode& account : accounts) {
    if (account.level == 0) account.selected = selected.contains(account.name);
  }
}

ExitCode ListAccounts(const AccountsOptions& options, const Console& console,
                      const InterruptWatch& interrupts, const Surroundings& surroundings) {
  std::shared_ptr<plan_file::PlanFile> plan;
  if (options.planFile)
    plan = Attempt([&] { return plan_file::PlanFile::Open(PathFrom(*options.planFile)); });
  CompanyInquiry inquiry(options, console, interrupts, surroundings);
  QBDataExchange& exchange = inquiry.Exchange();

  const XmlElement answer =
      options.list == ListedAccounts::Income ? exchange.QBIncomeAccounts() : exchange.QBExpenseAccounts();
  inquiry.RequireAnswers(listingFailed);
  std::vector<AccountNode> accounts = AccountTree(answer);
  if (plan != nullptr && HasSelection(*plan, options.list, console)) {
    exchange.KRNProduct(QBKRN_BRI);
    exchange.KRNPlanData(plan);
    const XmlElement selection = exchange.SelectedExpenses();
    inquiry.RequireAnswers(listingFailed);
    MarkSelected(accounts, selection);
  }
  console.out << (options.json ? AccountsJson(accounts) + '\n' : AccountTreeText(accounts));
  return ExitCode::Done;
}

}  // namespace

ExitCode Run(const AccountsOptions& options, const Console& console, const Surroundings& surroundings) {
  RequireOneCompany(options);
  return RunInterruptibly("listing accounts", "nothing was listed", [&](const InterruptWatch& interrupts) {
    return ListAccounts(options, console, interrupts, surroundings);
  });
}

}  // namespace krnqb::cli
