#include "import/account_list.h"

#include <unordered_set>

#include "plan/account_rows.h"
#include "support/error_handling.h"

namespace krnqb {
namespace {

Place In(std::string operation) {
  return Place{.operation = std::move(operation), .request = {}, .fromDate = {}, .toDate = {}};
}

// The account record above a "ListID" element, climbing to the top level.
XmlElement TopLevelRecord(const AccountList& list, XmlElement listIdElement) {
  std::unordered_set<std::string> visited;
  for (;;) {
    XmlElement account = listIdElement.Parent();
    if (account.Child("Sublevel").Text() == "0") return account;
    const std::string parentId = account.Child("ParentRef").Child("ListID").Text();
    if (!visited.insert(parentId).second)
      throw Error(error_number::unspecified, "the account's parents run in a circle");
    listIdElement = list.FindListId(parentId);
  }
}

}  // namespace

XmlElement AccountList::FindListId(const std::string& listId) const {
  if (listId.find('"') != std::string::npos) return answer.Select("//ListID[. = \"" + listId + "\"]");
  if (index == nullptr) index = std::make_shared<const XmlTextIndex>(answer, "ListID");
  return index->Find(listId);
}

std::string TopLevelAccountName(const AccountList& list, const std::string& listId, Observer& observer) {
  std::string name;
  EndOnError(observer, In("TopLevelAccountName"), [&] {
    const XmlElement found = list.FindListId(listId);
    if (found) name = TopLevelRecord(list, found).Child("Name").Text();
  });
  return name;
}

std::optional<SubtotalCollection> TopLevelSubtotals(const AccountList& list, Observer& observer) {
  SubtotalCollection subtotals;
  const bool complete = EndOnError(observer, In("TopLevelSubtotals"), [&] {
    for (const XmlElement& account : list.Element().SelectAll("//AccountRet")) {
      if (!IsTopLevelAccount(account)) continue;
      const std::string name = account.Child("Name").Text();
      subtotals.Add(cSubtotals(name), name);
    }
  });
  if (!complete) return std::nullopt;
  return subtotals;
}

}  // namespace krnqb
