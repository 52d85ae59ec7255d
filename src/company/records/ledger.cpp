#include "company/records/ledger.h"

#include <fmt/format.h>

namespace krnqb::company {
namespace {

std::int64_t Number(PostingTarget target) {
  return static_cast<std::int64_t>(target);
}

// An account receives postings directly and through the items that refer to it. Each of these sources is
// summed separately, in index order, before the sums per account, so that nothing needs sorting.
Statement PrepareSum(const Database& database, std::string_view days) {
  return database.Prepare(fmt::format(
      R"(WITH source (account, target, key, unit_cost) AS (
           SELECT key, {account}, key, NULL FROM record WHERE account_type = ?1
           UNION ALL
           SELECT item_account.account, item_account.target, item_account.item, item_account.unit_cost
             FROM record JOIN item_account ON item_account.account = record.key
             WHERE record.account_type = ?1)
         SELECT account, sum(amount) FROM (
           SELECT account,
                  (SELECT sum(CASE WHEN unit_cost IS NULL THEN posting.amount
                                   ELSE CAST(round(posting.quantity * unit_cost) AS INTEGER) END)
                     FROM posting
                     WHERE posting.target = source.target AND posting.key = source.key AND {days}) AS amount
             FROM source)
           GROUP BY account)",
      fmt::arg("account", Number(PostingTarget::Account)), fmt::arg("days", days)));
}

PostedAmounts Read(Statement& sums) {
  PostedAmounts amounts;
  while (sums.Step()) {
    if (!sums.IsNull(1)) amounts.emplace(sums.Text(0), sums.Integer(1));
  }
  sums.Reset();
  return amounts;
}

}  // namespace

LedgerWriter::LedgerWriter(const Database& database)
    : removePostings_(database.Prepare("DELETE FROM posting WHERE record_id = ?1")),
      insertPosting_(database.Prepare("INSERT INTO posting (record_id, number, target, key, txn_date, amount,"
                                      " quantity) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7)")),
      removeItemAccounts_(database.Prepare("DELETE FROM item_account WHERE item = ?1")),
      insertItemAccount_(database.Prepare(
          "INSERT INTO item_account (item, target, account, unit_cost) VALUES (?1, ?2, ?3, ?4)")) {}

void LedgerWriter::RemovePostings(std::int64_t recordId) {
  removePostings_.Bind(1, recordId).Run();
}

void LedgerWriter::AddPostings(std::int64_t recordId, std::string_view date,
                               std::span<const Posting> postings) {
  insertPosting_.Bind(1, recordId).Bind(5, date);
  std::int64_t number = 0;
  for (const Posting& posting : postings) {
    insertPosting_.Bind(2, ++number)
        .Bind(3, Number(posting.target))
        .Bind(4, posting.key)
        .Bind(6, posting.amount)
        .Bind(7, posting.quantity)
        .Run();
  }
}

void LedgerWriter::PutItemAccounts(std::string_view item, std::span<const ItemAccount> accounts) {
  removeItemAccounts_.Bind(1, item).Run();
  insertItemAccount_.Bind(1, item);
  for (const ItemAccount& account : accounts) {
    insertItemAccount_.Bind(2, Number(account.target)).Bind(3, account.account);
    if (account.unitCost) {
      insertItemAccount_.Bind(4, *account.unitCost);
    } else {
      insertItemAccount_.BindNull(4);
    }
    insertItemAccount_.Run();
  }
}

LedgerReader::LedgerReader(const Database& database, std::string_view type)
    : type_(type),
      between_(PrepareSum(database, "posting.txn_date BETWEEN ?2 AND ?3")),
      after_(PrepareSum(database, "posting.txn_date > ?2")) {}

PostedAmounts LedgerReader::Between(std::string_view firstDay, std::string_view lastDay) {
  between_.Bind(1, type_).Bind(2, firstDay).Bind(3, lastDay);
  return Read(between_);
}

PostedAmounts LedgerReader::After(std::string_view day) {
  after_.Bind(1, type_).Bind(2, day);
  return Read(after_);
}

std::optional<LedgerDays> ReadLedgerDays(const Database& database) {
  Statement days = database.Prepare("SELECT min(txn_date), max(txn_date) FROM record");
  if (!days.Step() || days.IsNull(0)) return std::nullopt;
  return LedgerDays{std::string(days.Text(0)), std::string(days.Text(1))};
}

std::vector<std::string> ReadTransactionMonths(const Database& database, std::string_view firstDay,
                                               std::string_view lastDay, TransactionChoice choice) {
  Statement found = database.Prepare(
      fmt::format("SELECT DISTINCT substr(txn_date, 1, 7) FROM record WHERE txn_date BETWEEN ?1 AND ?2{}"
                  " ORDER BY 1",
                  choice == TransactionChoice::Requested
                      ? " AND family IN ('Bill', 'Check', 'CreditCardCharge', 'Invoice', 'SalesReceipt')"
                      : ""));
  std::vector<std::string> months;
  for (found.Bind(1, firstDay).Bind(2, lastDay); found.Step();) months.emplace_back(found.Text(0));
  return months;
}

}  // namespace krnqb::company
