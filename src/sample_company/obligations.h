#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "sample_company/calendar.h"
#include "sample_company/text.h"

namespace krnqb::sample_company {

enum class ObligationKind { PayVendor, CollectFromCustomer, BillCustomer };

/// What a company is bound to do with one of its vendors or customers.
struct Obligation {
  ObligationKind kind = ObligationKind::PayVendor;
  std::size_t party = 0;  ///< index among the vendors or the customers

  friend auto operator<=>(const Obligation&, const Obligation&) = default;
};

/// One thing that an obligation settles.
struct OpenItem {
  Cents amount = 0;
  std::int64_t number = 0;          ///< of the bill or invoice
  std::string description;          ///< of a cost to be invoiced, escaped
  std::optional<std::size_t> item;  ///< what was bought for the customer; none for an expense
  std::int64_t pieces = 0;
};

/// What is to be done later, so that bills marked paid are paid, invoices marked paid are collected and
/// expenses marked billed are invoiced before the company's last transaction. Each obligation takes one
/// transaction, which settles all that is open with the party by then.
class Obligations {
 public:
  explicit Obligations(Day lastDay) : lastDay_(lastDay) {}

  /// How many transactions are still free for obligations after the present one.
  void LeaveRoom(std::int64_t transactions) { room_ = transactions; }
  /// Whether something more that is due on a day can be settled in time.
  bool CanPromise(const Obligation& obligation, Day due) const;
  void Promise(const Obligation& obligation, Day due, OpenItem&& item);

  std::int64_t Count() const { return static_cast<std::int64_t>(open_.size()); }
  /// The obligation that is due first, if it is due by that day.
  std::optional<Obligation> DueBy(Day day) const;
  /// All that is open of an obligation, which is settled with that.
  std::vector<OpenItem> Settle(const Obligation& obligation);

 private:
  struct Open {
    Day due;
    std::vector<OpenItem> items;
  };
  Day lastDay_;
  std::int64_t room_ = 0;
  std::map<Obligation, Open> open_;
  std::set<std::pair<Day, Obligation>> byDay_;
};

}  // namespace krnqb::sample_company
