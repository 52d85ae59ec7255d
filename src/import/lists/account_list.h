#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "krnqb/error.h"
#include "krnqb/observer.h"
#include "krnqb/subtotals.h"
#include "krnqb/xml_element.h"
#include "xml/index.h"

namespace krnqb {

/// The three account lists of an import.
enum class AccountGroup { Expense, Income, CostOfGoods };

/// An answer that lists accounts, with what has been looked up in it: the list never changes.
class AccountList {
 public:
  AccountList() = default;
  explicit AccountList(XmlElement answer) : answer_(std::move(answer)) {}

  /// The answer's document element; none when there was no answer.
  const XmlElement& Element() const noexcept { return answer_; }
  explicit operator bool() const noexcept { return static_cast<bool>(answer_); }

  /// What a climb to the top level came to: the name, or the failure that ended it.
  struct RollUp {
    std::string name;
    std::optional<Error> failure;
  };
  /// Climbs from an account to its top-level account; climbed once per account, since the list never changes.
  const RollUp& RollUpOf(std::string_view listId) const;

 private:
  struct LookUps {
    explicit LookUps(const XmlElement& answer) : index(answer, "ListID") {}
    XmlTextIndex index;
    std::unordered_map<std::string, RollUp> rollUps;
  };

  XmlElement FindListId(const std::string& listId) const;
  std::string Climb(const std::string& listId) const;

  XmlElement answer_;
  mutable std::shared_ptr<LookUps> lookUps_;
};

/// Returns what it means that an operation on a list ended early. Nothing is missing if the list is: it was
/// either not requested, or its request already reported the error.
NoticeMeaning EndMeaning(const AccountList& list) noexcept;

/// The name of the top-level account that an account belongs to: itself or, climbing by "ParentRef", its
/// ancestor whose "Sublevel" is "0". Empty when the list does not hold the account. Also empty, and told to
/// the observer, when the climb fails or runs in a circle.
const std::string& TopLevelAccountName(const AccountList& list, std::string_view listId, Observer& observer);

/// One record of zeros per top-level account of a list, keyed by its name, in the order of the list. Nothing,
/// told to the observer, when there is no list or two accounts have the same name.
std::optional<SubtotalCollection> TopLevelSubtotals(const AccountList& list, Observer& observer);

}  // namespace krnqb
