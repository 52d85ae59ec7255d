#include "company/reports/period.h"

#include <gtest/gtest.h>

namespace krnqb::company {
namespace {

using Texts = std::vector<std::string>;

Texts ColumnTexts(const ReportPeriod& period) {
  Texts texts;
  for (const ReportColumn& column : period.columns) {
    texts.push_back(column.title + ": " + column.firstDay + " to " + column.lastDay);
  }
  return texts;
}

TEST(CompanyReportPeriod, HasAColumnForEachMonth) {
  struct Case {
    std::string_view first, last, subtitle;
    Texts columns;
  };
  const std::vector<Case> cases = {
      {"2002-02-01", "2002-02-28", "February 2002", {"Feb 02: 2002-02-01 to 2002-02-28"}},
      {"2004-02-01",
       "2004-03-31",
       "February through March 2004",
       {"Feb 04: 2004-02-01 to 2004-02-29", "Mar 04: 2004-03-01 to 2004-03-31"}},
      {"2004-02-01", "2004-02-28", "February 1 - 28, 2004", {"Feb 1 - 28, 04: 2004-02-01 to 2004-02-28"}},
      {"2002-12-01",
       "2003-01-31",
       "December 2002 through January 2003",
       {"Dec 02: 2002-12-01 to 2002-12-31", "Jan 03: 2003-01-01 to 2003-01-31"}},
      {"2002-01-15",
       "2002-03-20",
       "January 15 through March 20, 2002",
       {"Jan 15 - 31, 02: 2002-01-15 to 2002-01-31", "Feb 02: 2002-02-01 to 2002-02-28",
        "Mar 1 - 20, 02: 2002-03-01 to 2002-03-20"}},
      {"1999-12-31",
       "2000-01-01",
       "December 31, 1999 through January 1, 2000",
       {"Dec 31, 99: 1999-12-31 to 1999-12-31", "Jan 1, 00: 2000-01-01 to 2000-01-01"}},
      {"2002-05-07", "2002-05-07", "May 7, 2002", {"May 7, 02: 2002-05-07 to 2002-05-07"}},
      {"9999-12-01", "9999-12-31", "December 9999", {"Dec 99: 9999-12-01 to 9999-12-31"}},
      {"2002-02-01", "2002-01-31", "", {}},
  };
  for (const auto& [first, last, subtitle, columns] : cases) {
    SCOPED_TRACE(first);
    const ReportPeriod period = MonthsBetween(first, last);
    EXPECT_EQ(period.subtitle, subtitle);
    EXPECT_EQ(ColumnTexts(period), columns);
  }
}

TEST(CompanyReportPeriod, CoversAFiscalYearThatCrossesTheCalendarYear) {
  const ReportPeriod period = MonthsBetween("2002-04-01", "2003-03-31");
  EXPECT_EQ(period.subtitle, "April 2002 through March 2003");
  ASSERT_EQ(period.columns.size(), 12U);
  EXPECT_EQ(period.columns[8].title, "Dec 02");
  EXPECT_EQ(period.columns[9].title, "Jan 03");
  EXPECT_EQ(period.columns[9].firstDay, "2003-01-01");
  EXPECT_EQ(period.columns[11].lastDay, "2003-03-31");
}

TEST(CompanyReportPeriod, MayBeAsOfADay) {
  const ReportPeriod period = AsOf("2002-12-31");
  EXPECT_EQ(period.subtitle, "As of December 31, 2002");
  EXPECT_EQ(ColumnTexts(period), Texts{"Dec 31, 02: 2002-12-31 to 2002-12-31"});
  EXPECT_EQ(AsOf("2005-03-04").subtitle, "As of March 4, 2005");
  EXPECT_EQ(AsOf("2005-03-04").columns.at(0).title, "Mar 4, 05");
}

TEST(CompanyReportPeriod, FindsTheEndsOfAMonth) {
  EXPECT_EQ(FirstDayOfMonth("2000-02-17"), "2000-02-01");
  EXPECT_EQ(LastDayOfMonth("2000-02-17"), "2000-02-29");
  EXPECT_EQ(LastDayOfMonth("1900-02-01"), "1900-02-28");
}

}  // namespace
}  // namespace krnqb::company
