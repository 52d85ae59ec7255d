// The defaults of the periods, through automation.
#include <gtest/gtest.h>

#include "host/component.h"

namespace krnqb::testing {
namespace {

long Read(const LateBound& exchange, const wchar_t* name) {
  return exchange.Read(name).value.AsLong();
}

TEST(Periods, TheImportYearDefaultsToTheYearBeforeThePlan) {
  const LateBound exchange = NewLateBoundExchange();
  exchange.Let(L"KRNStartingYear", Value(2004));
  EXPECT_EQ(2003, Read(exchange, L"StartingYear"));
  EXPECT_EQ(2004, Read(exchange, L"KRNStartingYear"));
  exchange.Let(L"KRNStartingYear", Value(2010));
  EXPECT_EQ(2003, Read(exchange, L"StartingYear"));
  exchange.Let(L"StartingYear", Value(0));
  EXPECT_EQ(2009, Read(exchange, L"StartingYear"));
}

TEST(Periods, ThePlansStartDefaultsToTheImportsStart) {
  const LateBound exchange = NewLateBoundExchange();
  exchange.Let(L"StartingMonth", Value(7));
  exchange.Let(L"StartingYear", Value(2001));
  EXPECT_EQ(7, Read(exchange, L"KRNStartingMonth"));
  EXPECT_EQ(2001, Read(exchange, L"KRNStartingYear"));
}

TEST(Periods, ReadingTheImportMonthOpensASessionAndDefaultsToThePlansMonth) {
  const Answering answers(1, UsualAnswers());
  const LateBound exchange = NewLateBoundExchange();
  exchange.Let(L"KRNStartingMonth", Value(5));
  EXPECT_EQ(0, Read(exchange, L"QBStartingMonth"));
  EXPECT_EQ(5, Read(exchange, L"StartingMonth"));
  EXPECT_EQ(4, Read(exchange, L"QBStartingMonth"));
}

TEST(Periods, AYearBelowSixteenBitsOverflows) {
  const LateBound exchange = NewLateBoundExchange();
  exchange.Let(L"KRNStartingYear", Value(-32768));
  const Outcome year = exchange.Read(L"StartingYear");
  EXPECT_EQ(DISP_E_EXCEPTION, year.result);
  EXPECT_EQ(RunTimeError(6), year.exception.scode);
  EXPECT_EQ(L"Overflow", year.description);
}

}  // namespace
}  // namespace krnqb::testing
