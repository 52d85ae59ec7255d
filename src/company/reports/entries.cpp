#include "company/reports/entries.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <utility>
#include <vector>

#include "company/records/amount.h"
#include "company/records/boolean.h"
#include "company/records/element_tree.h"
#include "company/records/kinds.h"
#include "company/records/postings.h"
#include "database/failures.h"

namespace krnqb::company {
namespace {

// In the order of a profit and loss; the second member says whether a credit counts as positive.
constexpr std::array<std::pair<std::string_view, bool>, 5> shownTypes = {{{"Income", true},
                                                                          {"CostOfGoodsSold", false},
                                                                          {"Expense", false},
                                                                          {"OtherIncome", true},
                                                                          {"OtherExpense", false}}};

// Rounds as the sums of the reports do: halves away from 0, and what exceeds 64 bits to the last number.
std::int64_t RoundedCost(double cost) {
  constexpr double tooLarge = 9223372036854775808.0;
  const double rounded =
      std::abs(cost) < 4503599627370496.0 ? std::trunc(cost + std::copysign(0.5, cost)) : cost;
  if (rounded >= tooLarge) return std::numeric_limits<std::int64_t>::max();
  if (rounded < -tooLarge) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(rounded);
}

// The transactions of one family, by date and place.
class FamilyRecords {
 public:
  FamilyRecords(const Database& database, const RecordKind& kind, std::string_view firstDay,
                std::string_view lastDay)
      : kind_(&kind),
        rows_(database.Prepare("SELECT txn_date, position, xml FROM record WHERE family = ?1"
                               " AND txn_date BETWEEN ?2 AND ?3 ORDER BY txn_date, position")) {
    rows_.Bind(1, kind.family).Bind(2, firstDay).Bind(3, lastDay);
    Advance();
  }

  // Every record is compared several times, so its place is read once.
  void Advance() {
    there_ = rows_.Step();
    if (!there_) return;
    date_ = rows_.Text(0);
    position_ = rows_.Integer(1);
  }
  bool IsThere() const noexcept { return there_; }
  bool IsBefore(const FamilyRecords& other) const noexcept {
    const int order = date_.compare(other.date_);
    return order != 0 ? order < 0 : position_ < other.position_;
  }

  const RecordKind& Kind() const noexcept { return *kind_; }
  const std::string& Date() const noexcept { return date_; }
  std::string_view Xml() const { return rows_.Text(2); }

 private:
  const RecordKind* kind_;
  Statement rows_;
  bool there_ = false;
  std::string date_;
  std::int64_t position_ = 0;
};

class EntryReader {
 public:
  EntryReader(const Database& database, const LedgerEntryReceiver& receive)
      : database_(database), receive_(receive) {
    ReadAccounts();
    ReadItems();
  }

  void Read(std::string_view firstDay, std::string_view lastDay) {
    std::vector<FamilyRecords> families;
    for (const RecordKind& kind : RecordKinds()) {
      if (kind.shape != RecordShape::Transaction) continue;
      FamilyRecords records(database_, kind, firstDay, lastDay);
      if (records.IsThere()) families.push_back(std::move(records));
    }
    while (!families.empty()) {
      const auto next = std::ranges::min_element(
          families, [](const auto& one, const auto& other) { return one.IsBefore(other); });
      ReadTransaction(*next);
      next->Advance();
      if (!next->IsThere()) families.erase(next);
    }
  }

 private:
  struct Account {
    std::string_view type;
    bool creditIsPositive;
  };
  using Accounts = std::unordered_map<std::string, Account>;
  struct ItemSide {
    PostingTarget target;
    const Accounts::value_type* account;
    std::optional<double> unitCost;
  };

  void ReadAccounts() {
    Statement rows = database_.Prepare("SELECT key FROM record WHERE account_type = ?1");
    for (const auto& [type, creditIsPositive] : shownTypes) {
      for (rows.Bind(1, type); rows.Step();) {
        accounts_.emplace(rows.Text(0), Account{type, creditIsPositive});
      }
      rows.Reset();
    }
  }

  void ReadItems() {
    Statement rows =
        database_.Prepare("SELECT item, target, account, unit_cost FROM item_account ORDER BY rowid");
    while (rows.Step()) {
      const auto account = accounts_.find(std::string(rows.Text(2)));
      if (account == accounts_.end()) continue;
      items_[std::string(rows.Text(0))].push_back(
          {static_cast<PostingTarget>(rows.Integer(1)), &*account,
           rows.IsNull(3) ? std::nullopt : std::optional<double>(rows.Real(3))});
    }
  }

  void ReadTransaction(const FamilyRecords& record) {
    const RecordElement transaction = tree_.Read(record.Xml());
    if (!transaction) {
      throw database::NeedsRepair(
          companyFileKind,
          fmt::format("The company file has a {} of {} that cannot be read; run krnqb company check",
                      record.Kind().element, record.Date()));
    }
    isDescribed_ = false;
    for (const PostedLine& posted : ReadPostedLines(transaction)) {
      const Posting& posting = posted.posting;
      if (posting.target == PostingTarget::Account) {
        const auto account = accounts_.find(posting.key);
        if (account == accounts_.end()) continue;
        Describe(transaction, record, posted.line);
        entry_.itemId.clear();
        entry_.cost.reset();
        Pass(*account, posting.amount);
      } else {
        const auto item = items_.find(posting.key);
        if (item == items_.end()) continue;
        Describe(transaction, record, posted.line);
        PassItem(item->second, posting);
      }
    }
  }

  void Describe(const RecordElement& transaction, const FamilyRecords& record, const RecordElement& line) {
    if (!isDescribed_) DescribeTransaction(transaction, record);
    isDescribed_ = true;
    DescribeLine(line);
  }

  void DescribeTransaction(const RecordElement& transaction, const FamilyRecords& record) {
    transaction.Child("TxnID").CopyText(entry_.transactionId);
    entry_.kind = record.Kind().element;
    entry_.date = record.Date();
    transaction.Child("RefNumber").CopyText(entry_.referenceNumber);
    ownName_.clear();
    for (const std::string_view reference : {"CustomerRef", "VendorRef", "PayeeEntityRef"}) {
      if (ownName_.empty()) transaction.Child(reference).Child("FullName").CopyText(ownName_);
    }
    entry_.name = ownName_;
    entry_.inItemGroup = false;
    lineOwner_ = {};
  }

  void DescribeLine(const RecordElement& line) {
    line.Child("TxnLineID").CopyText(entry_.lineId);
    entry_.lineElement = line.Name();
    if (ownName_.empty()) line.Child("EntityRef").Child("FullName").CopyText(entry_.name);
    // Lines with the same owner follow one another, and a transaction may have thousands.
    const RecordElement owner = line.Parent();
    if (owner == lineOwner_) return;
    lineOwner_ = owner;
    entry_.inItemGroup = static_cast<bool>(owner.Child("ItemGroupRef"));
  }

  void PassItem(const std::vector<ItemSide>& sides, const Posting& posting) {
    entry_.itemId = posting.key;
    for (const ItemSide& side : sides) {
      if (side.target != posting.target) continue;
      if (side.unitCost) {
        const double cost = posting.quantity * *side.unitCost;
        if (std::isnan(cost)) continue;
        entry_.cost = CostOfSale{posting.quantity, *side.unitCost};
        Pass(*side.account, RoundedCost(cost));
      } else {
        entry_.cost.reset();
        Pass(*side.account, posting.amount);
      }
    }
  }

  void Pass(const Accounts::value_type& account, std::int64_t debit) {
    entry_.accountId = account.first;
    entry_.accountType = account.second.type;
    entry_.amount = account.second.creditIsPositive ? Difference(0, debit) : debit;
    receive_(entry_);
  }

  const Database& database_;
  const LedgerEntryReceiver& receive_;
  Accounts accounts_;
  std::unordered_map<std::string, std::vector<ItemSide>> items_;
  ElementTree tree_;
  bool isDescribed_ = false;  // whether the entry has what the current transaction says
  std::string ownName_;       // of the transaction
  RecordElement lineOwner_;   // for which `inItemGroup` is known
  LedgerEntry entry_;
};

}  // namespace

void ReadLedgerEntries(const Database& database, std::string_view firstDay, std::string_view lastDay,
                       const LedgerEntryReceiver& receive) {
  EntryReader(database, receive).Read(firstDay, lastDay);
}

std::vector<std::string> ReadPendingSales(const Database& database, std::string_view firstDay,
                                          std::string_view lastDay) {
  // Only records without postings can be pending, so few texts are read.
  Statement rows = database.Prepare(
      "SELECT key, xml FROM record WHERE family IN ('Invoice', 'SalesReceipt') AND txn_date BETWEEN ?1 AND ?2"
      " AND NOT EXISTS (SELECT 1 FROM posting WHERE record_id = record.id)");
  rows.Bind(1, firstDay).Bind(2, lastDay);
  ElementTree tree;
  std::vector<std::string> pending;
  while (rows.Step()) {
    if (IsTrueText(tree.Read(rows.Text(1)).Child("IsPending").Text())) pending.emplace_back(rows.Text(0));
  }
  return pending;
}

}  // namespace krnqb::company
