#pragma once

#include <memory>
#include <optional>
#include <string>

#include "krnqb/observer.h"
#include "krnqb/subtotals.h"
#include "krnqb/xml_element.h"
#include "support/xml_index.h"

namespace krnqb {

/// The three account lists of an import.
enum class AccountGroup { Expense, Income, CostOfGoods };

/// An answer that lists accounts, with an index of its "ListID" elements made when it is first needed.
class AccountList {
 public:
  AccountList() = default;
  explicit AccountList(XmlElement answerElement) : answer(std::move(answerElement)) {}

  /// The answer's document element; none when there was no answer.
  const XmlElement& Element() const noexcept { return answer; }
  explicit operator bool() const noexcept { return static_cast<bool>(answer); }

  /// The first "ListID" element of the document with that text, or none. Error -2147467259 when the id holds
  /// a double quote, which no search path can hold.
  XmlElement FindListId(const std::string& listId) const;

 private:
  XmlElement answer;
  mutable std::shared_ptr<const XmlTextIndex> index;
};

/// The name of the top-level account that an account belongs to: itself or, climbing by "ParentRef", its
/// ancestor whose "Sublevel" is "0". Empty when the list does not hold the account. Also empty, and told to
/// the observer, when the climb fails or runs in a circle.
std::string TopLevelAccountName(const AccountList& list, const std::string& listId, Observer& observer);

/// One record of zeros per top-level account of a list, keyed by its name, in the order of the list. Nothing,
/// told to the observer, when there is no list or two accounts have the same name.
std::optional<SubtotalCollection> TopLevelSubtotals(const AccountList& list, Observer& observer);

}  // namespace krnqb
