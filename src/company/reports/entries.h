#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "company/records/database.h"

namespace krnqb::company {

/// What a sale of inventory cost.
struct CostOfSale {
  double quantity = 0;  ///< pieces sold; negative for a return
  double unitCost = 0;  ///< the item's average cost, in hundredths of the currency per piece
};

/// An amount that a transaction posts to an account of a profit and loss: one of type Income,
/// CostOfGoodsSold, Expense, OtherIncome or OtherExpense. Texts that the record does not have are empty.
///
/// Several entries may have the same transaction, line and account: a sale of inventory whose item has one
/// account for income and cost, and the discounts of one payment.
struct LedgerEntry {
  std::string transactionId;    ///< TxnID
  std::string lineId;           ///< TxnLineID; empty for a total, a discount and the line of a charge
  std::string_view kind;        ///< the record's element, such as "BillRet"
  std::string date;             ///< YYYY-MM-DD
  std::string referenceNumber;  ///< RefNumber
  std::string name;             ///< full name of the customer, vendor or payee, else that of the line
  std::string lineElement;      ///< such as "ExpenseLineRet"; empty for a total or a discount
  bool inItemGroup = false;     ///< whether the line is one of an item group's
  std::string itemId;           ///< ListID of the item through which the amount is posted
  std::string accountId;        ///< ListID
  std::string_view accountType;
  /// In hundredths of the currency, as a profit and loss shows it: income positive if credited, costs and
  /// expenses positive if debited.
  std::int64_t amount = 0;
  std::optional<CostOfSale> cost;  ///< of a cost of sale; the amount is quantity x unit cost, rounded
};

/// Receives entries one by one; an entry is valid only during the call.
using LedgerEntryReceiver = std::function<void(const LedgerEntry&)>;

/// Passes the entries from `firstDay` to `lastDay` inclusive, both YYYY-MM-DD, to `receive`: by date, on a
/// day in the order in which the transactions were first loaded, and in the order of their lines. Postings to
/// accounts that the company does not have, or through items that it does not have, are left out, as in its
/// reports: the entries of an account and a month add up to what the profit and loss shows. Keeps one record
/// in memory. Throws Error `company_error::cannotOpen` if the file is damaged.
void ReadLedgerEntries(const Database& database, std::string_view firstDay, std::string_view lastDay,
                       const LedgerEntryReceiver& receive);

/// Returns the TxnIDs of the invoices and sales receipts from `firstDay` to `lastDay` that are pending, and
/// therefore posted nowhere yet. Throws Error as `ReadLedgerEntries` does.
std::vector<std::string> ReadPendingSales(const Database& database, std::string_view firstDay,
                                          std::string_view lastDay);

}  // namespace krnqb::company
