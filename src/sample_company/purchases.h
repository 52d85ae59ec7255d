#pragma once

#include <cstdint>
#include <deque>
#include <vector>

#include "sample_company/draft.h"
#include "sample_company/obligations.h"
#include "sample_company/random.h"

namespace krnqb::sample_company {

/// Writes the ordinary purchases of a company: bills, checks and credit card charges with expense lines, item
/// lines and groups, some of them for customers.
class Purchases {
 public:
  Purchases(Company& company, Draft& draft, Obligations& obligations, Random& random);

  /// Begins a year, in which every lone expense account needs a posting.
  void BeginYear();
  /// Returns how many of them have no posting yet.
  std::int64_t Uncovered() const { return static_cast<std::int64_t>(uncovered_.size()); }

  company::CompanyRecord Bill(const Occasion& occasion);
  company::CompanyRecord Check(const Occasion& occasion);
  company::CompanyRecord CardCharge(const Occasion& occasion);
  /// A check with one line, to an expense account without a posting this year.
  company::CompanyRecord CoveringCheck(const Occasion& occasion);
  /// A check for all open bills of a vendor.
  company::CompanyRecord VendorPayment(const Occasion& occasion, std::size_t vendor);

  /// Writes the head and the end of a check drawn on a bank account.
  company::CompanyRecord FinishCheck(const Occasion& occasion, std::size_t bank, std::string_view payee,
                                     std::string_view memo);

  /// Puts an inventory item that has reached its reorder point on a later bill or check.
  void Reorder(std::size_t index);

 private:
  struct Shape {
    std::int64_t mostExpenses;
    std::int64_t mostItems;
    unsigned percentGroups;
  };
  void Lines(const Occasion& occasion, const Shape& shape);
  void ExpenseLine(const Occasion& occasion);
  void ItemLine(const Occasion& occasion);
  void BilledExpense(const Occasion& occasion, std::size_t account, Cents amount, std::string_view memo);
  void BilledItem(const Occasion& occasion, std::size_t item, std::int64_t pieces, Cents cost);
  std::size_t ExpenseAccount();
  const Party& Vendor(std::size_t vendor) const { return company_.people.vendors[vendor]; }

  Company& company_;
  Draft& draft_;
  Obligations& obligations_;
  Random& random_;
  std::vector<std::size_t> uncovered_;
  std::deque<std::size_t> toReorder_;
  std::int64_t lastBill_ = 1000;
  std::int64_t lastCheck_ = 3000;
};

}  // namespace krnqb::sample_company
