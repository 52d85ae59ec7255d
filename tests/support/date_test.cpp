#include "support/date.h"

#include <gtest/gtest.h>

#include "krnqb/error.h"

namespace krnqb {
namespace {

TEST(DaysInCalendarMonth, HandlesLeapYearsAndDecember) {
  EXPECT_EQ(DaysInCalendarMonth(2, 2004), 29);
  EXPECT_EQ(DaysInCalendarMonth(2, 2003), 28);
  EXPECT_EQ(DaysInCalendarMonth(2, 1900), 28);
  EXPECT_EQ(DaysInCalendarMonth(2, 2000), 29);
  EXPECT_EQ(DaysInCalendarMonth(12, 2002), 31);
  EXPECT_EQ(DaysInCalendarMonth(4, 2002), 30);
  EXPECT_EQ(DaysInCalendarMonth(1, 100), 31);
  EXPECT_EQ(DaysInCalendarMonth(1, 9999), 31);
}

TEST(DaysInCalendarMonth, ThrowsTypeMismatchOutsideTheCalendar) {
  const std::vector<std::pair<std::int16_t, std::int16_t>> outside = {
      {0, 2002}, {13, 2002}, {1, 99}, {1, 10000}, {-1, 2002}};
  for (const auto& [month, year] : outside) {
    try {
      DaysInCalendarMonth(month, year);
      ADD_FAILURE() << month << "/" << year;
    } catch (const Error& error) {
      EXPECT_EQ(error.Number(), error_number::typeMismatch);
    }
  }
}

TEST(MonthNumber, AcceptsFullEnglishNamesInAnyCaseWithSurroundingBlanks) {
  EXPECT_EQ(MonthNumber("January"), 1);
  EXPECT_EQ(MonthNumber(" APRIL\t"), 4);
  EXPECT_EQ(MonthNumber("december"), 12);
}

TEST(MonthNumber, RejectsAnythingElse) {
  for (const char* text : {"", "Jan", "Januar", "1", "Mai", "January 2002", "Jan uary"}) {
    EXPECT_FALSE(MonthNumber(text)) << text;
  }
}

TEST(EnglishMonthName, IsTheInverseOfMonthNumber) {
  for (std::int16_t month = 1; month <= 12; ++month) EXPECT_EQ(MonthNumber(EnglishMonthName(month)), month);
  EXPECT_THROW(EnglishMonthName(0), Error);
  EXPECT_THROW(EnglishMonthName(13), Error);
}

TEST(DateText, PadsMonthAndDayButNotTheYear) {
  EXPECT_EQ(DateText(2002, 1, 5), "2002-01-05");
  EXPECT_EQ(DateText(33, 12, 31), "33-12-31");
}

TEST(RoundedDateSerial, RoundsNoonToTheEvenDay) {
  EXPECT_EQ(RoundedDateSerial({2002, 1, 1, 11, 59, 0}), 37257);
  EXPECT_EQ(RoundedDateSerial({2002, 1, 1, 12, 0, 0}), 37258);
  EXPECT_EQ(RoundedDateSerial({2002, 1, 2, 12, 0, 0}), 37258);
  EXPECT_EQ(RoundedDateSerial({2002, 1, 2, 12, 1, 0}), 37259);
  EXPECT_EQ(RoundedDateSerial({1899, 12, 30, 0, 0, 0}), 0);
}

TEST(CheckedInteger, ThrowsOverflowOutsideSixteenBits) {
  EXPECT_EQ(CheckedInteger(32767), 32767);
  EXPECT_EQ(CheckedInteger(-32768), -32768);
  EXPECT_THROW(CheckedInteger(32768), Error);
  EXPECT_THROW(CheckedInteger(-32769), Error);
}

}  // namespace
}  // namespace krnqb
