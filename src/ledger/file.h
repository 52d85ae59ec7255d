#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "database/connection.h"
#include "ledger/records.h"

namespace krnqb::ledger {

/// A ledger that is open for reading. It shows one state of the file as long as it is open.
///
/// Every operation throws Error 75 if the file cannot be used; the description distinguishes a missing file,
/// a file that is not a ledger, and a damaged one.
class LedgerFile {
 public:
  static LedgerFile Open(const std::filesystem::path& file, database::Interruption interrupted = {});
  ~LedgerFile();
  LedgerFile(const LedgerFile&) = delete;
  LedgerFile& operator=(const LedgerFile&) = delete;
  LedgerFile(LedgerFile&& other) noexcept;
  LedgerFile& operator=(LedgerFile&& other) noexcept;

  const std::filesystem::path& Path() const noexcept;
  const LedgerFacts& Facts() const noexcept;

  /// Returns all cells with their terms, in the order in which they were first written.
  const std::vector<LedgerCell>& Cells() const;
  /// Returns all sums.
  const std::vector<LedgerSlot>& Slots() const;
  /// Returns the sums of an account's months that were read for a period of past performance, in the order
  /// of the months.
  std::vector<LedgerSlot> PastMonths(AmountGroup group, std::int16_t period, std::string_view account) const;
  /// Returns a sum; throws Error 75 if the ledger has no such one.
  const LedgerSlot& Slot(std::int64_t id) const;

  /// Passes on the bookings of a sum in their order, each with whether a later one has replaced it.
  void ForEachBooking(std::int64_t slot,
                      const std::function<void(const LedgerBooking&, bool replaced)>& receive) const;
  /// Returns how many bookings make up a sum: those that no later one has replaced.
  std::int64_t BookingCount(std::int64_t slot) const;
  /// Returns a sum's amount: its bookings, added as doubles in their order.
  double SumOf(std::int64_t slot) const;
  /// Returns a cell's amount: its terms, added as doubles in their order.
  double AmountOf(const LedgerCell& cell) const;

  /// Returns the line with a number; throws Error 75 if the ledger has no such one.
  LedgerLine Line(std::int64_t number) const;
  LedgerDocument Document(std::int64_t id) const;
  /// Returns the documents of a transaction in the order in which they were read.
  std::vector<LedgerDocument> DocumentsOf(std::string_view transactionId) const;
  /// Returns at most `most` ids of transactions, each once, which begin like this one.
  std::vector<std::string> TransactionIds(std::string_view beginning, std::size_t most) const;
  std::vector<LedgerLine> LinesOf(const LedgerDocument& document) const;
  /// Returns the bookings of a line in their order, each with whether a later one of its sum has replaced it.
  std::vector<std::pair<LedgerBooking, bool>> BookingsOf(const LedgerLine& line) const;
  /// Returns why amounts of a line were left out.
  std::vector<LedgerOmission> OmissionsOf(const LedgerLine& line) const;
  /// Returns the bookings that take back a billed expense line.
  std::vector<LedgerBooking> TakenBack(const LedgerLine& line) const;
  std::int64_t LineCount() const;

 private:
  struct State;
  explicit LedgerFile(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

}  // namespace krnqb::ledger
