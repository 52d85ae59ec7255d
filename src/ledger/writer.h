#pragma once

#include <exception>
#include <filesystem>
#include <map>
#include <memory>
#include <tuple>
#include <unordered_map>

#include "database/connection.h"
#include "files/prepared_file.h"
#include "krnqb/booking.h"
#include "krnqb/observer.h"
#include "ledger/records.h"

namespace krnqb::ledger {

/// Writes the ledger of one import: the lines that were read, what was booked for them or why nothing was,
/// and the cells. The ledger appears under its name only when the import has come to its end.
class LedgerWriter : public BookingReceiver {
 public:
  /// Creates the ledger beside its place; links to `file` are followed. An earlier ledger in that place is
  /// replaced later. Throws Error if the file cannot be created, or if anything but a ledger or an empty file
  /// is in its place. Every step ends soon after `interrupted` returns true. `operations` must outlive the
  /// object.
  LedgerWriter(const std::filesystem::path& file, database::Interruption interrupted,
               files::FileOperations& operations);
  ~LedgerWriter() override;
  LedgerWriter(const LedgerWriter&) = delete;
  LedgerWriter& operator=(const LedgerWriter&) = delete;

  // A failure ends the writing; `Finish` reports it.
  void ReadLine(const SourceLine& line) noexcept override;
  void Book(const Booking& booking) noexcept override;
  void WriteCell(const WrittenCell& cell) noexcept override;
  /// Keeps why an amount was left out; ignores notices of other kinds.
  void LeaveOut(const Notice& notice) noexcept;

  /// Completes the ledger. Throws the first Error that occurred since the object was created.
  void Finish(const LedgerFacts& facts);
  /// Gives the finished ledger its name. Throws Error if that fails.
  void Place();
  /// Leaves the ledger in place for good; otherwise the destructor restores what was there before.
  void Keep() noexcept;

 private:
  struct Statements;
  using SlotKey = std::tuple<AmountGroup, std::int64_t, std::int16_t, std::int16_t>;

  template <typename Step>
  void Try(Step&& step) noexcept;
  std::int64_t DocumentOf(const SourceLine& line);
  std::int64_t SlotOf(const AmountSlot& slot);
  std::int64_t KeyOf(std::string_view name);
  std::int64_t CellIn(const WrittenCell& cell);
  void Put(std::string_view name, std::string_view value);

  files::PreparedFile file_;
  std::unique_ptr<database::Connection> database_;
  std::unique_ptr<database::Transaction> transaction_;
  std::unique_ptr<Statements> statements_;
  std::exception_ptr failure_;
  LedgerDocument document_;                                   // the latest one
  std::unordered_map<std::int64_t, std::int64_t> keys_;       // of names: the first name that compares equal
  std::unordered_map<std::string, std::int64_t> firstNames_;  // by folded name
  std::map<SlotKey, std::int64_t> slots_;
  std::map<std::tuple<std::int64_t, std::int64_t, std::int32_t, std::int32_t>, std::int64_t> cells_;
};

/// Throws Error unless a ledger may be written to `file`: nothing, an empty file or a ledger is there.
void RequireReplaceable(const std::filesystem::path& file);

}  // namespace krnqb::ledger
