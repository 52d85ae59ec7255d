#include "company/records/date.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace krnqb::company {
namespace {

TEST(CompanyDate, IsADayOfTheCalendarWrittenInFull) {
  struct Case {
    std::string_view text;
    bool isDate;
  };
  const std::vector<Case> cases = {
      {"2002-01-31", true},  {"2004-02-29", true},  {"0100-12-01", true},
      {"9999-12-31", true},  {"2002-02-29", false}, {"2002-13-01", false},
      {"2002-00-01", false}, {"2002-01-00", false}, {"2002-01-32", false},
      {"0099-01-01", false}, {"2002-1-1", false},   {"02-01-2002", false},
      {"2002/01/01", false}, {"", false},           {"2002-01-0x", false},
      {"-200-01-01", false}, {"2002-+1-01", false}, {"2002-01-01 ", false},
  };
  for (const auto& [text, isDate] : cases) EXPECT_EQ(IsCalendarDate(text), isDate) << text;
}

}  // namespace
}  // namespace krnqb::company
