#include "profit_and_loss/outline.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "profit_and_loss/words.h"

namespace krnqb::profit_and_loss {
namespace {

constexpr std::size_t deepest = 32;
constexpr std::string_view structureAdvice = "export the report again with all of its lines";

struct Term {
  Section section;
  int sign;
};

constexpr std::array incomeTerms{Term{Section::Income, 1}, Term{Section::CostOfGoods, -1},
                                 Term{Section::Expense, -1}, Term{Section::OtherIncome, 1},
                                 Term{Section::OtherExpense, -1}};

bool IsPartOf(Section section, ClosingLine line) noexcept {
  const bool other = section == Section::OtherIncome || section == Section::OtherExpense;
  switch (line) {
    case ClosingLine::GrossProfit:
      return section == Section::Income || section == Section::CostOfGoods;
    case ClosingLine::NetOrdinaryIncome:
      return !other;
    case ClosingLine::NetOtherIncome:
      return other;
    case ClosingLine::NetIncome:
    case ClosingLine::Total:
      break;
  }
  return true;
}

// Whether a label could be an account's: then its hyphen may separate a number.
bool IsAccountLabel(std::string_view label) {
  return !label.empty() && !TotalledLabel(label) && !ClosingLineOf(label) && !IsTopHeading(label) &&
         !SectionOfHeading(label);
}

// Digits and a hyphen are account numbers only if several accounts are written so, and no other account is
// not: a report shows numbers for all accounts or for none.
bool HasHyphenNumbers(const CapturedReport& report) {
  std::size_t count = 0;
  for (const ReportRow& row : report.rows) {
    if (!IsAccountLabel(row.label)) continue;
    if (!HasHyphenNumber(row.label)) return false;
    ++count;
  }
  return count > 1;
}

bool IsNotZero(const ExactAmount& amount) noexcept {
  return !amount.IsZero();
}

bool CanBeTotal(const ReportRow& row) noexcept {
  return row.kind == RowKind::Unstated || row.kind == RowKind::Total;
}

}  // namespace

Outline::Outline(const CapturedReport& report, const std::vector<std::string>& titles, Findings& findings)
    : report_(report), titles_(titles), findings_(findings), hyphenNumbers_(HasHyphenNumbers(report)) {
  nextLabel_.assign(report.rows.size(), 0);
  std::size_t next = report.rows.size();
  for (std::size_t index = report.rows.size(); index-- > 0;) {
    nextLabel_[index] = next;
    const ReportRow& row = report.rows[index];
    if (row.label.empty()) continue;
    next = index;
    if (const std::optional<std::string_view> parent = OtherOfLabel(row.label))
      parents_.insert(Folded(*parent));
    const std::optional<std::string_view> totalled = TotalledLabel(row.label);
    if (!totalled || !CanBeTotal(row)) continue;
    ++totalsToCome_[Folded(*totalled)];
    const std::optional<Section> section = SectionOfHeading(*totalled);
    if (section) ++sectionTotalsToCome_.at(static_cast<std::size_t>(*section));
  }
  for (RowAmounts& sums : sectionSums_) sums.resize(titles.size());
}

std::optional<AccountPath> Outline::Take(std::size_t index, const RowAmounts& amounts) {
  const ReportRow& row = report_.rows[index];
  if (CanBeTotal(row)) {
    if (TakeTotal(row, amounts) || TakeClosingLine(row, amounts)) return std::nullopt;
    if (row.kind == RowKind::Total) {
      findings_.Add(fmt::format("{}: {} is not checked, because it is unclear what it totals",
                                PlaceOf(report_, row.number), Quoted(row.label)));
      return std::nullopt;
    }
  }
  PopByDepth(row);
  if (row.kind != RowKind::Account && TakeSection(row, amounts)) return std::nullopt;
  if (openSection_ && !WithinSection(row)) openSection_.reset();
  if (!openSection_) section_ = Section::Unknown;
  if (!amounts.empty() && anyHeading_ && !openSection_) {
    Refuse(PlaceOf(report_, row.number), fmt::format("{} is in no section", Quoted(row.label)),
           "put every account below Income, Cost of Goods Sold, Expense, Other Income or Other Expense");
  }
  std::optional<AccountPath> path;
  if (!amounts.empty()) path = PathOf(row);
  if (HasChildren(index, amounts)) Push(row, amounts);
  if (path) Add(amounts);
  return path;
}

bool Outline::TotalComes(std::string_view label) const {
  const auto found = totalsToCome_.find(Folded(label));
  if (found == totalsToCome_.end()) return false;
  const auto open =
      std::ranges::count_if(open_, [&](const Heading& heading) { return SameText(heading.label, label); });
  return found->second > static_cast<std::size_t>(open);
}

bool Outline::HasChildren(std::size_t index, const RowAmounts& amounts) const {
  const ReportRow& row = report_.rows[index];
  if (row.kind == RowKind::Account) return false;
  if (row.kind == RowKind::Heading) return true;
  if (!report_.indented) {
    if (!amounts.empty()) return false;
    if (TotalComes(row.label)) return true;
    if (!parents_.contains(Folded(row.label))) return false;
    Refuse(PlaceOf(report_, row.number),
           fmt::format("{} has no line {}, so it is unclear which accounts are below it", Quoted(row.label),
                       Quoted("Total " + row.label)),
           "indent the sub-accounts, or add the line");
  }
  const std::size_t next = nextLabel_[index];
  return next < report_.rows.size() && report_.rows[next].depth > row.depth;
}

// A section ends with its total, with a less indented label, or, if neither exists, at the next section.
bool Outline::WithinSection(const ReportRow& row) const {
  if (!openSection_) return false;
  return !report_.indented || row.depth > sectionDepth_ ||
         (row.depth == sectionDepth_ && SectionTotalComes());
}

bool Outline::SectionTotalComes() const {
  return openSection_ && sectionTotalsToCome_.at(static_cast<std::size_t>(*openSection_)) > 0;
}

bool Outline::TakeSection(const ReportRow& row, const RowAmounts& amounts) {
  const std::optional<Section> section = SectionOfHeading(row.label);
  const bool top = IsTopHeading(row.label);
  if (!section && !top) return false;
  if (!open_.empty()) return false;
  if (openSection_ && (report_.indented ? WithinSection(row) : SectionTotalComes())) return false;
  if (!amounts.empty()) {
    Refuse(PlaceOf(report_, row.number),
           fmt::format("{} is the heading of a section, but has amounts", Quoted(row.label)),
           "give a report with the accounts of each section");
  }
  anyHeading_ = true;
  openSection_ = section;
  section_ = section.value_or(Section::Unknown);
  sectionDepth_ = row.depth;
  return true;
}

bool Outline::TakeTotal(const ReportRow& row, const RowAmounts& amounts) {
  const std::optional<std::string_view> totalled = TotalledLabel(row.label);
  if (!totalled) return false;
  const std::optional<Section> section = SectionOfHeading(*totalled);
  --totalsToCome_[Folded(*totalled)];
  if (section) --sectionTotalsToCome_.at(static_cast<std::size_t>(*section));
  for (std::size_t index = open_.size(); index-- > 0;) {
    if (!SameText(open_[index].label, *totalled)) continue;
    CloseTotalled(index, row, amounts);
    return true;
  }
  if (section && openSection_ == section) {
    PopByDepth(row);
    while (!open_.empty()) Pop();
    CheckSums(row, amounts, Sums(*section));
    openSection_.reset();
    section_ = Section::Unknown;
    return true;
  }
  Refuse(PlaceOf(report_, row.number),
         fmt::format("{} has no line {} above it", Quoted(row.label), Quoted(*totalled)), structureAdvice);
}

void Outline::CloseTotalled(std::size_t index, const ReportRow& row, const RowAmounts& amounts) {
  while (open_.size() > index + 1) Pop();
  Heading& heading = open_.back();
  const bool differs = !amounts.empty() && amounts != heading.sums;
  if (heading.ownAmounts && differs) {
    Refuse(PlaceOf(report_, heading.row),
           fmt::format("{} has amounts and sub-accounts, which together are not {}", Quoted(heading.label),
                       Quoted(row.label)),
           "move the amounts of the account itself to a line \"NAME - Other\"");
  }
  CheckSums(row, amounts, heading.sums);
  heading.ownAmounts = false;
  RowAmounts sums = std::move(heading.sums);
  open_.pop_back();
  AddTo(open_.empty() ? Sums(section_) : open_.back().sums, sums);
}

bool Outline::TakeClosingLine(const ReportRow& row, const RowAmounts& amounts) {
  const std::optional<ClosingLine> line = ClosingLineOf(row.label);
  if (!line) return false;
  if (report_.indented) PopByDepth(row);
  const bool account = row.kind == RowKind::Unstated && !open_.empty();
  if (account) return false;
  while (!open_.empty()) Pop();
  openSection_.reset();
  section_ = Section::Unknown;
  if (line == ClosingLine::NetIncome) anyNetIncome_ = true;
  const RowAmounts& unknown = Sums(Section::Unknown);
  if (line == ClosingLine::Total && !anyHeading_) {
    CheckSums(row, amounts, unknown);
    return true;
  }
  if (line == ClosingLine::Total || std::ranges::any_of(unknown, IsNotZero)) {
    findings_.Add(
        fmt::format("{}: {} is not checked, because it is unclear in which sections its accounts are",
                    PlaceOf(report_, row.number), Quoted(row.label)));
    return true;
  }
  RowAmounts expected(titles_.size());
  for (const Term& term : incomeTerms) {
    if (!IsPartOf(term.section, *line)) continue;
    const RowAmounts& sums = Sums(term.section);
    for (std::size_t column = 0; column < expected.size(); ++column)
      expected[column] += term.sign > 0 ? sums[column] : -sums[column];
  }
  CheckSums(row, amounts, expected);
  return true;
}

void Outline::PopByDepth(const ReportRow& row) {
  if (!report_.indented) return;
  while (!open_.empty() && open_.back().depth >= row.depth) Pop();
}

// Closes the innermost heading without a total.
void Outline::Pop() {
  Heading& heading = open_.back();
  if (!report_.indented) {
    Refuse(PlaceOf(report_, heading.row),
           fmt::format("{} does not end with a line {}", Quoted(heading.label),
                       Quoted("Total " + heading.label)),
           structureAdvice);
  }
  if (heading.ownAmounts) {
    Refuse(PlaceOf(report_, heading.row),
           fmt::format(
               "{} has amounts and sub-accounts, but no line {} says whether the amounts include those of "
               "the sub-accounts",
               Quoted(heading.label), Quoted("Total " + heading.label)),
           "move the amounts of the account itself to a line \"NAME - Other\", or remove them");
  }
  RowAmounts sums = std::move(heading.sums);
  open_.pop_back();
  AddTo(open_.empty() ? Sums(section_) : open_.back().sums, sums);
}

void Outline::Push(const ReportRow& row, const RowAmounts& amounts) {
  if (open_.size() == deepest) {
    Refuse(PlaceOf(report_, row.number), fmt::format("accounts are nested more than {} deep", deepest),
           structureAdvice);
  }
  const bool other = !open_.empty() && IsOtherOf(row.label, open_.back().label);
  open_.push_back({.label = row.label,
                   .row = row.number,
                   .depth = row.depth,
                   .name = SeparateNumber(row.label, hyphenNumbers_),
                   .other = other,
                   .ownAmounts = !amounts.empty(),
                   .sums = RowAmounts(titles_.size())});
}

void Outline::Add(const RowAmounts& amounts) {
  AddTo(open_.empty() ? Sums(section_) : open_.back().sums, amounts);
}

void Outline::AddTo(RowAmounts& sums, const RowAmounts& amounts) {
  for (std::size_t column = 0; column < amounts.size(); ++column) sums[column] += amounts[column];
}

void Outline::CheckSums(const ReportRow& row, const RowAmounts& amounts, const RowAmounts& sums) {
  for (std::size_t column = 0; column < amounts.size(); ++column) {
    if (amounts[column] == sums[column]) continue;
    findings_.Add(fmt::format("{}: {} is {} in column {}, but the amounts above it add up to {}",
                              PlaceOf(report_, row.number), Quoted(row.label), amounts[column].Text(),
                              Quoted(titles_[column]), sums[column].Text()));
  }
}

AccountPath Outline::FromFullName(std::size_t row, std::string_view fullName) const {
  AccountPath path{.section = section_, .names = {}, .numbers = {}};
  for (std::string_view rest = fullName;;) {
    const std::size_t colon = rest.find(':');
    NumberedName name = SeparateNumber(Trimmed(rest.substr(0, colon)), hyphenNumbers_);
    if (name.name.empty() || path.names.size() == deepest) {
      Refuse(PlaceOf(report_, row), fmt::format("{} is not the name of an account", Quoted(fullName)),
             "name an account and its parents with \":\" between them");
    }
    path.names.push_back(std::move(name.name));
    path.numbers.push_back(std::move(name.number));
    if (colon == std::string_view::npos) return path;
    rest.remove_prefix(colon + 1);
  }
}

void Outline::AppendOpen(AccountPath& path) const {
  for (const Heading& heading : open_) {
    if (heading.other) continue;
    if (heading.label.find(':') != std::string::npos) {
      path = FromFullName(heading.row, heading.label);
      continue;
    }
    path.names.push_back(heading.name.name);
    path.numbers.push_back(heading.name.number);
  }
}

AccountPath Outline::PathOf(const ReportRow& row) const {
  if (!row.account.empty()) return FromFullName(row.number, row.account);
  if (row.label.find(':') != std::string::npos) return FromFullName(row.number, row.label);
  AccountPath path{.section = section_, .names = {}, .numbers = {}};
  AppendOpen(path);
  if (!open_.empty() && IsOtherOf(row.label, open_.back().label)) return path;
  NumberedName name = SeparateNumber(row.label, hyphenNumbers_);
  path.names.push_back(std::move(name.name));
  path.numbers.push_back(std::move(name.number));
  return path;
}

AccountPath Outline::Current(const ReportRow& row, std::string_view fullName) const {
  if (open_.empty()) {
    if (!fullName.empty()) return FromFullName(row.number, fullName);
    Refuse(PlaceOf(report_, row.number), "the transaction is below no account",
           "export the report with the headings of its accounts");
  }
  AccountPath path{.section = section_, .names = {}, .numbers = {}};
  AppendOpen(path);
  if (!fullName.empty() && !SameText(FromFullName(row.number, fullName).names.back(), path.names.back())) {
    Refuse(PlaceOf(report_, row.number),
           fmt::format("the transaction is of the account {}, but below the heading {}", Quoted(fullName),
                       Quoted(open_.back().label)),
           structureAdvice);
  }
  return path;
}

void Outline::End() {
  while (!open_.empty()) Pop();
  if (anyHeading_ && !anyNetIncome_) {
    findings_.Add(fmt::format("{}: the report does not end with \"Net Income\", so it may be cut off",
                              report_.document));
  }
}

}  // namespace krnqb::profit_and_loss
