#include "company/records/store.h"

#include <algorithm>

#include "company/records/list_order.h"

namespace krnqb::company {
namespace {

void BindOptional(Statement& statement, int parameter, const std::string& text) {
  if (text.empty()) {
    statement.BindNull(parameter);
  } else {
    statement.Bind(parameter, text);
  }
}

void BindColumns(Statement& statement, const CompanyRecord& record) {
  statement.Bind(1, record.kind->family)
      .Bind(2, record.key)
      .Bind(3, record.kind->element)
      .Bind(4, record.parentKey);
  BindOptional(statement, 5, record.accountType);
  BindOptional(statement, 6, record.date);
  statement.Bind(7, static_cast<std::int64_t>(record.text.linesBegin))
      .Bind(8, static_cast<std::int64_t>(record.text.linesEnd))
      .Bind(9, record.text.xml);
}

constexpr std::int64_t idsOfAKind = std::int64_t{1} << 32;

// Transactions have the ids of their kind, so that those of a kind lie together in the file: an answer then
// reads no pages with others. All other records have the first ids.
std::int64_t FirstIdOf(const RecordKind& kind) noexcept {
  if (kind.shape != RecordShape::Transaction) return 0;
  return (static_cast<std::int64_t>(KindOrder(kind)) + 1) * idsOfAKind;
}

// Returns the largest number of a record in the order of loading.
std::int64_t LastNumber(const Database& database) {
  Statement last = database.Prepare("SELECT max(id) FROM record WHERE id BETWEEN ?1 AND ?2");
  std::int64_t number = 0;
  for (const RecordKind& kind : RecordKinds()) {
    const std::int64_t first = FirstIdOf(kind);
    last.Bind(1, first).Bind(2, first + idsOfAKind - 1);
    if (last.Step() && !last.IsNull(0)) number = std::max(number, last.Integer(0) - first);
    last.Reset();
  }
  return number;
}

std::size_t RankOf(std::string_view kind, std::string_view accountType) {
  if (const auto order = AccountTypeOrder(accountType)) return *order;
  const RecordKind* const known = FindRecordKind(kind);
  return known == nullptr ? RecordKinds().size() : KindOrder(*known);
}

}  // namespace

RecordStore::RecordStore(const Database& database)
    : database_(database),
      find_(database_.Prepare("SELECT id FROM record WHERE family = ?1 AND key = ?2")),
      insert_(database_.Prepare("INSERT INTO record (family, key, kind, parent_key, account_type, txn_date, "
                                "lines_begin, lines_end, xml,"
                                " id, position) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11)")),
      replace_(database_.Prepare("UPDATE record SET family = ?1, key = ?2, kind = ?3, parent_key = ?4, "
                                 "account_type = ?5, txn_date = ?6,"
                                 " lines_begin = ?7, lines_end = ?8, xml = ?9 WHERE id = ?10")),
      ledger_(database_),
      lastNumber_(LastNumber(database_)) {}

PutResult RecordStore::Put(const CompanyRecord& record) {
  if (record.kind->shape == RecordShape::ListEntry) changedLists_.emplace(record.kind->family);
  find_.Bind(1, record.kind->family).Bind(2, record.key);
  const bool isThere = find_.Step();
  if (!isThere) insert_.Bind(11, ++lastNumber_);
  const std::int64_t id = isThere ? find_.Integer(0) : FirstIdOf(*record.kind) + lastNumber_;
  find_.Reset();
  Statement& statement = isThere ? replace_ : insert_;
  BindColumns(statement, record);
  statement.Bind(10, id).Run();
  if (record.kind->shape == RecordShape::Transaction) {
    if (isThere) ledger_.RemovePostings(id);
    ledger_.AddPostings(id, record.date, record.postings);
  }
  if (record.kind->family == "Item") ledger_.PutItemAccounts(record.key, record.itemAccounts);
  return isThere ? PutResult::Replaced : PutResult::Added;
}

void RecordStore::OrderLists() {
  for (const std::string& family : changedLists_) OrderList(family);
  changedLists_.clear();
}

void RecordStore::OrderList(const std::string& family) {
  std::vector<ListEntry> entries;
  std::vector<std::pair<std::int64_t, std::int64_t>> idsAndPositions;
  Statement list = database_.Prepare(
      "SELECT id, position, key, parent_key, kind, account_type FROM record WHERE family = ?1 ORDER BY id");
  for (list.Bind(1, family); list.Step();) {
    idsAndPositions.emplace_back(list.Integer(0), list.Integer(1));
    entries.push_back(
        {std::string(list.Text(2)), std::string(list.Text(3)), RankOf(list.Text(4), list.Text(5))});
  }

  Statement move = database_.Prepare("UPDATE record SET position = ?2 WHERE id = ?1");
  std::int64_t position = 0;
  for (const std::size_t entry : ListOrder(entries)) {
    const auto [id, oldPosition] = idsAndPositions[entry];
    if (++position != oldPosition) move.Bind(1, id).Bind(2, position).Run();
  }
}

std::vector<RecordCount> CountRecords(const Database& database) {
  std::vector<RecordCount> counts;
  Statement count = database.Prepare("SELECT count(*) FROM record WHERE kind = ?1");
  for (const RecordKind& kind : RecordKinds()) {
    count.Reset();
    if (count.Bind(1, kind.element).Step() && count.Integer(0) > 0) {
      counts.push_back({std::string(kind.element), count.Integer(0)});
    }
  }
  return counts;
}

std::string ReadSetting(const Database& database, std::string_view family) {
  Statement setting = database.Prepare("SELECT xml FROM record WHERE family = ?1");
  return setting.Bind(1, family).Step() ? std::string(setting.Text(0)) : std::string();
}

}  // namespace krnqb::company
