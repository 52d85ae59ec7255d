#include "ledger/writer.h"

#include <fmt/format.h>

#include <array>
#include <fstream>
#include <utility>

#include "database/storage/format.h"
#include "files/identity.h"
#include "krnqb/error.h"
#include "krnqb/keyed_collection.h"
#include "ledger/names.h"
#include "ledger/schema.h"
#include "support/path_text.h"

namespace krnqb::ledger {
namespace {

using database::Statement;

void BindPeriod(Statement& statement, int parameter, std::optional<std::int16_t> period) {
  if (period) {
    statement.Bind(parameter, static_cast<std::int64_t>(*period));
  } else {
    statement.BindNull(parameter);
  }
}

void BindOptional(Statement& statement, int parameter, std::optional<double> number) {
  if (number) {
    statement.Bind(parameter, *number);
  } else {
    statement.BindNull(parameter);
  }
}

void BindUnless0(Statement& statement, int parameter, std::int64_t number) {
  if (number != 0) {
    statement.Bind(parameter, number);
  } else {
    statement.BindNull(parameter);
  }
}

template <typename Number>
std::int64_t Stored(Number number) noexcept {
  return static_cast<std::int64_t>(number);
}

bool IsSame(const LedgerDocument& document, const SourceLine& line) noexcept {
  return document.id != 0 && document.request == line.request && document.pastPeriod == line.pastPeriod &&
         document.transactionId == line.transactionId && document.date == line.date &&
         document.number == line.referenceNumber && document.party == line.party;
}

std::unique_ptr<database::Connection> NewLedger(const std::filesystem::path& file,
                                                database::Interruption interrupted) {
  auto database =
      std::make_unique<database::Connection>(ledgerFileKind, std::filesystem::absolute(file),
                                             database::FileAccess::ReadWrite, std::move(interrupted));
  // An unfinished ledger is of no use, so nothing is kept to undo it.
  database->Execute("PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF; PRAGMA cache_size = -32768");
  return database;
}

std::filesystem::path ReplaceablePlace(const std::filesystem::path& file) {
  RequireReplaceable(file);
  return files::LinkTarget(file);
}

}  // namespace

struct LedgerWriter::Statements {
  explicit Statements(const database::Connection& database)
      : names(database),
        document(database.Prepare("INSERT INTO document VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)")),
        line(database.Prepare("INSERT INTO line VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12)")),
        slot(database.Prepare("INSERT INTO slot VALUES (?1, ?2, ?3, ?4, ?5)")),
        booking(database.Prepare("INSERT INTO booking VALUES (NULL, ?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, "
                                 "?11, ?12, ?13, ?14, ?15)")),
        leftOut(database.Prepare(
            "INSERT INTO left_out VALUES (NULL, ?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11)")),
        cell(database.Prepare("REPLACE INTO cell VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9)")),
        forgetTerms(database.Prepare("DELETE FROM term WHERE cell = ?1")),
        term(database.Prepare("INSERT INTO term VALUES (?1, ?2, ?3, ?4)")),
        fact(database.Prepare("INSERT INTO fact VALUES (?1, ?2)")) {}

  NameStore names;
  Statement document;
  Statement line;
  Statement slot;
  Statement booking;
  Statement leftOut;
  Statement cell;
  Statement forgetTerms;
  Statement term;
  Statement fact;
};

LedgerWriter::LedgerWriter(const std::filesystem::path& file, database::Interruption interrupted,
                           files::FileOperations& operations)
    : file_(ReplaceablePlace(file), operations),
      database_(NewLedger(file_.Temporary(), std::move(interrupted))),
      transaction_(std::make_unique<database::Transaction>(*database_)) {
  CreateTables(*database_);
  statements_ = std::make_unique<Statements>(*database_);
}

LedgerWriter::~LedgerWriter() {
  statements_.reset();
  transaction_.reset();
}

// After a failure nothing more is written.
template <typename Step>
void LedgerWriter::Try(Step&& step) noexcept {
  if (failure_) return;
  try {
    std::forward<Step>(step)();
  } catch (...) {
    failure_ = std::current_exception();
  }
}

void LedgerWriter::ReadLine(const SourceLine& line) noexcept {
  Try([&] {
    NameStore& names = statements_->names;
    statements_->line.Bind(1, line.number)
        .Bind(2, DocumentOf(line))
        .Bind(3, Stored(line.month))
        .Bind(4, line.lineId)
        .Bind(5, names.IdOf(line.element))
        .Bind(6, names.IdOf(line.customer))
        .Bind(7, names.IdOf(line.account))
        .Bind(8, names.IdOf(line.accountName))
        .Bind(9, names.IdOf(line.item))
        .Bind(10, names.IdOf(line.itemName))
        .Bind(11, line.amount)
        .Bind(12, line.quantity)
        .Run();
  });
}

std::int64_t LedgerWriter::DocumentOf(const SourceLine& line) {
  if (IsSame(document_, line)) return document_.id;
  document_ = {.id = document_.id + 1,
               .request = line.request,
               .pastPeriod = line.pastPeriod,
               .transactionId = std::string(line.transactionId),
               .date = std::string(line.date),
               .number = std::string(line.referenceNumber),
               .party = std::string(line.party)};
  Statement& insert = statements_->document;
  insert.Bind(1, document_.id).Bind(2, Stored(line.request));
  BindPeriod(insert, 3, line.pastPeriod);
  insert.Bind(4, line.number)
      .Bind(5, line.transactionId)
      .Bind(6, line.date)
      .Bind(7, line.referenceNumber)
      .Bind(8, statements_->names.IdOf(line.party))
      .Run();
  return document_.id;
}

void LedgerWriter::Book(const Booking& booking) noexcept {
  Try([&] {
    NameStore& names = statements_->names;
    Statement& insert = statements_->booking;
    insert.Bind(1, SlotOf(booking.slot))
        .Bind(2, Stored(booking.rule))
        .Bind(3, booking.amount)
        .Bind(4, Stored(booking.replaces));
    BindUnless0(insert, 5, booking.line == nullptr ? 0 : booking.line->number);
    insert.Bind(6, names.IdOf(booking.account)).Bind(7, names.IdOf(booking.accountName));
    if (booking.line != nullptr && booking.line->amount == booking.text) {
      insert.BindNull(8);
    } else {
      insert.Bind(8, booking.text);
    }
    BindOptional(insert, 9, booking.quantity);
    BindOptional(insert, 10, booking.averageCost);
    BindUnless0(insert, 11, booking.billedLine);
    insert.Bind(12, Stored(booking.billedAgain))
        .Bind(13, Stored(booking.request))
        .Bind(14, names.IdOf(booking.fromDate))
        .Bind(15, names.IdOf(booking.toDate))
        .Run();
  });
}

// Names are folded once, since most slots are named again and again.
std::int64_t LedgerWriter::KeyOf(std::string_view name) {
  const std::int64_t id = statements_->names.IdOf(name);
  if (const auto known = keys_.find(id); known != keys_.end()) return known->second;
  const std::int64_t first = firstNames_.try_emplace(FoldedKey(name), id).first->second;
  keys_.emplace(id, first);
  return first;
}

std::int64_t LedgerWriter::SlotOf(const AmountSlot& slot) {
  const std::int64_t name = KeyOf(slot.name);
  const std::int64_t next = Stored(slots_.size()) + 1;
  const auto [found, isNew] =
      slots_.try_emplace({slot.group, name, slot.number, slot.pastPeriod.value_or(0)}, next);
  if (isNew) {
    Statement& insert = statements_->slot;
    insert.Bind(1, next).Bind(2, Stored(slot.group)).Bind(3, name).Bind(4, Stored(slot.number));
    BindPeriod(insert, 5, slot.pastPeriod);
    insert.Run();
  }
  return found->second;
}

void LedgerWriter::WriteCell(const WrittenCell& cell) noexcept {
  Try([&] {
    NameStore& names = statements_->names;
    const std::int64_t id = CellIn(cell);
    statements_->forgetTerms.Bind(1, id).Run();  // a cell that is written again has only the new ones
    statements_->cell.Bind(1, id)
        .Bind(2, Stored(cell.content))
        .Bind(3, names.IdOf(cell.table))
        .Bind(4, names.IdOf(cell.block))
        .Bind(5, names.IdOf(cell.row))
        .Bind(6, Stored(cell.rowNumber))
        .Bind(7, Stored(cell.column))
        .Bind(8, Stored(cell.number))
        .Bind(9, cell.text)
        .Run();
    std::int64_t position = 0;
    for (const CellTerm& term : cell.terms) {
      statements_->term.Bind(1, id)
          .Bind(2, ++position)
          .Bind(3, SlotOf(term.slot))
          .Bind(4, Stored(term.subtracted))
          .Run();
    }
  });
}

std::int64_t LedgerWriter::CellIn(const WrittenCell& cell) {
  NameStore& names = statements_->names;
  const std::int64_t next = Stored(cells_.size()) + 1;
  return cells_
      .try_emplace({names.IdOf(cell.table), names.IdOf(cell.block), cell.rowNumber, cell.column}, next)
      .first->second;
}

void LedgerWriter::LeaveOut(const Notice& notice) noexcept {
  if (!notice.skipped) return;
  Try([&] {
    const Skipped& skipped = *notice.skipped;
    NameStore& names = statements_->names;
    Statement& insert = statements_->leftOut;
    BindUnless0(insert, 1, skipped.line);
    insert.Bind(2, Stored(skipped.reason)).Bind(3, Stored(skipped.kind));
    BindPeriod(insert, 4, notice.place.pastPeriod);
    insert.Bind(5, Stored(notice.place.request.value_or(0)))
        .Bind(6, names.IdOf(notice.place.fromDate))
        .Bind(7, names.IdOf(notice.place.toDate))
        .Bind(8, names.IdOf(skipped.source))
        .Bind(9, names.IdOf(skipped.account))
        .Bind(10, names.IdOf(skipped.accountName))
        .Bind(11, skipped.amount)
        .Run();
  });
}

void LedgerWriter::Put(std::string_view name, std::string_view value) {
  statements_->fact.Bind(1, name).Bind(2, value).Run();
}

void LedgerWriter::Finish(const LedgerFacts& facts) {
  Try([&] {
    Put("program", facts.program);
    Put("when", facts.when);
    Put("plan", facts.plan);
    Put("plan_digest", facts.planDigest);
    Put("plan_version", facts.planVersion);
    Put("company", facts.company);
    Put("company_name", facts.companyName);
    Put("product", facts.product);
    Put("plan_start", facts.planStart);
    Put("period_from", facts.periodFrom);
    Put("period_to", facts.periodTo);
    Put("options", fmt::format("{}", fmt::join(facts.options, "\n")));
    CreateIndexes(*database_);
    transaction_->Commit();
  });
  statements_.reset();
  transaction_.reset();
  database_.reset();
  if (failure_) std::rethrow_exception(failure_);
}

void LedgerWriter::Place() {
  file_.Place();
}

void LedgerWriter::Keep() noexcept {
  file_.Keep();
}

void RequireReplaceable(const std::filesystem::path& file) {
  std::error_code unknown;
  const std::filesystem::file_status status = std::filesystem::status(file, unknown);
  if (!std::filesystem::exists(status)) return;
  const auto refuse = [&](std::string_view what) {
    throw Error(unusableFile,
                fmt::format("{} is {}, and only an earlier ledger is overwritten", TextOfPath(file), what));
  };
  if (!std::filesystem::is_regular_file(status)) refuse("not a regular file");
  if (std::filesystem::file_size(file, unknown) == 0) return;
  std::ifstream stream(file, std::ios::binary);
  database::DatabaseHeader header{};
  stream.read(static_cast<char*>(static_cast<void*>(header.data())), header.size());
  if (!stream || !database::HasMark(header, database::ledgerMark)) refuse("another kind of file");
}

}  // namespace krnqb::ledger
