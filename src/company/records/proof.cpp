#include "company/records/proof.h"

#include <fmt/format.h>

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "company/records/company_record.h"
#include "krnqb/error.h"

namespace krnqb::company {
namespace {

using Report = std::function<void(std::string)>;

bool SameOptional(const Statement& row, int column, std::string_view text) {
  return row.IsNull(column) == text.empty() && row.Text(column) == text;
}

// The postings in the order of their records.
class StoredPostings {
 public:
  StoredPostings(const Database& database, const Report& report)
      : report_(report),
        rows_(
            database.Prepare("SELECT record_id, number, target, key, txn_date, amount, quantity FROM posting"
                             " ORDER BY record_id, number")) {
    Advance();
  }

  // Compares the postings of a record, which must come in the order of their ids, with those of its text.
  void Compare(std::int64_t id, const std::string& name, const CompanyRecord& record) {
    SkipUntil(id);
    std::size_t stored = 0;
    std::size_t different = 0;
    for (; there_ && rows_.Integer(0) == id; Advance()) {
      ++count_;
      if (stored >= record.postings.size() || !IsStored(record.postings[stored], stored, record.date)) {
        ++different;
      }
      ++stored;
    }
    if (stored != record.postings.size()) {
      report_(fmt::format("{} has {} postings, but its text gives {}", name, stored, record.postings.size()));
    } else if (different > 0) {
      report_(fmt::format("{} has {} postings that differ from its text", name, different));
    }
  }

  // Reports the postings that no record has given, up to the record with this id.
  void SkipUntil(std::int64_t id) {
    for (; there_ && rows_.Integer(0) < id; Advance()) ReportOrphan();
  }
  void SkipAll() {
    for (; there_; Advance()) ReportOrphan();
  }

  std::int64_t Count() const noexcept { return count_; }

 private:
  void Advance() { there_ = rows_.Step(); }

  void ReportOrphan() {
    ++count_;
    report_(
        fmt::format("posting {} of record {} belongs to no transaction", rows_.Integer(1), rows_.Integer(0)));
  }

  bool IsStored(const Posting& posting, std::size_t index, const std::string& date) const {
    return rows_.Integer(1) == static_cast<std::int64_t>(index) + 1 &&
           rows_.Integer(2) == static_cast<std::int64_t>(posting.target) && rows_.Text(3) == posting.key &&
           rows_.Text(4) == date && rows_.Integer(5) == posting.amount && rows_.Real(6) == posting.quantity;
  }

  const Report& report_;
  Statement rows_;
  bool there_ = false;
  std::int64_t count_ = 0;
};

class Prover {
 public:
  Prover(const Database& database, const Report& report)
      : report_(report),
        database_(database),
        postings_(database, report),
        itemAccounts_(database.Prepare(
            "SELECT target, account, unit_cost FROM item_account WHERE item = ?1 ORDER BY rowid")) {}

  ProvedRecords Run() {
    Statement rows = database_.Prepare(
        "SELECT id, family, kind, key, parent_key, account_type, txn_date, lines_begin, lines_end, xml"
        " FROM record ORDER BY id");
    std::int64_t records = 0;
    for (; rows.Step(); ++records) Compare(rows);
    postings_.SkipAll();
    const std::int64_t orphans = database_.Integer(
        "SELECT count(*) FROM item_account WHERE NOT EXISTS"
        " (SELECT 1 FROM record WHERE record.family = 'Item' AND record.key = item_account.item)");
    if (orphans > 0) report_(fmt::format("{} accounts belong to items that are missing", orphans));
    return {records, postings_.Count()};
  }

 private:
  void Compare(const Statement& row) {
    const std::string name = fmt::format("record {} ({} {})", row.Integer(0), row.Text(2), row.Text(3));
    CompanyRecord record;
    try {
      RecordText text;
      if (const std::optional<XmlFault> fault = WriteRecordText(row.Text(9), text)) {
        report_(fmt::format("{} has a text that is not well-formed: {}", name, fault->message));
        return;
      }
      record = ReadRecord(tree_.Read(text.xml));
      record.text = std::move(text);
    } catch (const Error& error) {
      report_(fmt::format("{} has a text that cannot be read: {}", name, error.Description()));
      return;
    }
    if (!HasColumns(row, record))
      report_(fmt::format("{} is filed under other values than its text has", name));
    if (record.kind->shape == RecordShape::Transaction) postings_.Compare(row.Integer(0), name, record);
    if (record.kind->family == "Item" && !HasItemAccounts(record)) {
      report_(fmt::format("{} has other accounts than its text", name));
    }
  }

  static bool HasColumns(const Statement& row, const CompanyRecord& record) {
    return row.Text(1) == record.kind->family && row.Text(2) == record.kind->element &&
           row.Text(3) == record.key && row.Text(4) == record.parentKey &&
           SameOptional(row, 5, record.accountType) && SameOptional(row, 6, record.date) &&
           row.Integer(7) == static_cast<std::int64_t>(record.text.linesBegin) &&
           row.Integer(8) == static_cast<std::int64_t>(record.text.linesEnd) &&
           row.Text(9) == record.text.xml;
  }

  bool HasItemAccounts(const CompanyRecord& item) {
    std::size_t stored = 0;
    bool same = true;
    for (itemAccounts_.Bind(1, item.key); itemAccounts_.Step(); ++stored) {
      same = same && stored < item.itemAccounts.size() && IsStored(item.itemAccounts[stored]);
    }
    itemAccounts_.Reset();
    return same && stored == item.itemAccounts.size();
  }

  bool IsStored(const ItemAccount& account) const {
    const bool sameCost = account.unitCost
                              ? itemAccounts_.Real(2) == *account.unitCost && !itemAccounts_.IsNull(2)
                              : itemAccounts_.IsNull(2);
    return itemAccounts_.Integer(0) == static_cast<std::int64_t>(account.target) &&
           itemAccounts_.Text(1) == account.account && sameCost;
  }

  const Report& report_;
  const Database& database_;
  StoredPostings postings_;
  Statement itemAccounts_;
  ElementTree tree_;
};

}  // namespace

ProvedRecords ProveRecords(const Database& database, const std::function<void(std::string)>& report) {
  return Prover(database, report).Run();
}

}  // namespace krnqb::company
