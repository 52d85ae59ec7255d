#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "krnqb/error.h"
#include "krnqb/observer.h"
#include "krnqb/subtotals.h"
#include "krnqb/xml_element.h"
#include "support/text_map.h"
#include "xml/bounded_paths.h"
#include "xml/index.h"

namespace krnqb {

/// The three account lists of an import.
enum class AccountGroup { Expense, Income, CostOfGoods };

/// A QuickBooks response that lists accounts. It never changes, so results of lookups are cached; copies
/// share the cache.
class AccountList {
 public:
  AccountList() = default;
  explicit AccountList(XmlElement answer) : answer_(std::move(answer)) {}

  /// Returns the response's document element, or an empty handle if there was no response.
  const XmlElement& Element() const noexcept { return answer_; }
  explicit operator bool() const noexcept { return static_cast<bool>(answer_); }

  /// The result of finding an account's top-level account.
  struct RollUp {
    std::string name;              ///< empty if the account is not in the list or the search failed
    std::optional<Error> failure;  ///< why the search failed
  };
  /// Finds the top-level account of an account. Errors are returned in the result.
  const RollUp& RollUpOf(std::string_view listId) const;

  /// Returns the full name of an account in the list, or its name if it has no full name; empty if the list
  /// does not contain it or its id contains a double quote.
  std::string FullNameOf(std::string_view listId) const;

 private:
  struct LookUps {
    explicit LookUps(const XmlElement& answer) : index(answer, "ListID") {}
    XmlTextIndex index;
    BoundedPaths paths;
    // Accounts below one top-level account share its name, which may be long.
    TextMap<std::shared_ptr<const RollUp>> rollUps;
  };

  LookUps& Found() const;
  XmlElement FindListId(const std::string& listId) const;
  // Climbs from the account whose id is the only one in `path` and appends the ids of the ancestors reached.
  std::shared_ptr<const RollUp> Climb(std::vector<std::string>& path) const;

  XmlElement answer_;
  mutable std::shared_ptr<LookUps> lookUps_;
};

/// Returns what it means that an operation on a list ended early. Nothing is missing if the list is: it was
/// either not requested, or its request already reported the error.
NoticeMeaning EndMeaning(const AccountList& list) noexcept;

/// Reports to the observer that the search for a top-level account failed, if it did.
void ReportFailure(const AccountList::RollUp& rollUp, Observer& observer);

/// Returns the name of the top-level account that an account belongs to: the account itself or the ancestor,
/// reached by "ParentRef", whose "Sublevel" is "0". Returns the empty text if the list does not contain the
/// account. If a record on the way is incomplete or the parents form a cycle, reports the error to the
/// observer and returns the empty text.
const std::string& TopLevelAccountName(const AccountList& list, std::string_view listId, Observer& observer);

/// Warns of the top-level accounts whose names differ only in case: `TopLevelSubtotals` cannot keep both.
void WarnOfNamesThatDifferInCase(const AccountList& list, Observer& observer);

/// Returns a subtotal of zeros for each top-level account of a list, keyed by its name, in the order of the
/// list. If there is no list, an account has no name or two accounts have the same name, reports the error to
/// the observer and returns nothing.
std::optional<SubtotalCollection> TopLevelSubtotals(const AccountList& list, Observer& observer);

}  // namespace krnqb
