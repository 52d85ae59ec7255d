#include "cli/report/reconcile_page.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "cli/report/amounts.h"
#include "html/elements.h"
#include "html/page.h"
#include "html/table.h"
#include "plan_file/headings.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

using reconcile::Cause;
using reconcile::Reconciled;
using reconcile::Reconciliation;

std::string MonthText(const Reconciliation& reconciliation, std::int16_t month) {
  return plan_file::MonthOfYear(TwelveMonths(reconciliation.start).Month(month));
}

html::Fragment NameOf(const Reconciliation& reconciliation, const Reconciled& line) {
  const html::Fragment name = html::Name(line.account);
  return line.month ? name + html::Text(", " + MonthText(reconciliation, *line.month)) : name;
}

html::Row RowOf(const Reconciliation& reconciliation, const html::Fragment& name, const Reconciled& line,
                html::RowKind kind) {
  html::Row row{.heading = {name},
                .cells = {AmountCell(line.plan), AmountCell(line.written), AmountCell(line.booked)},
                .kind = kind,
                .name = fmt::format("{}/{}/{}", GroupWord(line.group), line.account,
                                    MonthOfLine(reconciliation, line))};
  if (reconciliation.hasBooks) row.cells.push_back(line.books ? AmountCell(*line.books) : html::Cell{});
  row.cells.push_back(AmountCell(line.difference));
  return row;
}

html::Fragment AmountTable(const Reconciliation& reconciliation) {
  html::Table table{
      .caption = fmt::format("Plan and books, {}", plan_file::TwelveMonthsText(reconciliation.start)),
      .columns = {{"Account", html::Alignment::Text},
                  {"In the plan"},
                  {"Written by the last import"},
                  {"Booked by an import now"}},
      .rows = {},
      .name = "reconciled"};
  if (reconciliation.hasBooks) table.columns.push_back({"In the books"});
  table.columns.push_back({"Difference"});
  for (const Reconciled& total : reconciliation.totals) {
    const std::string_view title = GroupTitle(total.group);
    table.rows.push_back({.heading = {html::Text(title)}, .cells = {}, .kind = html::RowKind::Heading});
    for (const Reconciled& line : reconciliation.lines) {
      if (line.group == total.group)
        table.rows.push_back(RowOf(reconciliation, NameOf(reconciliation, line), line, html::RowKind::Plain));
    }
    table.rows.push_back(
        RowOf(reconciliation, html::Text(fmt::format("{}, sum", title)), total, html::RowKind::Total));
  }
  html::Row whole =
      RowOf(reconciliation, html::Text("Net income"), reconciliation.whole, html::RowKind::Total);
  whole.name = "whole";
  table.rows.push_back(std::move(whole));
  return html::TableRegion(table);
}

html::Fragment TransactionsOf(const Cause& cause) {
  constexpr std::size_t most = 200;
  html::Fragment names;
  for (std::size_t index = 0; index < std::min(cause.transactions.size(), most); ++index) {
    if (index > 0) names += html::Text(", ");
    names += html::Name(cause.transactions[index]);
  }
  if (cause.transactions.size() > most)
    names += html::Text(fmt::format(" and {} more", cause.transactions.size() - most));
  return names;
}

html::Fragment CausesOf(const Reconciliation& reconciliation, const Reconciled& line) {
  const std::string account =
      line.month ? fmt::format("{}, {}", line.account, MonthText(reconciliation, *line.month)) : line.account;
  html::Table table{
      .caption = fmt::format("{}, {}", GroupTitle(line.group), account),
      .columns = {{"Cause", html::Alignment::Text}, {"Amount"}, {"Transactions", html::Alignment::Text}},
      .rows = {},
      .name = "causes"};
  for (const Cause& cause : line.causes) {
    if (!IsShown(cause)) continue;
    const std::string type = cause.type.empty() ? "" : ": " + cause.type;
    table.rows.push_back({.heading = {html::Text(std::string(reconcile::CauseText(cause.code)) + type)},
                          .cells = {AmountCell(cause.amount), {TransactionsOf(cause)}},
                          .name = std::string(CauseWord(cause.code))});
  }
  if (!line.unexplained.IsZero()) {
    table.rows.push_back({.heading = {html::Text("unexplained")},
                          .cells = {AmountCell(line.unexplained)},
                          .name = "unexplained"});
  }
  if (table.rows.empty()) return {};
  const html::Fragment summary = html::Text(fmt::format("{}, ", GroupTitle(line.group))) +
                                 NameOf(reconciliation, line) +
                                 html::Text(": " + ShownAmount(line.difference));
  return html::Details(summary, html::TableRegion(table));
}

html::Fragment Differences(const Reconciliation& reconciliation) {
  html::Fragment content;
  for (const Reconciled& line : reconciliation.lines) content += CausesOf(reconciliation, line);
  return content.Empty() ? content : html::Heading(3, "What the differences consist of") + content;
}

html::Fragment Balances(const Reconciliation& reconciliation) {
  html::Table table{.caption = "Balances that the loaded transactions of all days do not explain",
                    .columns = {{"Account", html::Alignment::Text}, {"Balance"}, {"Posted"}, {"Missing"}},
                    .rows = {},
                    .name = "balances"};
  for (const reconcile::UnexplainedBalance& balance : reconciliation.balances) {
    table.rows.push_back({.heading = {html::Name(balance.account)},
                          .cells = {AmountCell(balance.balance), AmountCell(balance.posted),
                                    AmountCell(balance.balance - balance.posted)},
                          .name = balance.account});
  }
  return html::TableRegion(table);
}

html::Fragment Findings(const ReconcileResult& result) {
  std::vector<html::Fragment> items;
  items.reserve(result.findings.size());
  for (const std::string& finding : result.findings) items.push_back(html::Text(finding));
  if (items.empty()) return {};
  return html::Heading(3, "What does not agree within the documents") + html::List(items);
}

html::Fragment Verdict(const ReconcileResult& result) {
  const html::Fragment badge =
      result.agrees ? html::Badge(html::Mark::Good, "agrees") : html::Badge(html::Mark::Bad, "differs");
  return html::Box(result.agrees ? html::Mark::Good : html::Mark::Bad,
                   html::Paragraph(badge + html::Text(" " + VerdictText(result))));
}

}  // namespace

html::Fragment ReconciliationParts(const ReconcileResult& result) {
  html::Fragment books;
  if (!result.books.empty()) books = html::Paragraph(html::Text("Books: ") + html::Name(result.books));
  return Verdict(result) + books + AmountTable(result.reconciliation) + Differences(result.reconciliation) +
         Balances(result.reconciliation) + Findings(result);
}

std::string ReconcilePage(const ReconcileResult& result, const std::string& footer) {
  const std::string plan = TextOfPath(PathFrom(result.planFile).filename());
  const html::Fragment facts =
      html::Facts({{"Plan", html::Name(result.planFile)},
                   {"Company or recording", html::Name(result.source)},
                   {"Months", html::Text(plan_file::TwelveMonthsText(result.reconciliation.start))}});
  return html::PageText({.title = fmt::format("Reconciliation of {}", plan),
                         .introduction = facts,
                         .sections = {{"reconciliation", "Plan and books", ReconciliationParts(result)}},
                         .footer = footer});
}

}  // namespace krnqb::cli
