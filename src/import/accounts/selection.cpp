#include "import/accounts/selection.h"

#include <fmt/format.h>

#include <ranges>
#include <unordered_map>
#include <unordered_set>

#include "plan/account_rows.h"
#include "plan/account_writers.h"
#include "plan/table_identifiers.h"
#include "qbxml/request_catalogue.h"
#include "support/error_handling.h"
#include "support/number_text.h"
#include "support/warning_report.h"

namespace krnqb {
namespace {

std::string LowerAscii(std::string text) {
  for (char& character : text) {
    if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
  }
  return text;
}

// Returns the text. Throws if it contains a double quote, which a quoted text in a search path cannot.
const std::string& Searchable(const std::string& text) {
  if (text.find('"') != std::string::npos) throw Error(error_number::unspecified);
  return text;
}

// Returns the first text of every cell in the table's document, with A to Z in lower case.
std::unordered_set<std::string> CellTexts(const XmlElement& tableBlocks) {
  std::unordered_set<std::string> texts;
  for (const XmlElement& cell : tableBlocks.SelectAll("//c")) texts.insert(LowerAscii(cell.FirstTextNode()));
  return texts;
}

// Names and ids are not escaped; the caller reports a document that this makes invalid.
std::string SelectionDocument(const XmlElement& tableBlocks, const XmlElement& answer) {
  const std::unordered_set<std::string> cellTexts = CellTexts(tableBlocks);
  std::string document = "<expenseAccounts>";
  for (const XmlElement& account : answer.SelectAll("//AccountRet")) {
    if (!IsTopLevelAccount(account)) continue;
    const std::string id = account.Child("ListID").Text();
    const std::string name = account.Child("Name").Text();
    const bool selected = cellTexts.contains(LowerAscii(Searchable(name)));
    document += fmt::format("\r\n<account id=\"{}\" selected=\"{}\"><name><![CDATA[{}]]></name></account>",
                            id, selected ? "True" : "False", name);
  }
  return document += "</expenseAccounts>";
}

// Warns of the accounts whose name or id the selection document cannot hold.
void WarnOfUnselectable(const XmlElement& answer, Observer& observer, const Place& place) {
  for (const XmlElement& account : answer.SelectAll("//AccountRet")) {
    if (!IsTopLevelAccount(account)) continue;
    const std::string id = account.Child("ListID").Text();
    const std::string name = account.Child("Name").Text();
    const bool selectable = name.find('"') == std::string::npos && name.find("]]>") == std::string::npos &&
                            id.find_first_of("\"<&") == std::string::npos;
    if (selectable) continue;
    ReportWarning(observer, place, [&] {
      return Finding{.code = WarningCode::NameWithQuote, .name = name.empty() ? id : name};
    });
  }
}

bool SelectedAttribute(const XmlElement& record) {
  const std::string text = record.Attribute("selected").value_or("");
  const std::string lower = LowerAscii(text);
  if (lower == "true") return true;
  if (lower == "false") return false;
  return RequireDouble(text) != 0;
}

// Finds the accounts of a list by each of their ids.
class AccountsById {
 public:
  explicit AccountsById(const XmlElement& accounts) {
    const std::vector<XmlElement> children = accounts.Children();
    for (const XmlElement& account : children | std::views::reverse) {
      if (!account.IsNamed("AccountRet")) continue;
      for (const XmlElement& field : account.Children()) {
        if (field.IsNamed("ListID")) accountsLastFirst_[field.Text()].push_back(account);
      }
    }
  }

  // Removes the first remaining account with this id, if any.
  void Remove(const std::string& id) {
    const auto found = accountsLastFirst_.find(id);
    if (found == accountsLastFirst_.end()) return;
    std::vector<XmlElement>& accounts = found->second;
    bool removed = false;
    while (!removed && !accounts.empty()) {
      XmlElement account = accounts.back();
      accounts.pop_back();
      // An account with several ids may already have been removed.
      removed = static_cast<bool>(account.Parent());
      if (removed) account.Remove();
    }
  }

 private:
  std::unordered_map<std::string, std::vector<XmlElement>> accountsLastFirst_;
};

// Returns a copy of the list without sub-accounts and without the accounts whose selection is false. An
// account that the selection does not list is kept.
XmlElement SelectedAccounts(const XmlElement& accounts, const XmlElement& selection) {
  XmlElement pruned = accounts.Clone();
  AccountsById accountsById(pruned);
  for (XmlElement record = selection.FirstChild(); record; record = record.NextSibling()) {
    if (!SelectedAttribute(record)) accountsById.Remove(Searchable(record.Attribute("id").value_or("")));
  }
  for (XmlElement& account : pruned.Children()) {
    if (!IsTopLevelAccount(account)) account.Remove();
  }
  return pruned;
}

}  // namespace

XmlElement BuildSelectedExpenses(ImportContext& context) {
  if (context.state.options.krnProduct != QBKRN_BRI) return {};
  XmlElement selection;
  const Place place{.operation = Operation::SelectedExpenses, .request = request_number::expenseAccounts};
  EndOnError(context.observer, place, [&] {
    const XmlElement tableBlocks = context.plan.ReadPlanTable(table_id::plannedContributionMargin);
    if (!tableBlocks) return;
    context.state.expenseAccounts =
        AccountList(context.session.Ask(request_number::expenseAccounts, place.operation));
    WarnOfUnselectable(context.state.expenseAccounts.Element(), context.observer, place);
    const std::string document = SelectionDocument(tableBlocks, context.state.expenseAccounts.Element());
    selection = XmlElement::Parse(document);
    if (!selection)
      throw Error(error_number::unspecified, "an account's name or id is not valid in the selection");
  });
  return selection;
}

void SelectAccountRows(ImportContext& context, TablesDocument& changed, const XmlElement& accounts) {
  switch (context.state.options.krnProduct) {
    case QBKRN_BRI: {
      const XmlElement selection = context.state.selectedExpenses.Own();
      if (!selection) throw Error(error_number::objectNotSet);
      const XmlElement selected = SelectedAccounts(accounts, selection);
      WriteContributionMarginAccounts(changed, selected, context.plan, context.clock);
      break;
    }
    case QBKRN_ALD:
    case QBKRN_COR:
      WriteIncomeRangeAccounts(changed, accounts, context.plan, context.clock);
      break;
    default:
      break;
  }
}

}  // namespace krnqb
