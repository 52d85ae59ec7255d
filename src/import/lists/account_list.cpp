#include "import/lists/account_list.h"

#include <unordered_map>
#include <unordered_set>

#include "import/lists/full_name.h"
#include "plan/account_rows.h"
#include "support/error_handling.h"
#include "support/warning_report.h"

namespace krnqb {

const AccountList::RollUp& AccountList::RollUpOf(std::string_view listId) const {
  Found();
  if (const auto found = lookUps_->rollUps.find(listId); found != lookUps_->rollUps.end()) {
    return *found->second;
  }
  const std::string id(listId);
  std::vector<std::string> path{id};
  std::shared_ptr<const RollUp> rollUp;
  // The failure is cached like a name; the caller reports it.
  try {
    rollUp = Climb(path);
  } catch (...) {
    rollUp = std::make_shared<RollUp>(RollUp{.name = {}, .failure = CaughtError()});
  }
  // Every account on the way has the same top-level account, or fails for the same reason.
  for (const std::string& climbed : path) lookUps_->rollUps.try_emplace(climbed, rollUp);
  return *lookUps_->rollUps.at(id);
}

AccountList::LookUps& AccountList::Found() const {
  if (lookUps_ == nullptr) lookUps_ = std::make_shared<LookUps>(answer_);
  return *lookUps_;
}

std::string AccountList::FullNameOf(std::string_view listId) const {
  if (!answer_ || listId.find('"') != std::string_view::npos) return {};
  return NameBeside(Found().index.Find(std::string(listId)));
}

std::shared_ptr<const AccountList::RollUp> AccountList::Climb(std::vector<std::string>& path) const {
  XmlElement listIdElement = FindListId(path.back());
  if (!listIdElement) return std::make_shared<RollUp>();
  std::unordered_set<std::string> visited;
  for (;;) {
    const XmlElement account = listIdElement.Parent();
    if (account.Child("Sublevel").Text() == "0") {
      return std::make_shared<RollUp>(RollUp{.name = account.Child("Name").Text(), .failure = {}});
    }
    std::string parentId = account.Select("./ParentRef/ListID").Text();
    if (!visited.insert(parentId).second) {
      throw Error(error_number::unspecified, "the account's parents form a cycle");
    }
    listIdElement = FindListId(parentId);
    if (!listIdElement) continue;
    if (const auto found = lookUps_->rollUps.find(parentId); found != lookUps_->rollUps.end()) {
      return found->second;
    }
    path.push_back(std::move(parentId));
  }
}

// An id with a double quote goes through the path, whose error or match differs from that of the index.
XmlElement AccountList::FindListId(const std::string& listId) const {
  if (listId.find('"') != std::string::npos)
    return lookUps_->paths.Select(answer_, "//ListID[. = \"" + listId + "\"]");
  return lookUps_->index.Find(listId);
}

NoticeMeaning EndMeaning(const AccountList& list) noexcept {
  return list ? NoticeMeaning::Incomplete : NoticeMeaning::Complete;
}

void ReportFailure(const AccountList::RollUp& rollUp, Observer& observer) {
  if (!rollUp.failure) return;
  ReportEnd(observer, {.operation = Operation::TopLevelAccountName}, *rollUp.failure);
}

const std::string& TopLevelAccountName(const AccountList& list, std::string_view listId, Observer& observer) {
  const AccountList::RollUp& rollUp = list.RollUpOf(listId);
  ReportFailure(rollUp, observer);
  return rollUp.name;
}

void WarnOfNamesThatDifferInCase(const AccountList& list, Observer& observer) {
  if (!list) return;
  std::unordered_map<std::string, std::string> firstNames;  // by folded name
  for (const XmlElement& account : list.Element().SelectAll("//AccountRet")) {
    const XmlElement nameElement = account.Child("Name");
    if (!IsTopLevelAccount(account) || !nameElement) continue;
    const std::string name = nameElement.Text();
    const std::string& first = firstNames.try_emplace(FoldedKey(name), name).first->second;
    if (first == name) continue;
    ReportWarning(observer, {.operation = Operation::LoadQuickBooksLists}, [&] {
      return Finding{.code = WarningCode::NamesDifferInCase, .name = first, .other = name};
    });
  }
}

std::optional<SubtotalCollection> TopLevelSubtotals(const AccountList& list, Observer& observer) {
  SubtotalCollection subtotals;
  const bool complete = EndOnError(
      observer, {.operation = Operation::TopLevelSubtotals},
      [&] {
        for (const XmlElement& account : list.Element().SelectAll("//AccountRet")) {
          if (!IsTopLevelAccount(account)) continue;
          const std::string name = account.Child("Name").Text();
          subtotals.Add(cSubtotals(name), name);
        }
      },
      EndMeaning(list));
  if (!complete) return std::nullopt;
  return subtotals;
}

}  // namespace krnqb
