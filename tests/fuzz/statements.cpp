#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/promise.h"
#include "profit_and_loss/merging.h"
#include "profit_and_loss/reading.h"

// Profit and loss documents: the input is one, or two that are merged, with a NUL between them.

namespace krnqb::fuzz {
namespace {

using profit_and_loss::ProfitAndLoss;
using profit_and_loss::StatementAccount;
using profit_and_loss::StatementLine;

void RequireOneLine(const std::string& text) {
  Require(std::ranges::none_of(text,
                               [](char character) {
                                 return static_cast<unsigned char>(character) < 0x20 || character == '\x7F';
                               }),
          "a message has no control characters", text);
}

void RequireStatement(const ProfitAndLoss& statement) {
  std::set<std::vector<std::string>> accounts;
  for (const StatementAccount& account : statement.accounts) {
    Require(!account.names.empty() && account.names.size() == account.numbers.size(), "an account has names",
            account.place);
    Require(account.amounts.size() == statement.columns.size(), "an account has an amount for each column",
            account.place);
    Require(accounts.insert(account.names).second, "an account has one row", account.FullName());
    Require(!account.place.empty(), "an account has a place");
  }
  for (const StatementLine& line : statement.lines) {
    Require(accounts.contains(line.account), "a transaction's account is in the statement", line.place);
    Require(line.date.ok() && !line.type.empty(), "a transaction has a date and a type", line.place);
  }
  for (const std::string& finding : statement.findings) RequireOneLine(finding);
  Require(statement.lines.empty() || statement.hasDetail, "transactions come from a detail report");
  const bool months =
      !statement.columns.empty() &&
      std::ranges::all_of(statement.columns, [](const auto& column) { return column.month && column.days; });
  Require(months == statement.hasMonths, "hasMonths says whether all columns are months");
}

// The sums of a detail report are those of its transactions.
void RequireSums(const ProfitAndLoss& statement) {
  if (!statement.hasDetail) return;
  ExactAmount lines;
  ExactAmount accounts;
  for (const StatementLine& line : statement.lines) lines += line.amount;
  for (const StatementAccount& account : statement.accounts) {
    for (const ExactAmount& amount : account.amounts) accounts += amount;
  }
  Require(lines == accounts, "amounts are the sums of the transactions");
}

std::optional<ProfitAndLoss> ReadDocument(const std::string& bytes) {
  std::optional<ProfitAndLoss> statement;
  const auto error = ErrorOf([&] { statement = profit_and_loss::ReadProfitAndLoss("books", bytes); });
  if (error) {
    RequireOneLine(error->Description());
    Require(error->Description().starts_with("books: "), "a fault is reported with its document",
            error->Description());
    return std::nullopt;
  }
  RequireStatement(*statement);
  return statement;
}

void Run(Input input) {
  std::vector<ProfitAndLoss> statements;
  for (int document = 0; document < 2; ++document) {
    std::optional<ProfitAndLoss> statement = ReadDocument(document == 0 ? input.Text() : input.Rest());
    if (!statement) continue;
    static_cast<void>(ErrorOf([&] { RequireSums(*statement); }));
    statements.push_back(*std::move(statement));
  }
  if (statements.empty()) return;
  const auto error = ErrorOf([&] { RequireStatement(profit_and_loss::MergeStatements(statements)); });
  if (error) RequireOneLine(error->Description());
}

}  // namespace
}  // namespace krnqb::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  krnqb::fuzz::Run(krnqb::fuzz::Input(data, size));
  return 0;
}
