#include "cli/reconcile/reconciliation_proof.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <map>
#include <tuple>

namespace krnqb::cli::tests {
namespace {

using nlohmann::json;
using std::int64_t;

constexpr std::array sections{std::pair{"sales", "Income"}, std::pair{"cost-of-goods", "CostOfGoodsSold"},
                              std::pair{"expenses", "Expense"}, std::pair{"other-income", "OtherIncome"},
                              std::pair{"other-expense", "OtherExpense"}};
constexpr int64_t halfCent = 5'000;
constexpr std::array sumNames{"plan", "written", "booked", "books", "difference", "unexplained"};

// Names are compared in lower case, as rows and accounts are.
std::string Lower(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char letter) { return std::tolower(letter); });
  return text;
}

// By group, account and month, such as {"sales", "plant sales", "2002-03"}.
using Place = std::tuple<std::string, std::string, std::string>;
using Amounts = std::map<Place, int64_t>;

Place PlaceOf(const json& line) {
  return {line.at("group"), Lower(line.at("account")), line.at("month").get<std::string>()};
}

Amounts MonthsOf(const json& months, const char* sum) {
  Amounts amounts;
  for (const json& line : months.at("lines")) {
    if (const int64_t amount = Millionths(line.at(sum)); amount != 0) amounts[PlaceOf(line)] += amount;
  }
  return amounts;
}

std::string MonthText(std::size_t month) {
  return fmt::format("2002-{:02}", month + 1);
}

void ProveLine(const json& line) {
  SCOPED_TRACE(line.dump());
  const int64_t difference = Millionths(line.at("difference"));
  EXPECT_EQ(Millionths(line.at("plan")) - Millionths(line.at("books")), difference);
  int64_t causes = Millionths(line.at("unexplained"));
  std::map<std::string, int> codes;
  for (const json& cause : line.at("causes")) {
    const int64_t amount = Millionths(cause.at("amount"));
    EXPECT_NE(amount, 0);
    causes += amount;
    const std::string code = cause.at("code").get<std::string>() + cause.value("type", "");
    EXPECT_EQ(++codes[code], 1) << code;
  }
  EXPECT_EQ(causes, difference);
}

// Every sum, cause and rest of the lines that `takes` accepts, added up.
template <typename Takes>
std::map<std::string, int64_t> Total(const json& lines, Takes takes, bool netIncome = false) {
  std::map<std::string, int64_t> total;
  for (const json& line : lines) {
    if (!takes(line)) continue;
    const std::string group = line.value("group", "");
    const int64_t sign = netIncome && group != "sales" && group != "other-income" ? -1 : 1;
    for (const char* sum : sumNames) total[sum] += sign * Millionths(line.at(sum));
    for (const json& cause : line.at("causes")) {
      total[cause.at("code").get<std::string>() + cause.value("type", "")] +=
          sign * Millionths(cause.at("amount"));
    }
  }
  std::erase_if(total, [](const auto& sum) { return sum.second == 0; });
  return total;
}

std::map<std::string, int64_t> Own(const json& line) {
  return Total(json::array({line}), [](const json& /*line*/) { return true; });
}

double NumberIn(std::string cell, bool inFormulas) {
  if (inFormulas != cell.starts_with('=')) return 0;
  if (inFormulas) cell = cell.substr(1, cell.find('*') - 1);
  return cell.empty() || cell == "*null*" ? 0 : std::stod(cell);
}

const json* FindBlock(const json& plan, const std::string& id) {
  for (const json& table : plan.at("tables")) {
    for (const json& block : table.at("blocks")) {
      if (block.at("id") == id) return &block.at("rows");
    }
  }
  return nullptr;
}

struct PlanRows {
  Amounts amounts;
  Amounts closing;  // of the last two rows of a block, which may be totals
};

void AddBlock(const json& plan, const std::string& group, const std::string& block, bool inFormulas,
              PlanRows& rows) {
  const json* const planned = FindBlock(plan, block);
  const json* const amounts = inFormulas ? planned : FindBlock(plan, block + "_actual");
  if (planned == nullptr || amounts == nullptr) return;
  const std::size_t first = inFormulas ? 2 : 1;
  for (std::size_t row = 0; row < planned->size() && row < amounts->size(); ++row) {
    const json& cells = amounts->at(row);
    const auto actualName = cells.at(0).get<std::string>();
    const auto name =
        actualName == "*null*" || inFormulas ? planned->at(row).at(0).get<std::string>() : actualName;
    for (std::size_t month = 0; month < 12 && first + month < cells.size(); ++month) {
      const int64_t amount = std::llround(NumberIn(cells.at(first + month), inFormulas) * 1e6);
      if (amount == 0) continue;
      Amounts& sums = row + 2 < planned->size() ? rows.amounts : rows.closing;
      sums[{group, Lower(name), MonthText(month)}] += amount;
    }
  }
}

}  // namespace

int64_t Millionths(const json& amount) {
  const auto text = amount.get<std::string>();
  const std::size_t point = text.find('.');
  std::string digits = text.substr(0, point) + text.substr(point + 1);
  digits.append(6 - (text.size() - point - 1), '0');
  return std::stoll(digits);
}

ReconciledPlan ReconcilePlan(const Words& arguments) {
  const auto printed = [&](const Words& more) {
    const ProgramRun run = RunProgram(With(With({"reconcile", "--json"}, arguments), more));
    json result = json::parse(run.out);
    EXPECT_EQ(run.code, result.at("result") == "agrees" ? 0 : 4) << run.err;
    EXPECT_TRUE(result.contains("lines")) << run.err;
    return result;
  };
  return {printed({}), printed({"--months"})};
}

std::vector<std::string> CausesOf(const json& sums) {
  std::vector<std::string> causes;
  for (const json& cause : sums.at("causes")) {
    std::string text =
        fmt::format("{} {}", cause.at("code").get<std::string>(), cause.at("amount").get<std::string>());
    if (cause.contains("type")) text += fmt::format(" {}", cause.at("type").get<std::string>());
    if (const std::size_t count = cause.at("transactions").size(); count != 0)
      text += fmt::format(" ({})", count);
    causes.push_back(text);
  }
  return causes;
}

json LineOf(const json& years, std::string_view group, std::string_view account) {
  json found;
  for (const json& line : years.at("lines")) {
    if (line.at("group") != group || line.at("account") != account) continue;
    EXPECT_TRUE(found.is_null()) << account << " is there twice";
    found = line;
  }
  if (found.is_null()) ADD_FAILURE() << "no line of " << account;
  return found;
}

void ProveSums(const ReconciledPlan& reconciled) {
  const json& years = reconciled.years;
  for (const json* const printed : {&reconciled.years, &reconciled.months}) {
    for (const json& line : printed->at("lines")) ProveLine(line);
    for (const json& group : printed->at("groups")) ProveLine(group);
    ProveLine(printed->at("whole"));
    for (const json& group : printed->at("groups")) {
      EXPECT_EQ(Total(printed->at("lines"),
                      [&](const json& line) { return line.at("group") == group.at("group"); }),
                Own(group));
    }
    const auto all = [](const json& /*line*/) { return true; };
    EXPECT_EQ(Total(printed->at("lines"), all, true), Own(printed->at("whole")));
  }
  EXPECT_EQ(reconciled.months.at("groups"), years.at("groups"));
  EXPECT_EQ(reconciled.months.at("whole"), years.at("whole"));
  for (const json& line : years.at("lines")) {
    EXPECT_EQ(Total(reconciled.months.at("lines"),
                    [&](const json& month) {
                      return month.at("group") == line.at("group") &&
                             month.at("account") == line.at("account");
                    }),
              Own(line));
  }
}

void ProveExplained(const ReconciledPlan& reconciled) {
  const auto prove = [](const json& line) {
    EXPECT_EQ(line.at("unexplained"), "0.00") << line.dump();
    for (const json& cause : line.at("causes")) {
      if (cause.at("code") != "rounding") continue;
      EXPECT_LE(std::abs(Millionths(cause.at("amount"))), halfCent) << line.dump();
    }
  };
  for (const json* const printed : {&reconciled.years, &reconciled.months}) {
    for (const json& line : printed->at("lines")) prove(line);
    for (const json& group : printed->at("groups")) prove(group);
    prove(printed->at("whole"));
  }
}

int ProveBooks(const ReconciledPlan& reconciled, const std::string& company) {
  const json books = json::parse(
      RunProgram({"company", "profit-and-loss", company, "--from", "2002-01", "--to", "2002-12", "--json"})
          .out);
  Amounts expected;
  for (const json& account : books.at("accounts")) {
    if (account.at("level") != 0) continue;
    const auto* const section =
        std::ranges::find_if(sections, [&](const auto& named) { return account.at("type") == named.second; });
    const json& months = account.at("with_sub_accounts").at("months");
    for (std::size_t month = 0; month < months.size(); ++month) {
      if (const int64_t amount = Millionths(months.at(month)); amount != 0) {
        expected[{section->first, Lower(account.at("name")), MonthText(month)}] += amount;
      }
    }
  }
  EXPECT_EQ(MonthsOf(reconciled.months, "books"), expected);
  EXPECT_EQ(reconciled.years.at("whole").at("books"), books.at("net_income").at("total"));
  return static_cast<int>(expected.size());
}

int ProvePlan(const ReconciledPlan& reconciled, const std::string& plan, bool inFormulas) {
  const json shown = json::parse(RunProgram({"plan", "show", plan, "--json"}).out);
  PlanRows rows;
  AddBlock(shown, "sales", "db_sales_values_sales", inFormulas, rows);
  AddBlock(shown, "cost-of-goods", "db_sales_values_costs", inFormulas, rows);
  const bool bri = shown.at("product") == "bri";
  AddBlock(shown, "expenses", bri ? "db_contributionmargin_cat2" : "db_income_range_cat3", inFormulas, rows);
  Amounts amounts = MonthsOf(reconciled.months, "plan");
  for (const auto& [place, amount] : rows.closing) {
    if (amounts.contains(place)) rows.amounts[place] += amount;
  }
  EXPECT_EQ(amounts, rows.amounts);
  return static_cast<int>(amounts.size());
}

}  // namespace krnqb::cli::tests
