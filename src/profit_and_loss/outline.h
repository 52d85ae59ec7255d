#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "profit_and_loss/labels.h"
#include "profit_and_loss/messages.h"
#include "profit_and_loss/report.h"
#include "profit_and_loss/statement.h"

namespace krnqb::profit_and_loss {

/// The amounts of a row, one for each column that is checked; empty if the row has none.
using RowAmounts = std::vector<ExactAmount>;

/// An account in the outline of a report.
struct AccountPath {
  Section section = Section::Unknown;
  std::vector<std::string> names;
  std::vector<std::string> numbers;
};

/// Follows the headings and totals of one report from its first row to its last: which section and account a
/// row belongs to, and whether the totals agree with the amounts above them. Totals that do not are findings.
class Outline {
 public:
  /// `titles` are the columns that amounts are given for. All arguments must outlive the outline.
  Outline(const CapturedReport& report, const std::vector<std::string>& titles, Findings& findings);

  /// Takes the next row that has a label, by its index. Returns the account to which the row's amounts are
  /// booked, or nothing if it is a heading or a total. Throws Error 13 if the row has no place in the
  /// outline.
  std::optional<AccountPath> Take(std::size_t index, const RowAmounts& amounts);

  /// Returns the account of a transaction: that of the innermost heading, or `fullName` outside every
  /// heading. Throws Error 13 if both are missing or have different names.
  AccountPath Current(const ReportRow& row, std::string_view fullName) const;
  /// Adds amounts to the totals of the innermost heading.
  void Add(const RowAmounts& amounts);

  /// Ends the outline after the last row. Throws Error 13 if a heading that needs a total has none.
  void End();

 private:
  struct Heading {
    std::string label;
    std::size_t row = 0;  // its number
    std::size_t depth = 0;
    NumberedName name;
    bool other = false;  // "Rent - Other" below "Rent": the parent itself
    bool ownAmounts = false;
    RowAmounts sums;
  };

  bool HasChildren(std::size_t index, const RowAmounts& amounts) const;
  bool TakeSection(const ReportRow& row, const RowAmounts& amounts);
  bool TakeTotal(const ReportRow& row, const RowAmounts& amounts);
  bool TakeClosingLine(const ReportRow& row, const RowAmounts& amounts);
  void CloseTotalled(std::size_t index, const ReportRow& row, const RowAmounts& amounts);
  void PopByDepth(const ReportRow& row);
  void Pop();
  void Push(const ReportRow& row, const RowAmounts& amounts);
  bool WithinSection(const ReportRow& row) const;
  bool TotalComes(std::string_view label) const;
  bool SectionTotalComes() const;
  void CheckSums(const ReportRow& row, const RowAmounts& amounts, const RowAmounts& sums);
  RowAmounts& Sums(Section section) { return sectionSums_.at(static_cast<std::size_t>(section)); }
  static void AddTo(RowAmounts& sums, const RowAmounts& amounts);
  AccountPath FromFullName(std::size_t row, std::string_view fullName) const;
  AccountPath PathOf(const ReportRow& row) const;
  void AppendOpen(AccountPath& path) const;

  const CapturedReport& report_;
  const std::vector<std::string>& titles_;
  Findings& findings_;
  bool hyphenNumbers_ = false;
  std::unordered_map<std::string, std::size_t> totalsToCome_;  // by what they total, folded
  std::unordered_set<std::string> parents_;  // the labels of which there is one with " - Other", folded
  std::array<std::size_t, 6> sectionTotalsToCome_{};
  std::vector<std::size_t> nextLabel_;  // for each row the next one with a label; the number of rows for none
  std::optional<Section> openSection_;
  Section section_ = Section::Unknown;
  std::size_t sectionDepth_ = 0;
  bool anyHeading_ = false;
  bool anyNetIncome_ = false;
  std::vector<Heading> open_;
  std::array<RowAmounts, 6> sectionSums_;
};

}  // namespace krnqb::profit_and_loss
