#include "ledger/file.h"

#include <fmt/format.h>

#include <limits>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

#include "database/schema.h"
#include "krnqb/error.h"
#include "krnqb/keyed_collection.h"
#include "ledger/names.h"
#include "ledger/schema.h"
#include "support/path_text.h"

namespace krnqb::ledger {
namespace {

using database::Statement;

constexpr std::string_view bookingColumns =
    "SELECT b.id, b.slot, b.rule, b.amount, b.replaces, b.line, b.account, b.account_name, "
    "coalesce(b.text, (SELECT amount FROM line WHERE number = b.line)), b.quantity, b.average_cost, "
    "b.billed_line, b.billed_again, b.request, b.from_date, b.to_date FROM booking b ";
constexpr std::string_view lineColumns =
    "SELECT number, document, month, line_id, element, customer, account, account_name, item, item_name, "
    "amount, quantity FROM line ";
constexpr std::string_view documentColumns =
    "SELECT id, request, past_period, transaction_id, txn_date, number, party FROM document ";

std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::string Combined(std::string_view columns, std::string_view rest) {
  return fmt::format("{}{}", columns, rest);
}

}  // namespace

struct LedgerFile::State {
  State(std::filesystem::path file, database::Interruption interrupted)
      : path(std::move(file)),
        database(ledgerFileKind, path, database::FileAccess::ReadOnly, std::move(interrupted)),
        names(Checked(database, path)),
        lastReplacement(database.Prepare("SELECT max(id) FROM booking WHERE slot = ?1 AND replaces <> 0")),
        line(database.Prepare(Combined(lineColumns, "WHERE number = ?1"))),
        document(database.Prepare(Combined(documentColumns, "WHERE id = ?1"))) {}

  // Everything is read from one state of the file, and only if that is a ledger.
  static const database::Connection& Checked(const database::Connection& database,
                                             const std::filesystem::path& file) {
    database.Execute("BEGIN");
    CheckSchema(database, file);
    return database;
  }

  [[noreturn]] void Refuse(std::string_view reason) const {
    database::RefuseContents(ledgerFileKind, path, reason);
  }

  // Reads a number that this program has written as a smaller type.
  template <typename Number>
  Number NumberIn(const Statement& row, int column) const {
    const std::int64_t number = row.Integer(column);
    if (number < std::numeric_limits<Number>::min() || number > std::numeric_limits<Number>::max()) {
      Refuse("contains a number that is out of range");
    }
    return static_cast<Number>(number);
  }

  // `last` is the enumeration's last value.
  template <typename Enumeration>
  Enumeration ValueIn(const Statement& row, int column, Enumeration last) const {
    const std::int64_t number = row.Integer(column);
    if (number < 0 || number > static_cast<std::int64_t>(last)) {
      Refuse(fmt::format("contains the unknown value {}", number));
    }
    return static_cast<Enumeration>(number);
  }

  std::optional<std::int16_t> PeriodIn(const Statement& row, int column) const {
    if (row.IsNull(column)) return std::nullopt;
    return NumberIn<std::int16_t>(row, column);
  }

  const std::string& NameIn(const Statement& row, int column) { return names.TextOf(row.Integer(column)); }

  LedgerBooking BookingIn(const Statement& row) {
    LedgerBooking booking{.id = row.Integer(0),
                          .slot = row.Integer(1),
                          .rule = ValueIn(row, 2, BookingRule::PeriodTotal),
                          .amount = row.Real(3),
                          .replaces = row.Integer(4) != 0,
                          .line = row.Integer(5),
                          .account = NameIn(row, 6),
                          .accountName = NameIn(row, 7),
                          .text = std::string(row.Text(8)),
                          .billedLine = row.Integer(11),
                          .billedAgain = row.Integer(12) != 0,
                          .request = NumberIn<std::int32_t>(row, 13),
                          .fromDate = NameIn(row, 14),
                          .toDate = NameIn(row, 15)};
    if (!row.IsNull(9)) booking.quantity = row.Real(9);
    if (!row.IsNull(10)) booking.averageCost = row.Real(10);
    return booking;
  }

  LedgerLine LineIn(const Statement& row) {
    return {.number = row.Integer(0),
            .document = row.Integer(1),
            .month = NumberIn<std::int16_t>(row, 2),
            .lineId = std::string(row.Text(3)),
            .element = NameIn(row, 4),
            .customer = NameIn(row, 5),
            .account = NameIn(row, 6),
            .accountName = NameIn(row, 7),
            .item = NameIn(row, 8),
            .itemName = NameIn(row, 9),
            .amount = std::string(row.Text(10)),
            .quantity = std::string(row.Text(11))};
  }

  LedgerDocument DocumentIn(const Statement& row) {
    return {.id = row.Integer(0),
            .request = NumberIn<std::int32_t>(row, 1),
            .pastPeriod = PeriodIn(row, 2),
            .transactionId = std::string(row.Text(3)),
            .date = std::string(row.Text(4)),
            .number = std::string(row.Text(5)),
            .party = NameIn(row, 6)};
  }

  std::string Fact(std::string_view name) const {
    Statement select = database.Prepare("SELECT value FROM fact WHERE name = ?1");
    if (!select.Bind(1, name).Step()) Refuse(fmt::format("lacks the fact \"{}\"", name));
    return std::string(select.Text(0));
  }

  void ReadFacts() {
    facts = {.program = Fact("program"),
             .when = Fact("when"),
             .plan = Fact("plan"),
             .planDigest = Fact("plan_digest"),
             .planVersion = Fact("plan_version"),
             .company = Fact("company"),
             .companyName = Fact("company_name"),
             .product = Fact("product"),
             .planStart = Fact("plan_start"),
             .periodFrom = Fact("period_from"),
             .periodTo = Fact("period_to"),
             .options = Lines(Fact("options"))};
  }

  void ReadSlots() {
    Statement rows =
        database.Prepare("SELECT id, amount_group, name, number, past_period FROM slot ORDER BY id");
    while (rows.Step()) {
      const auto expected = static_cast<std::int64_t>(slots.size()) + 1;
      if (rows.Integer(0) != expected) Refuse(fmt::format("lacks the sum {}", expected));
      slots.push_back({.id = expected,
                       .group = ValueIn(rows, 1, AmountGroup::PastPerformance),
                       .name = NameIn(rows, 2),
                       .number = NumberIn<std::int16_t>(rows, 3),
                       .pastPeriod = PeriodIn(rows, 4)});
      const LedgerSlot& slot = slots.back();
      if (slot.pastPeriod) {
        pastMonths[{slot.group, *slot.pastPeriod, FoldedKey(slot.name)}].emplace(slot.number, slot.id);
      }
    }
  }

  void ReadCells() {
    Statement rows = database.Prepare(
        "SELECT id, content, plan_table, block, row_name, row_number, column_number, number, text FROM cell "
        "ORDER BY id");
    Statement terms = database.Prepare("SELECT slot, subtracted FROM term WHERE cell = ?1 ORDER BY position");
    while (rows.Step()) {
      LedgerCell& cell = cells.emplace_back(LedgerCell{.id = rows.Integer(0),
                                                       .content = ValueIn(rows, 1, CellContent::PastFigure),
                                                       .table = NameIn(rows, 2),
                                                       .block = NameIn(rows, 3),
                                                       .row = NameIn(rows, 4),
                                                       .rowNumber = NumberIn<std::int32_t>(rows, 5),
                                                       .column = NumberIn<std::int32_t>(rows, 6),
                                                       .number = NumberIn<std::int16_t>(rows, 7),
                                                       .text = std::string(rows.Text(8))});
      for (terms.Bind(1, cell.id); terms.Step();) {
        cell.terms.push_back({.slot = terms.Integer(0), .subtracted = terms.Integer(1) != 0});
      }
      terms.Reset();
    }
  }

  std::int64_t LastReplacement(std::int64_t slot) {
    lastReplacement.Bind(1, slot);
    const std::int64_t id = lastReplacement.Step() ? lastReplacement.Integer(0) : 0;
    lastReplacement.Reset();
    return id;
  }

  std::filesystem::path path;
  database::Connection database;
  LedgerFacts facts;
  std::vector<LedgerSlot> slots;
  // By group, period and folded name of the account: the sums by month.
  std::map<std::tuple<AmountGroup, std::int16_t, std::string>, std::map<std::int16_t, std::int64_t>>
      pastMonths;
  std::vector<LedgerCell> cells;
  // Of the database; they end before it.
  NameReader names;
  Statement lastReplacement;
  Statement line;
  Statement document;
};

LedgerFile::LedgerFile(std::unique_ptr<State> state) : state_(std::move(state)) {}
LedgerFile::~LedgerFile() = default;
LedgerFile::LedgerFile(LedgerFile&& other) noexcept = default;
LedgerFile& LedgerFile::operator=(LedgerFile&& other) noexcept = default;

LedgerFile LedgerFile::Open(const std::filesystem::path& file, database::Interruption interrupted) {
  std::error_code fault;
  const std::filesystem::file_status status = std::filesystem::status(file, fault);
  if (status.type() == std::filesystem::file_type::not_found) {
    throw Error(unusableFile, fmt::format("There is no ledger {}.", TextOfPath(file)));
  }
  if (status.type() != std::filesystem::file_type::none && !std::filesystem::is_regular_file(status)) {
    throw Error(unusableFile, fmt::format("The file {} is not a ledger.", TextOfPath(file)));
  }
  auto state = std::make_unique<State>(std::filesystem::absolute(file), std::move(interrupted));
  state->ReadFacts();
  state->ReadSlots();
  state->ReadCells();
  return LedgerFile(std::move(state));
}

const std::filesystem::path& LedgerFile::Path() const noexcept {
  return state_->path;
}

const LedgerFacts& LedgerFile::Facts() const noexcept {
  return state_->facts;
}

const std::vector<LedgerCell>& LedgerFile::Cells() const {
  return state_->cells;
}

const std::vector<LedgerSlot>& LedgerFile::Slots() const {
  return state_->slots;
}

std::vector<LedgerSlot> LedgerFile::PastMonths(AmountGroup group, std::int16_t period,
                                               std::string_view account) const {
  std::vector<LedgerSlot> months;
  const auto found = state_->pastMonths.find({group, period, FoldedKey(account)});
  if (found == state_->pastMonths.end()) return months;
  for (const auto& [month, slot] : found->second) months.push_back(Slot(slot));
  return months;
}

const LedgerSlot& LedgerFile::Slot(std::int64_t id) const {
  if (id < 1 || id > static_cast<std::int64_t>(state_->slots.size())) {
    state_->Refuse(fmt::format("lacks the sum {}", id));
  }
  return state_->slots[static_cast<std::size_t>(id) - 1];
}

void LedgerFile::ForEachBooking(
    std::int64_t slot, const std::function<void(const LedgerBooking&, bool replaced)>& receive) const {
  const std::int64_t last = state_->LastReplacement(slot);
  // Prepared anew, because `receive` may read the bookings of another sum.
  Statement rows = state_->database.Prepare(Combined(bookingColumns, "WHERE b.slot = ?1 ORDER BY b.id"));
  for (rows.Bind(1, slot); rows.Step();) {
    const LedgerBooking booking = state_->BookingIn(rows);
    receive(booking, booking.id < last);
  }
}

std::int64_t LedgerFile::BookingCount(std::int64_t slot) const {
  Statement rows = state_->database.Prepare("SELECT count(*) FROM booking WHERE slot = ?1 AND id >= ?2");
  return rows.Bind(1, slot).Bind(2, state_->LastReplacement(slot)).Step() ? rows.Integer(0) : 0;
}

double LedgerFile::SumOf(std::int64_t slot) const {
  double sum = 0;
  Statement rows = state_->database.Prepare(
      "SELECT amount, replaces FROM booking WHERE slot = ?1 AND id >= ?2 ORDER BY id");
  for (rows.Bind(1, slot).Bind(2, state_->LastReplacement(slot)); rows.Step();) {
    sum = rows.Integer(1) != 0 ? rows.Real(0) : sum + rows.Real(0);
  }
  return sum;
}

double LedgerFile::AmountOf(const LedgerCell& cell) const {
  double amount = 0;
  for (const LedgerTerm& term : cell.terms) {
    const double sum = SumOf(Slot(term.slot).id);
    amount = term.subtracted ? amount - sum : amount + sum;
  }
  return amount;
}

LedgerLine LedgerFile::Line(std::int64_t number) const {
  Statement& select = state_->line;
  select.Bind(1, number);
  if (!select.Step()) state_->Refuse(fmt::format("lacks the line {}", number));
  LedgerLine line = state_->LineIn(select);
  select.Reset();
  return line;
}

LedgerDocument LedgerFile::Document(std::int64_t id) const {
  Statement& select = state_->document;
  select.Bind(1, id);
  if (!select.Step()) state_->Refuse(fmt::format("lacks the transaction {}", id));
  LedgerDocument document = state_->DocumentIn(select);
  select.Reset();
  return document;
}

std::vector<LedgerDocument> LedgerFile::DocumentsOf(std::string_view transactionId) const {
  std::vector<LedgerDocument> documents;
  Statement rows =
      state_->database.Prepare(Combined(documentColumns, "WHERE transaction_id = ?1 ORDER BY id"));
  for (rows.Bind(1, transactionId); rows.Step();) documents.push_back(state_->DocumentIn(rows));
  return documents;
}

std::vector<std::string> LedgerFile::TransactionIds(std::string_view beginning, std::size_t most) const {
  std::vector<std::string> ids;
  Statement rows = state_->database.Prepare(
      "SELECT DISTINCT transaction_id FROM document WHERE transaction_id >= ?1 ORDER BY transaction_id LIMIT "
      "?2");
  for (rows.Bind(1, beginning).Bind(2, static_cast<std::int64_t>(most)); rows.Step();) {
    if (rows.Text(0).starts_with(beginning)) ids.emplace_back(rows.Text(0));
  }
  return ids;
}

std::vector<LedgerLine> LedgerFile::LinesOf(const LedgerDocument& document) const {
  std::vector<LedgerLine> lines;
  Statement first = state_->database.Prepare("SELECT first_line FROM document WHERE id = ?1");
  if (!first.Bind(1, document.id).Step()) return lines;
  Statement rows = state_->database.Prepare(Combined(lineColumns, "WHERE number >= ?1 ORDER BY number"));
  for (rows.Bind(1, first.Integer(0)); rows.Step() && rows.Integer(1) == document.id;) {
    lines.push_back(state_->LineIn(rows));
  }
  return lines;
}

std::vector<std::pair<LedgerBooking, bool>> LedgerFile::BookingsOf(const LedgerLine& line) const {
  std::vector<std::pair<LedgerBooking, bool>> bookings;
  Statement rows = state_->database.Prepare(Combined(bookingColumns, "WHERE b.line = ?1 ORDER BY b.id"));
  for (rows.Bind(1, line.number); rows.Step();) {
    LedgerBooking booking = state_->BookingIn(rows);
    const bool replaced = booking.id < state_->LastReplacement(booking.slot);
    bookings.emplace_back(std::move(booking), replaced);
  }
  return bookings;
}

std::vector<LedgerOmission> LedgerFile::OmissionsOf(const LedgerLine& line) const {
  std::vector<LedgerOmission> omissions;
  Statement rows = state_->database.Prepare(
      "SELECT reason, kind, past_period, request, from_date, to_date, source, account, account_name, amount "
      "FROM left_out WHERE line = ?1 ORDER BY id");
  for (rows.Bind(1, line.number); rows.Step();) {
    omissions.push_back({.line = line.number,
                         .reason = state_->ValueIn(rows, 0, SkipReason::SubtotalOutOfRange),
                         .kind = state_->ValueIn(rows, 1, SkipKind::Lost),
                         .pastPeriod = state_->PeriodIn(rows, 2),
                         .request = state_->NumberIn<std::int32_t>(rows, 3),
                         .fromDate = state_->NameIn(rows, 4),
                         .toDate = state_->NameIn(rows, 5),
                         .source = state_->NameIn(rows, 6),
                         .account = state_->NameIn(rows, 7),
                         .accountName = state_->NameIn(rows, 8),
                         .amount = std::string(rows.Text(9))});
  }
  return omissions;
}

std::vector<LedgerBooking> LedgerFile::TakenBack(const LedgerLine& line) const {
  std::vector<LedgerBooking> bookings;
  Statement rows =
      state_->database.Prepare(Combined(bookingColumns, "WHERE b.billed_line = ?1 ORDER BY b.id"));
  for (rows.Bind(1, line.number); rows.Step();) bookings.push_back(state_->BookingIn(rows));
  return bookings;
}

std::int64_t LedgerFile::LineCount() const {
  return state_->database.Integer("SELECT count(*) FROM line");
}

}  // namespace krnqb::ledger
