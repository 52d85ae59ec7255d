#include "spreadsheet/plan_workbook.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>

#include "krnqb/xml_element.h"
#include "spreadsheet/block_sheet.h"
#include "spreadsheet/summary_sheet.h"

namespace krnqb::spreadsheet {
namespace {

// Days are counted from 30 December 1899.
constexpr std::int64_t dayOf1970 = 25'569;
constexpr std::int64_t dayOf1980 = 29'221;
constexpr std::int64_t dayOf2100 = 73'051;
constexpr std::int64_t secondsOfADay = 86'400;

// A stamp is letters and a day, such as "QB37257".
std::int64_t DayOf(std::string_view stamp) {
  const std::size_t digits = stamp.find_first_of("0123456789");
  if (digits == std::string_view::npos) return 0;
  stamp.remove_prefix(digits);
  std::int64_t day = 0;
  const auto [end, failure] = std::from_chars(stamp.data(), stamp.data() + stamp.size(), day);
  const bool whole = failure == std::errc() && end == stamp.data() + stamp.size();
  return whole && day < dayOf2100 ? day : 0;
}

}  // namespace

Workbook WorkbookOf(const PlanSheets& sheets, const ExportNotes& notes, std::time_t created) {
  Workbook workbook{sheets.planName, created, {}};
  workbook.sheets.push_back(SummaryOf(sheets));
  workbook.sheets.push_back(WarningsOf(sheets, notes));
  for (std::size_t index = 0; index < sheets.blocks.size(); ++index) {
    workbook.sheets.push_back(SheetOfBlock(sheets, index));
  }
  return workbook;
}

std::time_t LastSaved(const plan_file::PlanFile& plan) {
  std::int64_t day = dayOf1980;
  for (const std::string& id : plan.TableIds()) {
    const XmlElement stamp = plan.Table(id).Child("lastsavedid");
    if (stamp) day = std::max(day, DayOf(stamp.Text()));
  }
  return static_cast<std::time_t>((day - dayOf1970) * secondsOfADay);
}

}  // namespace krnqb::spreadsheet
