#include "cli/report/left_out.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/console/decimal_text.h"
#include "cli/import/notices/skipped_amounts.h"
#include "cli/report/amounts.h"
#include "html/elements.h"
#include "html/table.h"

namespace krnqb::cli {
namespace {

using html::Alignment;

std::string_view MeaningText(SkipKind kind) noexcept {
  switch (kind) {
    case SkipKind::NotRequested:
      return "Not asked for";
    case SkipKind::NotImported:
      return "Not brought into a plan";
    case SkipKind::Lost:
      break;
  }
  return "Lost";
}

html::Fragment NamesOf(const std::vector<std::string>& names) {
  constexpr std::size_t most = 50;
  html::Fragment text;
  for (std::size_t index = 0; index < std::min(names.size(), most); ++index) {
    if (index > 0) text += html::Text(", ");
    text += html::Name(names[index]);
  }
  if (names.size() > most) text += html::Text(fmt::format(" and {} more", names.size() - most));
  return text;
}

html::Cell SumCell(const ImportReport::Total& total) {
  return total.sum ? AmountCell(*total.sum) : html::Cell{html::Text("out of range")};
}

html::Fragment Groups(const ImportReport& report) {
  html::Table table{.caption = "Amounts that were left out, by reason",
                    .columns = {{"Reason", Alignment::Text},
                                {"Meaning", Alignment::Text},
                                {"Number"},
                                {"Sum"},
                                {"Accounts and items", Alignment::Text}},
                    .rows = {},
                    .name = "left-out"};
  for (const ImportReport::LeftOutGroup& group : report.LeftOutGroups()) {
    const std::string count = std::to_string(group.total.count);
    table.rows.push_back({.heading = {html::Text(ReasonText(group.reason))},
                          .cells = {{html::Text(MeaningText(group.kind))},
                                    {html::Text(count), count},
                                    SumCell(group.total),
                                    {NamesOf(group.names)}},
                          .name = std::string(ReasonWord(group.reason))});
  }
  return html::TableRegion(table);
}

html::Row RowOf(const Notice& notice) {
  static const Skipped nothing;
  const Skipped& skipped = notice.skipped ? *notice.skipped : nothing;
  const std::string amount = DecimalText(std::string_view(skipped.amount)).value_or(skipped.amount);
  return {.heading = {html::Text(skipped.transactionDate)},
          .cells = {{html::Name(skipped.transactionId)},
                    {html::Name(skipped.accountName.empty() ? skipped.source : skipped.accountName)},
                    {html::Name(skipped.customerName)},
                    {html::Text(ReasonText(skipped.reason))},
                    {html::Text(amount)}}};
}

html::Fragment Amounts(const ImportReport& report) {
  constexpr std::size_t most = 200;
  html::Table table{.caption = "Each amount that was left out",
                    .columns = {{"Date", Alignment::Text},
                                {"Transaction", Alignment::Text},
                                {"Account or item", Alignment::Text},
                                {"Customer", Alignment::Text},
                                {"Reason", Alignment::Text},
                                {"Amount"}},
                    .rows = {}};
  std::size_t count = 0;
  for (const Notice& notice : report.Journal()) {
    if (!notice.skipped || notice.place.pastPeriod) continue;
    if (++count <= most) table.rows.push_back(RowOf(notice));
  }
  if (count == 0) return {};
  html::Fragment content = html::TableRegion(table);
  if (count > most) {
    content += html::Remark(
        fmt::format("{} more are not shown; import with --journal FILE to list all of them.", count - most));
  }
  return html::Details(html::Text(Counted(static_cast<std::int64_t>(count), "amount", "amounts")), content);
}

}  // namespace

html::Fragment LeftOut(const ImportReport& report) {
  html::Fragment content = Groups(report) + Amounts(report);
  if (report.LeftOutOfPast().count > 0) {
    content +=
        html::Paragraph(fmt::format("{} left out of past performance as well.",
                                    Counted(report.LeftOutOfPast().count, "amount was", "amounts were")));
  }
  if (!report.RepeatedAccounts().empty()) {
    content +=
        html::Paragraph(html::Text("Accounts shown in several rows of a report; all rows were added: ") +
                        NamesOf(report.RepeatedAccounts()));
  }
  if (!report.PastPerformanceEnd().empty()) {
    content += html::Paragraph(fmt::format(
        "Past performance ended early: the company has no top-level account of type {}. The remaining cells "
        "were not written.",
        report.PastPerformanceEnd()));
  }
  return content;
}

}  // namespace krnqb::cli
