#include "import/accounts/selection.h"

#include <unordered_map>
#include <unordered_set>

#include "plan/account_rows.h"
#include "plan/account_writers.h"
#include "plan/table_identifiers.h"
#include "qbxml/request_catalogue.h"
#include "support/error_handling.h"
#include "support/number_text.h"

namespace krnqb {
namespace {

std::string LowerAscii(std::string text) {
  for (char& character : text) {
    if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
  }
  return text;
}

// What can stand between double quotes in a search path, and so can be looked for.
const std::string& Searchable(const std::string& text) {
  if (text.find('"') != std::string::npos) throw Error(error_number::unspecified);
  return text;
}

// The first text of every cell of the table document, all blocks, in lower case.
std::unordered_set<std::string> CellTexts(const XmlElement& tableBlocks) {
  std::unordered_set<std::string> texts;
  for (const XmlElement& cell : tableBlocks.SelectAll("//c")) texts.insert(LowerAscii(cell.FirstTextNode()));
  return texts;
}

// Names and ids stand as they are: one that breaks the document leaves nothing to choose from.
std::string SelectionDocument(const XmlElement& tableBlocks, const XmlElement& answer) {
  const std::unordered_set<std::string> cellTexts = CellTexts(tableBlocks);
  std::string document = "<expenseAccounts>";
  for (const XmlElement& account : answer.SelectAll("//AccountRet")) {
    if (!IsTopLevelAccount(account)) continue;
    const std::string id = account.Child("ListID").Text();
    const std::string name = account.Child("Name").Text();
    const bool selected = cellTexts.contains(LowerAscii(Searchable(name)));
    document += "\r\n<account id=\"" + id + "\" selected=\"" + (selected ? "True" : "False") +
                "\"><name><![CDATA[" + name + "]]></name></account>";
  }
  return document += "</expenseAccounts>";
}

bool SelectedAttribute(const XmlElement& record) {
  const std::string text = record.Attribute("selected").value_or("");
  const std::string lower = LowerAscii(text);
  if (lower == "true") return true;
  if (lower == "false") return false;
  return RequireDouble(text) != 0;
}

// A copy of the list without the accounts that are not selected and without sub-accounts. An account that the
// selection does not name is kept.
XmlElement SelectedAccounts(const XmlElement& accounts, const XmlElement& selection) {
  XmlElement pruned = accounts.Clone();
  std::unordered_multimap<std::string, XmlElement> accountsById;
  const std::vector<XmlElement> children = pruned.Children();
  // Last first, so that the first account in the list is the one found first among equal ids.
  for (auto account = children.rbegin(); account != children.rend(); ++account) {
    const XmlElement id = account->Child("ListID");
    if (account->Name() == "AccountRet" && id) accountsById.emplace(id.Text(), *account);
  }
  for (XmlElement record = selection.FirstChild(); record; record = record.NextSibling()) {
    if (SelectedAttribute(record)) continue;
    const auto found = accountsById.find(Searchable(record.Attribute("id").value_or("")));
    if (found == accountsById.end()) continue;
    found->second.Remove();
    accountsById.erase(found);
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
    const std::string document = SelectionDocument(tableBlocks, context.state.expenseAccounts.Element());
    selection = XmlElement::Parse(document);
    if (!selection)
      throw Error(error_number::unspecified, "an account's name or id cannot stand in the selection");
  });
  return selection;
}

void SelectAccountRows(ImportContext& context, std::string& result, const XmlElement& accounts) {
  switch (context.state.options.krnProduct) {
    case QBKRN_BRI: {
      const XmlElement selection = context.state.selectedExpenses.Own();
      if (!selection) throw Error(error_number::objectNotSet);
      const XmlElement selected = SelectedAccounts(accounts, selection);
      WriteContributionMarginAccounts(result, selected, context.plan, context.clock);
      break;
    }
    case QBKRN_ALD:
    case QBKRN_COR:
      WriteIncomeRangeAccounts(result, accounts, context.plan, context.clock);
      break;
    default:
      break;
  }
}

}  // namespace krnqb
