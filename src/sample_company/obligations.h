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

/// An obligation of the company to a vendor or customer.
struct Obligation {
  ObligationKind kind = ObligationKind::PayVendor;
  std::size_t party = 0;  ///< index among the vendors or the customers

  friend auto operator<=>(const Obligation&, const Obligation&) = default;
};

/// An open amount that an obligation settles.
struct OpenItem {
  Cents amount = 0;
  std::int64_t number = 0;          ///< of the bill or invoice
  std::string description;          ///< of a cost to invoice, escaped
  std::optional<std::size_t> item;  ///< the item bought for the customer; nullopt for an expense
  std::int64_t pieces = 0;
};

/// The future transactions that pay the bills marked paid, collect the invoices marked paid and invoice the
/// expenses marked billed before the company's last transaction. Each obligation takes one transaction, which
/// settles everything open with the party.
class Obligations {
 public:
  explicit Obligations(Day lastDay) : lastDay_(lastDay) {}

  /// Sets how many transactions after the current one are available for obligations.
  void LeaveRoom(std::int64_t transactions) { room_ = transactions; }
  /// Returns whether another amount due on a day can be settled in time.
  bool CanPromise(const Obligation& obligation, Day due) const;
  void Promise(const Obligation& obligation, Day due, OpenItem&& item);

  std::int64_t Count() const { return static_cast<std::int64_t>(open_.size()); }
  /// Returns the obligation that is due first, if it is due by that day.
  std::optional<Obligation> DueBy(Day day) const;
  /// Settles an obligation and returns its open amounts.
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
