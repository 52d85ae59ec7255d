#include "ledger/small_import.h"

#include <array>

#include "files/operations.h"

namespace krnqb::ledger::testing {
namespace {

constexpr std::string_view plannedExpenses = "20000000000000000000000000000600";
constexpr std::string_view actualExpenses = "21000000000000000000000000000600";

AmountSlot Expense(std::string_view name, std::int16_t month) {
  return {.group = AmountGroup::Expenses, .name = name, .number = month};
}

void BookBill(LedgerWriter& writer, std::int64_t number, std::string_view transaction,
              std::string_view account, double amount, std::string_view text) {
  const SourceLine line{.number = number,
                        .request = 10,
                        .month = 1,
                        .transactionId = transaction,
                        .lineId = text,
                        .date = "2002-01-05",
                        .referenceNumber = "77",
                        .element = "ExpenseLineRet",
                        .party = "Orchard Lane Properties",
                        .account = "10-1",
                        .accountName = account,
                        .amount = text};
  writer.ReadLine(line);
  writer.Book({.slot = Expense(account.substr(0, account.find(':')), 1),
               .rule = BookingRule::ChargedToExpense,
               .amount = amount,
               .account = "10-1",
               .accountName = account,
               .text = text,
               .line = &line});
}

void WriteMonth(LedgerWriter& writer, std::string_view row, std::int32_t rowNumber, std::string_view amount) {
  const std::array terms{CellTerm{.slot = Expense(row, 1)}};
  const std::string formula = "=" + std::string(amount) + "* (1 + B9)";
  writer.WriteCell({.content = CellContent::GrowthFormula,
                    .table = plannedExpenses,
                    .block = "db_income_range_cat3",
                    .row = row,
                    .rowNumber = rowNumber,
                    .column = 2,
                    .number = 1,
                    .text = formula,
                    .terms = terms});
  writer.WriteCell({.content = CellContent::Amount,
                    .table = actualExpenses,
                    .block = "db_income_range_cat3_actual",
                    .row = row,
                    .rowNumber = rowNumber,
                    .column = 1,
                    .number = 1,
                    .text = amount,
                    .terms = terms});
}

void ReadPast(LedgerWriter& writer) {
  const AmountSlot month{
      .group = AmountGroup::Income, .name = "Plants", .number = 5, .pastPeriod = std::int16_t{1}};
  writer.Book({.slot = month,
               .rule = BookingRule::ReportCell,
               .amount = 40,
               .accountName = "Plants",
               .text = "40.00",
               .request = 300,
               .fromDate = "2000-01-01",
               .toDate = "2000-12-31"});
  const AmountSlot income{.group = AmountGroup::PastPerformance, .name = "Income", .number = 1};
  const AmountSlot cost{.group = AmountGroup::PastPerformance, .name = "CostOfGoodsSold", .number = 1};
  writer.Book({.slot = income, .rule = BookingRule::BalanceToday, .amount = 900, .text = "900.00"});
  writer.Book({.slot = income, .rule = BookingRule::PeriodBegins, .replaces = true});
  writer.Book({.slot = income, .rule = BookingRule::PeriodTotal, .amount = 40, .accountName = "PLANTS"});
  writer.Book({.slot = cost, .rule = BookingRule::BalanceToday, .amount = 12.5, .text = "12.50"});
  const std::array terms{CellTerm{.slot = income}, CellTerm{.slot = cost, .subtracted = true}};
  writer.WriteCell({.content = CellContent::PastFigure,
                    .table = "20000000000000000000000000000800",
                    .block = "db_pastperformance_sales",
                    .row = "Gross Margin",
                    .rowNumber = 2,
                    .column = 1,
                    .number = 1,
                    .text = "27.5",
                    .terms = terms});
}

}  // namespace

LedgerFacts SmallFacts() {
  return {.program = "1.0.0",
          .when = "2003-01-15T12:00:00",
          .plan = "/plans/small.kpf",
          .planDigest = std::string(64, 'a'),
          .planVersion = plan_version::written,
          .company = "small.qbw",
          .companyName = "Small",
          .product = "ald",
          .planStart = "2003-01",
          .periodFrom = "2002-01",
          .periodTo = "2002-12",
          .options = {"--expenses", "--balances all"}};
}

void ReadSmallImport(LedgerWriter& writer) {
  BookBill(writer, 1, "A-1", "Rent", 0.1, "0.10");
  BookBill(writer, 2, "A-1", "Rent:Barn", 0.2, "0.20");
  BookBill(writer, 3, "A-2", "Payroll", 55, "55.00");
  const SourceLine skipped{
      .number = 4, .request = 10, .transactionId = "A-3", .element = "ItemLineRet", .amount = "9.00"};
  writer.ReadLine(skipped);
  writer.LeaveOut({.kind = NoticeKind::AmountSkipped,
                   .place = {.request = 10},
                   .skipped = Skipped{.reason = SkipReason::NoItem,
                                      .kind = SkipKind::Lost,
                                      .source = "ItemLineRet",
                                      .amount = "9.00",
                                      .line = 4}});
  writer.Book({.slot = Expense("payroll", 1),
               .rule = BookingRule::SpreadBalance,
               .amount = 100.0 / 3,
               .replaces = true,
               .accountName = "Payroll",
               .text = "400.00"});
  writer.WriteCell({.content = CellContent::GrowthRate,
                    .table = plannedExpenses,
                    .block = "db_income_range_cat3",
                    .row = "Rent",
                    .rowNumber = 1,
                    .column = 1,
                    .text = "0.05"});
  WriteMonth(writer, "Rent", 1, "0.3");
  WriteMonth(writer, "rent", 4, "0.3");
  WriteMonth(writer, "Payroll", 2, "33.3333333333333");
  ReadPast(writer);
}

void WriteSmallLedger(const std::filesystem::path& file) {
  files::SystemFileOperations operations;
  LedgerWriter writer(file, {}, operations);
  ReadSmallImport(writer);
  writer.Finish(SmallFacts());
  writer.Place();
  writer.Keep();
}

}  // namespace krnqb::ledger::testing
