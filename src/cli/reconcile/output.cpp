#include "cli/reconcile/output.h"

#include <fmt/format.h>

#include "cli/console/json_text.h"
#include "cli/console/text_table.h"
#include "plan_file/headings.h"
#include "plan_file/views/split_table.h"
#include "support/date.h"

namespace krnqb::cli {
namespace {

using plan_file::TableLine;
using reconcile::Cause;
using reconcile::Group;
using reconcile::Reconciled;
using reconcile::Reconciliation;

constexpr std::int64_t thousandth = 1'000;  // in millionths

// Rounds to thousandths, which are shown only where they are not 0.
std::string MoneyOf(const ExactAmount& amount) {
  const std::int64_t millionths = amount.Millionths();
  const std::int64_t half = millionths < 0 ? -thousandth / 2 : thousandth / 2;
  return ExactAmount::FromMillionths((millionths + half) / thousandth * thousandth).Text();
}

YearMonth MonthOf(const Reconciliation& reconciliation, std::int16_t month) {
  return TwelveMonths(reconciliation.start).Month(month);
}

std::string NameOf(const Reconciliation& reconciliation, const Reconciled& line) {
  const std::string name = OneLine(line.account);
  if (!line.month) return name;
  const YearMonth month = MonthOf(reconciliation, *line.month);
  return fmt::format("{}, {} {}", name, EnglishMonthName(month.month), month.year);
}

// The columns between plan and books, which are shown where they differ from the column before.
struct Columns {
  bool written = false;
  bool booked = false;
};

Columns ColumnsOf(const Reconciliation& reconciliation) {
  Columns columns;
  for (const Reconciled& line : reconciliation.lines) {
    columns.written = columns.written || line.written != line.plan;
    columns.booked = columns.booked || line.booked != line.written;
  }
  return columns;
}

TableLine HeadingsOf(const Reconciliation& reconciliation, const Columns& columns) {
  TableLine headings{{"", "Plan"}, true};
  if (columns.written) headings.texts.emplace_back("Written");
  if (columns.booked) headings.texts.emplace_back("Booked");
  if (reconciliation.hasBooks) headings.texts.emplace_back("Books");
  headings.texts.emplace_back("Difference");
  return headings;
}

TableLine RowOf(const Reconciliation& reconciliation, const Columns& columns, std::string name,
                const Reconciled& line) {
  TableLine row{{std::move(name), MoneyOf(line.plan)}, false};
  if (columns.written) row.texts.push_back(MoneyOf(line.written));
  if (columns.booked) row.texts.push_back(MoneyOf(line.booked));
  if (reconciliation.hasBooks) row.texts.push_back(line.books ? MoneyOf(*line.books) : "");
  row.texts.push_back(MoneyOf(line.difference));
  return row;
}

// Returns a group's title as it is after another word.
std::string InSentence(std::string_view title) {
  std::string text(title);
  text.front() = static_cast<char>(text.front() - 'A' + 'a');
  return text;
}

std::string TableOf(const Reconciliation& reconciliation, std::size_t width) {
  const Columns columns = ColumnsOf(reconciliation);
  std::vector<TableLine> lines{HeadingsOf(reconciliation, columns)};
  const auto add = [&](std::string name, const Reconciled& line) {
    lines.push_back(RowOf(reconciliation, columns, std::move(name), line));
  };
  for (const Reconciled& total : reconciliation.totals) {
    lines.push_back({{std::string(GroupTitle(total.group))}, false});
    for (const Reconciled& line : reconciliation.lines) {
      if (line.group == total.group) add("  " + NameOf(reconciliation, line), line);
    }
    add(fmt::format("Total {}", InSentence(GroupTitle(total.group))), total);
  }
  add("Net income", reconciliation.whole);
  return SplitTableText(lines, {.width = width, .gap = 2, .indent = ""});
}

std::string TransactionsText(const std::vector<std::string>& transactions) {
  constexpr std::size_t named = 3;
  if (transactions.empty()) return {};
  std::string text;
  for (std::size_t index = 0; index < transactions.size() && index < named; ++index) {
    text += (index == 0 ? "" : ", ") + OneLine(transactions[index]);
  }
  if (transactions.size() > named) text += fmt::format(" and {} more", transactions.size() - named);
  return fmt::format(" [{}]", text);
}

std::string CauseLine(const Cause& cause) {
  const std::string type = cause.type.empty() ? "" : fmt::format(" ({})", OneLine(cause.type));
  return fmt::format("{:>16}  {}{}{}\n", MoneyOf(cause.amount), CauseText(cause.code), type,
                     TransactionsText(cause.transactions));
}

bool HasCauses(const Reconciled& line) {
  return !line.causes.empty() || !line.unexplained.IsZero();
}

std::string CausesText(const std::string& title, const Reconciled& line) {
  std::string text = fmt::format("  {}: {}\n", title, MoneyOf(line.difference));
  for (const Cause& cause : line.causes) text += CauseLine(cause);
  if (!line.unexplained.IsZero()) text += fmt::format("{:>16}  unexplained\n", MoneyOf(line.unexplained));
  return text;
}

std::string DifferencesText(const Reconciliation& reconciliation) {
  std::string text;
  for (const Reconciled& line : reconciliation.lines) {
    if (!HasCauses(line)) continue;
    text += CausesText(fmt::format("{}: {}", GroupTitle(line.group), NameOf(reconciliation, line)), line);
  }
  return text;
}

std::string BalancesText(const Reconciliation& reconciliation) {
  if (reconciliation.balances.empty()) return {};
  std::string text = "\nThe loaded transactions of all days do not explain these balances:\n";
  for (const reconcile::UnexplainedBalance& balance : reconciliation.balances) {
    text += fmt::format("  {}: {} of {}\n", OneLine(balance.account), balance.posted.Text(),
                        balance.balance.Text());
  }
  return text;
}

std::string Verdict(const ReconcileResult& result) {
  const Reconciled& whole = result.reconciliation.whole;
  if (!result.reconciliation.hasBooks) {
    return "The books' own amounts are unknown, so the plan is compared with what an import books. Give the "
           "profit and loss of these months, printed or exported from QuickBooks, with --profit-and-loss.\n";
  }
  if (result.agrees) return "The plan agrees with the books.\n";
  std::size_t unexplained = 0;
  for (const Reconciled& line : result.reconciliation.lines)
    if (!line.unexplained.IsZero()) ++unexplained;
  const std::string rest =
      unexplained == 0
          ? "every difference has a cause"
          : fmt::format("{} of the net income are unexplained, and something in {} {}",
                        MoneyOf(whole.unexplained), unexplained, unexplained == 1 ? "line" : "lines");
  return fmt::format("The plan differs from the books: net income by {}; {}.\n", MoneyOf(whole.difference),
                     rest);
}

Json CauseJson(const Cause& cause) {
  Json json{{"code", CauseWord(cause.code)},
            {"amount", cause.amount.PlainText()},
            {"transactions", cause.transactions}};
  if (!cause.type.empty()) json["type"] = cause.type;
  return json;
}

Json LineJson(const Reconciliation& reconciliation, const Reconciled& line, Json json) {
  json["month"] = Json();
  if (line.month) {
    const YearMonth month = MonthOf(reconciliation, *line.month);
    json["month"] = fmt::format("{:04}-{:02}", month.year, month.month);
  }
  json["plan"] = line.plan.PlainText();
  json["written"] = line.written.PlainText();
  json["booked"] = line.booked.PlainText();
  json["books"] = line.books ? Json(line.books->PlainText()) : Json();
  json["difference"] = line.difference.PlainText();
  json["causes"] = Json::array();
  for (const Cause& cause : line.causes) json["causes"].push_back(CauseJson(cause));
  json["unexplained"] = line.unexplained.PlainText();
  return json;
}

}  // namespace

std::string ReconcileText(const ReconcileResult& result, std::size_t width) {
  const Reconciliation& reconciliation = result.reconciliation;
  const std::string differences = DifferencesText(reconciliation);
  return fmt::format("{} and {}, {}{}\n\n{}{}{}{}\n{}", OneLine(result.planFile), OneLine(result.source),
                     plan_file::TwelveMonthsText(reconciliation.start),
                     result.books.empty() ? "" : fmt::format("; the books are {}", OneLine(result.books)),
                     TableOf(reconciliation, width), differences.empty() ? "" : "\nDifferences\n",
                     differences, BalancesText(reconciliation), Verdict(result));
}

std::string ReconcileJson(const ReconcileResult& result) {
  const Reconciliation& reconciliation = result.reconciliation;
  Json json{{"result", result.agrees ? "agrees" : "differs"},
            {"plan", result.planFile},
            {"source", result.source},
            {"books", result.books.empty() ? Json() : Json(result.books)},
            {"from", fmt::format("{:04}-{:02}", reconciliation.start.year, reconciliation.start.month)},
            {"lines", Json::array()},
            {"groups", Json::array()},
            {"whole", LineJson(reconciliation, reconciliation.whole, Json::object())},
            {"balances", Json::array()},
            {"findings", result.findings}};
  for (const Reconciled& line : reconciliation.lines) {
    json["lines"].push_back(
        LineJson(reconciliation, line, {{"group", GroupWord(line.group)}, {"account", line.account}}));
  }
  for (const Reconciled& total : reconciliation.totals) {
    json["groups"].push_back(LineJson(reconciliation, total, {{"group", GroupWord(total.group)}}));
  }
  for (const reconcile::UnexplainedBalance& balance : reconciliation.balances) {
    json["balances"].push_back({{"account", balance.account},
                                {"balance", balance.balance.PlainText()},
                                {"posted", balance.posted.PlainText()}});
  }
  return JsonText(json);
}

}  // namespace krnqb::cli
