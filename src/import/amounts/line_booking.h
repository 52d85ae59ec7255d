#pragma once

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>

#include "import/amounts/transaction_line.h"
#include "import/amounts/transaction_query.h"
#include "import/context.h"
#include "import/lists/account_list.h"
#include "import/lists/cost_of_sale.h"
#include "krnqb/booking.h"
#include "support/text_map.h"

namespace krnqb {

/// Books the lines of one query's response for `ReadExpenseTransactions` and `ReadSalesTransactions`.
class LineBooking {
 public:
  /// Both references must outlive the booking.
  LineBooking(ImportContext& importContext, const TransactionQuery& transactionQuery, Operation operation)
      : context(importContext),
        query(transactionQuery),
        place(transactionQuery.At(operation)),
        receiver_(importContext.observer.Bookings()) {}

  /// Returns whether bookings are received.
  bool BookingsReceived() const noexcept { return receiver_ != nullptr; }

  /// Begins the next line. Everything below is about this line.
  void Begin(const TransactionLine& line);

  /// Returns the number of the line, if bookings are received.
  std::int64_t LineNumber() const noexcept { return source_.number; }

  /// Returns the line's amount. If it is missing or not a number, reports the line as skipped and returns 0.
  double AmountOf(const TransactionLine& line);

  /// Adds an amount to the query's month of the account's top-level account. Returns false if the group's
  /// list does not contain the account. If the subtotal is missing or the sum is out of range, reports the
  /// line as skipped and returns true. `details` has the rule, and what else a receiver of bookings needs
  /// besides the account, the amount and the line.
  bool AddTo(AccountGroup group, std::string_view accountId, double amount, const TransactionLine& line,
             const Booking& details);

  /// Passes on an amount that was added to the subtotal with this name, if bookings are received.
  void Report(AccountGroup group, std::string_view name, std::string_view accountId, double amount,
              const TransactionLine& line, const Booking& details);

  /// Reports to the observer that a line was not booked. `account` is the id or name of the account or item
  /// concerned, or empty.
  void ReportSkipped(const TransactionLine& line, SkipReason reason, std::string_view account);

  /// Returns the full name of an item or account of the line: the line's own, or else that of the lists;
  /// empty if it is unknown. Valid as long as the line and the booking.
  std::string_view FullNameOf(const TransactionLine& line, std::string_view listId);

  /// Where the amounts of an account go.
  struct Target {
    const AccountList::RollUp*
        topLevel;          ///< the account's top-level account; its name is empty if it is missing
    cSubtotals* subtotal;  ///< that of the top-level account; null if it is missing
  };
  /// Returns where the amounts of an account in the group's list go. A failed search for its top-level
  /// account is reported to the observer.
  const Target& TargetOf(AccountGroup group, std::string_view accountId);

  /// Returns the cost of sale that a posting is or that its marker contains. Throws Error 91 if the marker
  /// cannot be parsed.
  const CostOfSale& CostOfSaleIn(const SalePosting& posting);

  ImportContext& context;
  const TransactionQuery& query;
  const Place place;

 private:
  SkipKind KindOf(SkipReason reason) const;
  const std::string& ListNameOf(std::string_view listId);

  BookingReceiver* const receiver_;
  SourceLine source_;

  // Full names in the lists, because the accounts and items of many lines are the same.
  TextMap<std::string> listNames_;
  // Parsed markers, because many lines sell the same item.
  std::unordered_map<std::string, CostOfSale> costs_;
  // For each group by account, because many lines post to the same one.
  std::array<TextMap<Target>, 3> targets_;
};

/// Returns the line's item, or else its item group, or else the item group that contains it; empty if it has
/// neither.
std::string_view ItemOf(const TransactionLine& line) noexcept;

/// Returns the sums that are built of the accounts of a group.
AmountGroup AmountGroupOf(AccountGroup group) noexcept;

/// Return the account list and the subtotals of a group.
const AccountList& AccountsOf(const ImportState& state, AccountGroup group);
std::optional<SubtotalCollection>& SubtotalsOf(ImportState& state, AccountGroup group);

}  // namespace krnqb
