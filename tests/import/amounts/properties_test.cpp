#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "fakes/amounts_host.h"
#include "fakes/import_surroundings.h"
#include "import/amounts/expense_transactions.h"
#include "import/amounts/sales_transactions.h"
#include "qbxml/request_catalogue.h"

// Properties of any transactions whose amounts are multiples of a quarter, which doubles add exactly.

namespace krnqb {
namespace {

using fakes::Element;

/// A line: the index of its account or item, a number of quarters, and a customer (0 for none).
struct Line {
  std::size_t target = 0;
  int quarters = 0;
  int customer = 0;
};
using Lines = std::vector<Line>;
using Transactions = std::vector<Lines>;

std::ostream& operator<<(std::ostream& output, const Line& line) {
  return output << "{target " << line.target << ", " << line.quarters << " quarters, customer "
                << line.customer << "}";
}

rc::Gen<Transactions> SomeTransactions(std::size_t targetCount) {
  const auto line =
      rc::gen::build<Line>(rc::gen::set(&Line::target, rc::gen::inRange<std::size_t>(0, targetCount)),
                           rc::gen::set(&Line::quarters, rc::gen::inRange(-40, 41)),
                           rc::gen::set(&Line::customer, rc::gen::inRange(0, 4)));
  return rc::gen::container<Transactions>(rc::gen::container<Lines>(line));
}

std::string AmountText(int quarters) {
  static constexpr const char* fractions[] = {".00", ".25", ".50", ".75"};
  const int size = std::abs(quarters);
  return (quarters < 0 ? "-" : "") + std::to_string(size / 4) + fractions[size % 4];
}
std::string CustomerOf(int customer) {
  return customer == 0 ? "" : fakes::CustomerRef("K-" + std::to_string(customer));
}

// The accounts, then the items to which purchases post.
const std::vector<std::string> purchaseTargets = {
    fakes::AccountRef("E-1"), fakes::AccountRef("E-3"), fakes::AccountRef("I-1"), fakes::AccountRef("X-9"),
    fakes::ItemRef("IT-1"),   fakes::ItemRef("IT-2"),   fakes::ItemRef("IT-3"),   fakes::ItemRef("IT-4")};
const std::vector<std::string> saleTargets = {fakes::ItemRef("IT-1"), fakes::ItemRef("IT-2"),
                                              fakes::ItemRef("IT-3") + fakes::Quantity("3"),
                                              fakes::ItemRef("IT-4"), ""};
constexpr std::size_t firstItem = 4;
const std::vector<std::size_t> nonInventoryPurchases = {4, 5, 7};
const std::vector<std::size_t> nonInventorySales = {0, 1, 3};

std::string PurchaseAnswer(const Transactions& bills) {
  std::string records;
  for (const Lines& bill : bills) {
    std::string lines;
    for (const Line& line : bill) {
      lines += Element(line.target < firstItem ? "ExpenseLineRet" : "ItemLineRet",
                       purchaseTargets[line.target] + fakes::Amount(AmountText(line.quarters)) +
                           CustomerOf(line.customer));
    }
    records += Element("BillRet", lines);
  }
  return fakes::RecordAnswer("BillQueryRs", records);
}
/// Returns an answer in which an invoice has the customer of its first line.
std::string SaleAnswer(const Transactions& invoices) {
  std::string records;
  for (const Lines& invoice : invoices) {
    std::string lines = invoice.empty() ? "" : CustomerOf(invoice.front().customer);
    for (const Line& line : invoice) {
      lines += fakes::InvoiceLine(saleTargets[line.target] + fakes::Amount(AmountText(line.quarters)));
    }
    records += Element("InvoiceRet", lines);
  }
  return fakes::RecordAnswer("InvoiceQueryRs", records);
}

/// Returns the subtotals of a month with these purchases and sales.
std::vector<double> Booked(const Transactions& bills, const Transactions& invoices) {
  fakes::ImportSurroundings surroundings;
  surroundings.SetItems(fakes::OneAccountItem("IT-1", "I-3") + fakes::TwoAccountItem("IT-2", "I-2", "E-1") +
                        fakes::InventoryItem("IT-3", "I-1", "C-1", "2.5") +
                        fakes::Item("ItemGroupRet", "IT-4", ""));
  surroundings.quickBooks->answers["10"] = PurchaseAnswer(bills);
  surroundings.quickBooks->answers["20"] = SaleAnswer(invoices);
  ReadExpenseTransactions(surroundings.context,
                          {.kind = 10, .request = BuildRequest(10, {}, {}), .month = 1, .range = {}});
  ReadSalesTransactions(surroundings.context,
                        {.kind = 20, .request = BuildRequest(20, {}, {}), .month = 1, .range = {}});
  std::vector<double> amounts;
  for (const char* name : {"Rent", "Utilities"}) amounts.push_back(surroundings.Expense(name, 1));
  for (const char* name : {"Plants", "Tools"}) amounts.push_back(surroundings.Income(name, 1));
  for (const char* name : {"Seeds", "Freight"}) amounts.push_back(surroundings.Cost(name, 1));
  return amounts;
}

/// Removes the customer from every line that repeats an earlier line's customer and amount.
void MakeBillableKeysUnique(Transactions& bills) {
  std::set<std::pair<int, int>> seen;
  for (Lines& bill : bills) {
    for (Line& line : bill) {
      if (!seen.emplace(line.customer, line.quarters).second) line.customer = 0;
    }
  }
}

RC_GTEST_PROP(MonthlyAmounts, DoNotDependOnTheOrderOfTransactions, ()) {
  auto bills = *SomeTransactions(purchaseTargets.size());
  auto invoices = *SomeTransactions(saleTargets.size());
  MakeBillableKeysUnique(bills);
  const auto before = Booked(bills, invoices);
  std::mt19937 order(*rc::gen::arbitrary<unsigned>());
  std::shuffle(bills.begin(), bills.end(), order);
  std::shuffle(invoices.begin(), invoices.end(), order);
  RC_ASSERT(Booked(bills, invoices) == before);
}

/// Returns some transactions and the same with one line of the given targets split into two parts other than
/// 0.
std::pair<Transactions, Transactions> WholeAndSplit(std::size_t targetCount,
                                                    const std::vector<std::size_t>& splitTargets) {
  Transactions whole = *SomeTransactions(targetCount);
  const Line line{.target = *rc::gen::elementOf(splitTargets),
                  .quarters = *rc::gen::inRange(-40, 41),
                  .customer = *rc::gen::inRange(0, 4)};
  const int part = *rc::gen::suchThat(rc::gen::inRange(-60, 61), [&line](int quarters) {
    return quarters != 0 && quarters != line.quarters;
  });
  Line first = line;
  Line second = line;
  first.quarters = part;
  second.quarters = line.quarters - part;
  Transactions split = whole;
  const auto position = static_cast<std::ptrdiff_t>(*rc::gen::inRange<std::size_t>(0, whole.size() + 1));
  whole.insert(whole.begin() + position, Lines{line});
  split.insert(split.begin() + position, Lines{first, second});
  return {whole, split};
}

RC_GTEST_PROP(MonthlyAmounts, OfPurchasesDoNotDependOnSplittingALine, ()) {
  const auto [whole, split] = WholeAndSplit(purchaseTargets.size(), nonInventoryPurchases);
  RC_ASSERT(Booked(split, {}) == Booked(whole, {}));
}

RC_GTEST_PROP(MonthlyAmounts, OfSalesDoNotDependOnSplittingALine, ()) {
  const auto [whole, split] = WholeAndSplit(saleTargets.size(), nonInventorySales);
  RC_ASSERT(Booked({}, split) == Booked({}, whole));
}

// Complete imports.

std::vector<std::vector<std::string>> ActualAmounts(const fakes::AmountsHost& host) {
  std::vector<std::vector<std::string>> rows;
  for (const auto& [table, block, name] : {std::tuple("0600", "db_income_range_cat3", "Rent"),
                                           std::tuple("0600", "db_income_range_cat3", "Utilities"),
                                           std::tuple("0400", "db_sales_values_sales", "Plants"),
                                           std::tuple("0400", "db_sales_values_sales", "Tools"),
                                           std::tuple("0400", "db_sales_values_costs", "Seeds"),
                                           std::tuple("0400", "db_sales_values_costs", "Freight")}) {
    rows.push_back(host.ActualCells(table, block, name));
  }
  return rows;
}

std::string MonthText(int month) {
  return (month < 10 ? "2002-0" : "2002-") + std::to_string(month) + "-01";
}

/// Returns a report with a row per name and random amounts for twelve months.
std::string SomeReport(std::initializer_list<const char*> names) {
  std::string rows;
  for (const char* name : names) {
    std::string row = fakes::ReportRow(name, {});
    std::string columns;
    for (const int quarters : *rc::gen::container<std::vector<int>>(12, rc::gen::inRange(-40, 41))) {
      columns += "<ColData value=\"" + AmountText(quarters) + "\" />";
    }
    rows += row.insert(row.rfind("</"), columns);
  }
  return fakes::ReportAnswer(rows);
}

RC_GTEST_PROP(ActualAmounts, AreTheSameWhenTransactionsAreImportedTwice, ()) {
  fakes::AmountsHost host;
  for (const int month : *rc::gen::container<std::set<int>>(rc::gen::inRange(1, 13))) {
    host.quickBooks->answers["10 " + MonthText(month)] =
        PurchaseAnswer(*rc::gen::scale(0.2, SomeTransactions(purchaseTargets.size())));
    host.quickBooks->answers["20 " + MonthText(month)] =
        SaleAnswer(*rc::gen::scale(0.2, SomeTransactions(saleTargets.size())));
  }
  host.IncludeAccounts();
  RC_ASSERT(host.component.Go());
  const auto first = ActualAmounts(host);
  for (const auto& row : first) RC_ASSERT(row.size() == 13U);
  RC_ASSERT(host.component.Go());
  RC_ASSERT(ActualAmounts(host) == first);
  RC_ASSERT(host.component.ErrorNumber() == 0);
}

RC_GTEST_PROP(ActualAmounts, AreTheSameWhenReportsAreImportedTwice, ()) {
  fakes::AmountsHost host;
  host.quickBooks->majorVersion = 2;
  host.quickBooks->answers["300"] = SomeReport({"Plants", "Tools", "Plants"});
  host.quickBooks->answers["310"] = SomeReport({"Rent", "6100 · Utilities", "Gas"});
  host.quickBooks->answers["320"] = SomeReport({"Freight"});
  host.IncludeAccounts();
  RC_ASSERT(host.component.Go());
  const auto first = ActualAmounts(host);
  for (const auto& row : first) RC_ASSERT(row.size() == 13U);
  RC_ASSERT(host.component.Go());
  RC_ASSERT(ActualAmounts(host) == first);
  RC_ASSERT(host.component.ErrorNumber() == 0);
}

}  // namespace
}  // namespace krnqb
