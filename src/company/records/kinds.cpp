#include "company/records/kinds.h"

#include <algorithm>
#include <array>

namespace krnqb::company {
namespace {

using enum RecordShape;

constexpr std::array kinds = {
    RecordKind{"CompanyRet", "Company", Setting},
    RecordKind{"PreferencesRet", "Preferences", Setting},
    RecordKind{"AccountRet", "Account", ListEntry},
    RecordKind{"ItemServiceRet", "Item", ListEntry},
    RecordKind{"ItemNonInventoryRet", "Item", ListEntry},
    RecordKind{"ItemOtherChargeRet", "Item", ListEntry},
    RecordKind{"ItemInventoryRet", "Item", ListEntry},
    RecordKind{"ItemInventoryAssemblyRet", "Item", ListEntry},
    RecordKind{"ItemSubtotalRet", "Item", ListEntry},
    RecordKind{"ItemDiscountRet", "Item", ListEntry},
    RecordKind{"ItemPaymentRet", "Item", ListEntry},
    RecordKind{"ItemSalesTaxRet", "Item", ListEntry},
    RecordKind{"ItemSalesTaxGroupRet", "Item", ListEntry},
    RecordKind{"ItemGroupRet", "Item", ListEntry},
    RecordKind{"BillRet", "Bill", RecordShape::Transaction},
    RecordKind{"CheckRet", "Check", RecordShape::Transaction},
    RecordKind{"CreditCardChargeRet", "CreditCardCharge", RecordShape::Transaction},
    RecordKind{"InvoiceRet", "Invoice", RecordShape::Transaction},
    RecordKind{"SalesReceiptRet", "SalesReceipt", RecordShape::Transaction},
    RecordKind{"JournalEntryRet", "JournalEntry", RecordShape::Transaction},
    RecordKind{"CreditMemoRet", "CreditMemo", RecordShape::Transaction},
    RecordKind{"VendorCreditRet", "VendorCredit", RecordShape::Transaction},
    RecordKind{"CreditCardCreditRet", "CreditCardCredit", RecordShape::Transaction},
    RecordKind{"DepositRet", "Deposit", RecordShape::Transaction},
    RecordKind{"ReceivePaymentRet", "ReceivePayment", RecordShape::Transaction},
    RecordKind{"BillPaymentCheckRet", "BillPaymentCheck", RecordShape::Transaction},
    RecordKind{"BillPaymentCreditCardRet", "BillPaymentCreditCard", RecordShape::Transaction},
    RecordKind{"ItemReceiptRet", "ItemReceipt", RecordShape::Transaction},
    RecordKind{"ChargeRet", "Charge", RecordShape::Transaction},
    RecordKind{"InventoryAdjustmentRet", "InventoryAdjustment", RecordShape::Transaction},
};

constexpr std::array<std::string_view, 16> accountTypes = {
    "Bank",       "AccountsReceivable",    "OtherCurrentAsset", "FixedAsset", "OtherAsset", "AccountsPayable",
    "CreditCard", "OtherCurrentLiability", "LongTermLiability", "Equity",     "Income",     "CostOfGoodsSold",
    "Expense",    "OtherIncome",           "OtherExpense",      "NonPosting"};

}  // namespace

std::span<const RecordKind> RecordKinds() noexcept {
  return kinds;
}

const RecordKind* FindRecordKind(std::string_view element) noexcept {
  const auto* const found = std::ranges::find(kinds, element, &RecordKind::element);
  return found == kinds.end() ? nullptr : &*found;
}

std::size_t KindOrder(const RecordKind& kind) noexcept {
  return static_cast<std::size_t>(&kind - kinds.data());
}

std::optional<std::size_t> AccountTypeOrder(std::string_view accountType) noexcept {
  const auto* const found = std::ranges::find(accountTypes, accountType);
  if (found == accountTypes.end()) return std::nullopt;
  return static_cast<std::size_t>(found - accountTypes.begin());
}

bool IsTransactionLine(std::string_view element) noexcept {
  return element.ends_with("LineRet") || element.ends_with("LineGroupRet");
}

}  // namespace krnqb::company
