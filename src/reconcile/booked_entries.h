#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "krnqb/booking.h"
#include "krnqb/error.h"
#include "krnqb/observer.h"
#include "reconcile/line_keys.h"
#include "reconcile/work_table.h"

namespace krnqb::reconcile {

/// An amount that an import books for a line of a transaction.
struct BookedEntry {
  std::uint32_t key = 0;          ///< the line's, see `LineKeys`
  std::uint32_t transaction = 0;  ///< its number in the work table
  std::uint32_t line = 0;         ///< of the work table
  std::uint8_t month = 0;         ///< from 0
  BookingRule rule = BookingRule::ChargedToExpense;
  bool billedAgain = false;    ///< see `Booking`
  bool quantityAsOne = false;  ///< CostOfSale: the quantity is a text that is not a number
  bool costCut = false;        ///< the average cost could be read only in part
  ExactAmount amount = {};
};

/// A planned row that an import writes, and the accounts whose amounts it gets.
struct ImportedRow {
  Group group = Group::Sales;
  std::string name;
  std::vector<std::string> accounts;  ///< one, or those that the row "Depreciation" adds up

  /// Returns whether it is the row of one account.
  bool IsAccountRow() const;
};

/// Collects what an import books in its own twelve months: the sums go into the work table, with the causes
/// that only the import knows; the amounts of lines are kept.
class BookedEntries final : public BookingReceiver {
 public:
  /// Both references must outlive the object.
  BookedEntries(WorkTable& table, LineKeys& keys) noexcept : table_(table), keys_(keys) {}

  void ReadLine(const SourceLine& line) noexcept override;
  void Book(const Booking& booking) noexcept override;
  void WriteCell(const WrittenCell& cell) noexcept override;

  /// Keeps the reason for which a line was left out.
  void LeftOut(const Skipped& skipped) noexcept;

  /// The average cost of the current line's item could be read only in part.
  void CutCost() noexcept { costCut_ = true; }

  /// Returns the amounts of lines, in the order in which they were booked.
  std::vector<BookedEntry>& Entries() noexcept { return entries_; }

  /// Returns the rows that the import writes, in the order of their blocks.
  const std::vector<ImportedRow>& Rows() const noexcept { return rows_; }

  /// Returns whether the import has read the line with this number.
  bool HasRead(std::uint32_t key) const noexcept { return key < lines_.size() && lines_[key].isRead; }
  /// Returns the first reason for which a line was left out; nullopt if there was none.
  std::optional<SkipReason> ReasonOf(std::uint32_t key) const noexcept {
    return key < lines_.size() ? lines_[key].reason : std::nullopt;
  }
  /// Returns whether the amounts come from reports.
  bool FromReports() const noexcept { return fromReports_; }

  /// Throws the error that interrupted the collecting, such as Error 7, if there was one.
  void RequireComplete() const;

 private:
  void BookLine(const Booking& booking, MonthAmounts& month, BookedEntry entry);
  void BookReportCell(const Booking& booking, MonthAmounts& month, std::uint32_t line);

  WorkTable& table_;
  LineKeys& keys_;
  std::vector<BookedEntry> entries_;
  std::vector<ImportedRow> rows_;
  struct Line {
    bool isRead = false;
    std::optional<SkipReason> reason;  // the first one for which it was left out
  };
  std::vector<Line> lines_;  // by key
  struct ReportCell {
    ExactAmount amount;
    ExactAmount cut;  // what it has more than its text says, because that was read only in part
  };
  std::unordered_map<std::uint64_t, ReportCell> reportCells_;  // the last one of a line and month
  std::uint32_t key_ = 0;                                      // of the current line
  std::uint32_t transaction_ = 0;                              // of the current line
  bool costCut_ = false;                                       // of the current line
  bool inPastPeriod_ = false;  // whether the current line is read for past performance
  bool fromReports_ = false;
  std::optional<Error> failure_;
};

}  // namespace krnqb::reconcile
