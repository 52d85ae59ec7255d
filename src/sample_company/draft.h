#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "company/records/document.h"
#include "sample_company/company.h"
#include "sample_company/text.h"

namespace krnqb::sample_company {

/// The date and time of a transaction and its price level.
struct Occasion {
  Day day;
  std::string dayText;
  std::int64_t secondOfDay = 0;
  std::int64_t pricePermille = 1000;  ///< of the list prices
};

/// A customer to whom a purchase line is charged.
struct ChargedCustomer {
  std::string_view reference;
  bool isBilled = false;  ///< at the end of the books, as QuickBooks shows it
};

/// The item and amount of a sales line.
struct Sold {
  std::size_t item = 0;
  std::int64_t hundredths = 0;  ///< of pieces or hours; negative for returned goods
  Cents rate = 0;
  bool isService = false;  ///< has a service date
};

/// A transaction being written, lines first because the head contains their total. Each line is posted to the
/// company's accounts and stock at once. One object is reused for all transactions.
class Draft {
 public:
  explicit Draft(Company& company)
      : company_(company), kind_(&company::RecordKinds().back()), postings_(*kind_) {}

  void Begin(std::string_view recordElement, const Occasion& occasion);

  // Memos and descriptions must be escaped.

  void ExpenseLine(std::size_t account, Cents amount, std::string_view memo,
                   const std::optional<ChargedCustomer>& customer = std::nullopt);
  void BoughtLine(std::size_t index, std::int64_t pieces, Cents cost,
                  const std::optional<ChargedCustomer>& customer = std::nullopt);
  /// Adds the purchase of a group: its members, in their quantities and at their costs.
  void BoughtGroup(std::size_t group, std::int64_t pieces, std::int64_t pricePermille);

  /// Returns the line's amount.
  Cents SoldLine(const Sold& sold);
  void SoldGroup(std::size_t group, std::int64_t pieces, std::int64_t pricePermille);
  void DiscountLine(std::size_t discount, Cents discounted);
  /// Adds a payment on account: an item without quantity and rate.
  void PaymentLine(Cents amount, std::string_view description);
  void DescriptionLine(std::string_view description);
  /// Opens the group in which expenses are invoiced; its lines have only descriptions and amounts.
  void OpenBilledCosts(Cents total);
  void BilledCostLine(std::string_view description, Cents amount);
  void CloseBilledCosts();

  Cents Total() const { return total_; }
  std::int64_t Lines() const { return lineCount_; }

  /// The text before the first line. `Begin` writes the id, the times and the number.
  ElementText& Head() { return head_; }
  /// Posts the total to the account that pays, owes, receives or is due it.
  void PostTotal(std::size_t account);
  /// Returns the record; `afterLines` is the text after its lines.
  company::CompanyRecord Finish(std::string_view afterLines);

 private:
  std::string_view SaleLine() const;
  std::string_view SaleGroup() const;
  void OpenLine(std::string_view element);
  void Charge(const std::optional<ChargedCustomer>& customer);
  void PostSold(const Item& item, Cents amount, std::int64_t hundredths);

  Company& company_;
  const company::RecordKind* kind_;
  bool isInvoice_ = false;
  std::string dayText_;
  std::int64_t enteredAt_ = 0;
  std::string id_;
  ElementText head_;
  ElementText lines_;
  company::PostingList postings_;
  Cents total_ = 0;
  std::int64_t lineCount_ = 0;
  std::int64_t lastNumber_ = 40;
  std::int64_t transactionCount_ = 0;
};

}  // namespace krnqb::sample_company
