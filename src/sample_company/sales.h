#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "sample_company/draft.h"
#include "sample_company/obligations.h"
#include "sample_company/purchases.h"
#include "sample_company/random.h"

namespace krnqb::sample_company {

/// Writes the sales of a company: invoices, sales receipts and payments on account.
class Sales {
 public:
  /// `purchases` reorders the items that the sales take from stock.
  Sales(Company& company, Draft& draft, Obligations& obligations, Purchases& purchases, Random& random);

  company::CompanyRecord Invoice(const Occasion& occasion);
  company::CompanyRecord Receipt(const Occasion& occasion);
  /// An invoice for a customer's open costs.
  company::CompanyRecord CostInvoice(const Occasion& occasion, std::size_t customer);
  /// A sales receipt for all open invoices of a customer.
  company::CompanyRecord CustomerPayment(const Occasion& occasion, std::size_t customer);

 private:
  void Lines(const Occasion& occasion, std::int64_t count);
  void Line(const Occasion& occasion);
  void ServiceLine(const Occasion& occasion);
  void StockLine(const Occasion& occasion);
  void PieceLine(const Occasion& occasion, std::size_t index, std::int64_t pieces);
  void GroupLines(const Occasion& occasion);
  void BilledCosts(const std::vector<OpenItem>& costs);
  std::optional<std::size_t> ItemInStock(std::int64_t pieces);
  company::CompanyRecord FinishInvoice(const Occasion& occasion, std::size_t index);
  company::CompanyRecord FinishReceipt(const Occasion& occasion, const Party& customer);

  Company& company_;
  Draft& draft_;
  Obligations& obligations_;
  Purchases& purchases_;
  Random& random_;
  std::vector<std::string> paymentMethods_;  // the elements of a reference to each
  std::int64_t lastInvoice_ = 1000;
  std::int64_t lastReceipt_ = 300;
};

}  // namespace krnqb::sample_company
