#include "cli/reconcile/output.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/console/json_text.h"
#include "cli/console/text_table.h"
#include "plan_file/headings.h"
#include "plan_file/views/split_table.h"
#include "support/date.h"
#include "support/display_width.h"

namespace krnqb::cli {
namespace {

using plan_file::TableLine;
using reconcile::Cause;
using reconcile::Reconciled;
using reconcile::Reconciliation;

constexpr std::int64_t thousandth = 1'000;  // in millionths

YearMonth MonthOf(const Reconciliation& reconciliation, std::int16_t month) {
  return TwelveMonths(reconciliation.start).Month(month);
}

std::string MonthText(const Reconciliation& reconciliation, std::int16_t number) {
  const YearMonth month = MonthOf(reconciliation, number);
  return fmt::format("{} {}", EnglishMonthName(month.month), month.year);
}

std::string NameOf(const Reconciliation& reconciliation, const Reconciled& line) {
  const std::string name = OneLine(line.account);
  return line.month ? fmt::format("{}, {}", name, MonthText(reconciliation, *line.month)) : name;
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
  TableLine row{{std::move(name), ShownAmount(line.plan)}, false};
  if (columns.written) row.texts.push_back(ShownAmount(line.written));
  if (columns.booked) row.texts.push_back(ShownAmount(line.booked));
  if (reconciliation.hasBooks) row.texts.push_back(line.books ? ShownAmount(*line.books) : "");
  row.texts.push_back(ShownAmount(line.difference));
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
    std::string above;
    for (const Reconciled& line : reconciliation.lines) {
      if (line.group != total.group) continue;
      const std::string name = "  " + OneLine(line.account);
      if (line.month && name != above) lines.push_back({{name}, false});
      above = name;
      add(line.month ? "    " + MonthText(reconciliation, *line.month) : name, line);
    }
    add(fmt::format("Total {}", InSentence(GroupTitle(total.group))), total);
  }
  add("Net income", reconciliation.whole);
  return SplitTableText(lines, {.width = width, .gap = 2, .indent = ""});
}

// Returns `lead` and the words of the text, in lines of `width` columns as far as that is possible. Lines
// after the first are indented as far as the first word.
std::string Wrapped(std::string_view lead, std::string_view text, std::size_t width) {
  const std::size_t indent = DisplayWidth(lead);
  std::string lines(lead);
  std::size_t column = indent;
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), word.size() + 1));
    const std::size_t columns = DisplayWidth(word);
    if (column > indent && column + 1 + columns > width) {
      lines += '\n' + std::string(indent, ' ');
      column = indent;
    } else if (column > indent) {
      lines += ' ';
      ++column;
    }
    lines += word;
    column += columns;
  }
  return lines + '\n';
}

std::string TransactionsText(const std::vector<std::string>& transactions) {
  constexpr std::size_t named = 3;
  if (transactions.empty()) return {};
  std::string text;
  for (std::size_t index = 0; index < transactions.size() && index < named; ++index) {
    text += (index == 0 ? "" : ", ") + OneLine(transactions[index]);
  }
  if (transactions.size() == 1) return fmt::format(" (transaction {})", text);
  const std::string_view names = transactions.size() > named ? ", such as" : ":";
  return fmt::format(" ({} transactions{} {})", transactions.size(), names, text);
}

// A part of a difference: the amount to the left of the text.
std::string PartText(const ExactAmount& amount, std::string_view text, std::size_t width) {
  return Wrapped(fmt::format("{:>16}  ", ShownAmount(amount)), text, width);
}

std::string CauseText(const Cause& cause, std::size_t width) {
  const std::string type = cause.type.empty() ? "" : fmt::format(": {}", OneLine(cause.type));
  return PartText(
      cause.amount,
      fmt::format("{}{}{}", reconcile::CauseText(cause.code), type, TransactionsText(cause.transactions)),
      width);
}

bool HasDifference(const Reconciled& line) {
  return !line.difference.IsZero();
}

bool HasCauses(const Reconciled& line) {
  return std::ranges::any_of(line.causes, IsShown) || !line.unexplained.IsZero();
}

std::string DifferencesText(const Reconciliation& reconciliation, std::size_t width) {
  std::string text;
  for (const Reconciled& line : reconciliation.lines) {
    if (!HasCauses(line)) continue;
    text += fmt::format("  {}, {}: {}\n", GroupTitle(line.group), NameOf(reconciliation, line),
                        ShownAmount(line.difference));
    for (const Cause& cause : line.causes) {
      if (IsShown(cause)) text += CauseText(cause, width);
    }
    if (!line.unexplained.IsZero()) text += PartText(line.unexplained, "unexplained", width);
  }
  return text.empty() ? text : "\nDifferences\n" + text;
}

std::string BalancesText(const Reconciliation& reconciliation) {
  if (reconciliation.balances.empty()) return {};
  std::string text = "\nThe loaded transactions of all days do not explain these balances:\n";
  for (const reconcile::UnexplainedBalance& balance : reconciliation.balances) {
    const ExactAmount missing = balance.balance - balance.posted;
    const bool isMissing = missing > ExactAmount();
    text += fmt::format("  {}: {} of {} ({} {})\n", OneLine(balance.account), ShownAmount(balance.posted),
                        ShownAmount(balance.balance), ShownAmount(isMissing ? missing : -missing),
                        isMissing ? "is missing" : "too much");
  }
  return text;
}

// Returns how the plan's net income differs, after "The plan differs from ...".
std::string NetIncomeText(const ExactAmount& difference) {
  if (difference.IsZero()) return "not in net income";
  const bool more = difference > ExactAmount();
  return fmt::format("its net income is {} too {}", ShownAmount(more ? difference : -difference),
                     more ? "high" : "low");
}

std::string UnexplainedText(const Reconciliation& reconciliation) {
  const auto unexplained = std::ranges::count_if(
      reconciliation.lines, [](const Reconciled& line) { return !line.unexplained.IsZero(); });
  if (unexplained == 0) return "every difference has a cause";
  return fmt::format("{} {} an unexplained difference, which is {} of the net income", unexplained,
                     unexplained == 1 ? "line has" : "lines have",
                     ShownAmount(reconciliation.whole.unexplained));
}

Json CauseJson(const Cause& cause) {
  Json json{{"code", CauseWord(cause.code)},
            {"amount", cause.amount.PlainText()},
            {"transactions", cause.transactions}};
  if (!cause.type.empty()) json["type"] = cause.type;
  return json;
}

Json LineJson(const Reconciliation& reconciliation, const Reconciled& line, Json json) {
  const std::string month = MonthOfLine(reconciliation, line);
  json["month"] = month.empty() ? Json() : Json(month);
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

std::string ShownAmount(const ExactAmount& amount) {
  const std::int64_t millionths = amount.Millionths();
  const std::int64_t half = millionths < 0 ? -thousandth / 2 : thousandth / 2;
  return ExactAmount::FromMillionths((millionths + half) / thousandth * thousandth).Text();
}

bool IsShown(const Cause& cause) {
  return ShownAmount(cause.amount) != "0.00";
}

std::string MonthOfLine(const Reconciliation& reconciliation, const Reconciled& line) {
  if (!line.month) return {};
  const YearMonth month = MonthOf(reconciliation, *line.month);
  return fmt::format("{:04}-{:02}", month.year, month.month);
}

std::string VerdictText(const ReconcileResult& result) {
  const Reconciliation& reconciliation = result.reconciliation;
  const std::string_view other = reconciliation.hasBooks ? "the books" : "what an import books";
  const bool exactly = std::ranges::none_of(reconciliation.lines, HasDifference);
  std::string text = fmt::format("The plan agrees with {}{}.", other, exactly ? "" : " within the tolerance");
  if (!result.agrees) {
    text = fmt::format("The plan differs from {}: {}; {}.", other,
                       NetIncomeText(reconciliation.whole.difference), UnexplainedText(reconciliation));
  }
  if (!reconciliation.hasBooks) {
    text +=
        " The books' own amounts are unknown: give the profit and loss of these months, as QuickBooks "
        "answers or exports it, with --profit-and-loss.";
  }
  return text;
}

std::string ReconcileText(const ReconcileResult& result, std::size_t width) {
  const Reconciliation& reconciliation = result.reconciliation;
  std::string text = Wrapped("",
                             fmt::format("{} and {}, {}", OneLine(result.planFile), OneLine(result.source),
                                         plan_file::TwelveMonthsText(reconciliation.start)),
                             width);
  if (!result.books.empty()) text += Wrapped("", fmt::format("Books: {}", OneLine(result.books)), width);
  text += '\n' + TableOf(reconciliation, width);
  text += DifferencesText(reconciliation, width);
  text += BalancesText(reconciliation);
  return text + '\n' + Wrapped("", VerdictText(result), width);
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
