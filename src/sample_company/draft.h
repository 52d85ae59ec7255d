#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "company/records/document.h"
#include "sample_company/company.h"
#include "sample_company/text.h"

namespace krnqb::sample_company {

/// When a transaction is entered.
struct Occasion {
  Day day;
  std::string dayText;
  std::int64_t secondOfDay = 0;
  std::int64_t pricePermille = 1000;  ///< of the prices in the lists
};

/// A customer to whom a purchase line is charged.
struct ChargedCustomer {
  std::string_view reference;
  bool isBilled = false;  ///< or will be: QuickBooks shows the state at the end
};

/// What a line of a sale moves.
struct Sold {
  std::size_t item = 0;
  std::int64_t hundredths = 0;  ///< of pieces or hours; negative when goods come back
  Cents rate = 0;
  bool isService = false;  ///< shows the day of the service
};

/// A transaction while it is written: its lines first, since its head tells what they come to. Each line is
/// posted to the company's accounts and stock at once. Used again and again, for one transaction at a time.
class Draft {
 public:
  explicit Draft(Company& booksCompany)
      : company_(booksCompany), kind_(&company::RecordKinds().back()), postings_(*kind_) {}

  void Begin(std::string_view recordElement, const Occasion& occasion);

  // Memos and descriptions are escaped already.

  void ExpenseLine(std::size_t account, Cents amount, std::string_view memo,
                   const std::optional<ChargedCustomer>& customer = std::nullopt);
  void BoughtLine(std::size_t index, std::int64_t pieces, Cents cost,
                  const std::optional<ChargedCustomer>& customer = std::nullopt);
  /// A purchase of a group, which is so many of each of its members at their costs.
  void BoughtGroup(std::size_t group, std::int64_t pieces, std::int64_t pricePermille);

  /// Gives the line's amount.
  Cents SoldLine(const Sold& sold);
  void SoldGroup(std::size_t group, std::int64_t pieces, std::int64_t pricePermille);
  void DiscountLine(std::size_t discount, Cents discounted);
  /// A payment on account: an item, but neither quantity nor rate.
  void PaymentLine(Cents amount, std::string_view description);
  void DescriptionLine(std::string_view description);
  /// The group in which expenses are invoiced: only descriptions and amounts stand in it.
  void OpenBilledCosts(Cents total);
  void BilledCostLine(std::string_view description, Cents amount);
  void CloseBilledCosts();

  Cents Total() const { return total_; }
  std::int64_t Lines() const { return lineCount_; }

  /// Where the head is written, up to the first line. `Begin` has written the id, the times and the number.
  ElementText& Head() { return head_; }
  /// Posts what the transaction comes to: at the account that pays it, owes it, receives it or is due it.
  void PostTotal(std::size_t account);
  /// The record, with what stands after its lines.
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
