#include "cli/import/notices/request_names.h"

#include <gtest/gtest.h>

namespace krnqb::cli {
namespace {

constexpr std::int32_t catalogue[] = {1,  2,  4,   9,   10,  11,  12,  20,  21,
                                      50, 60, 100, 101, 102, 300, 310, 320, 330};

TEST(RequestName, ExistsForEveryRequestOfTheCatalogue) {
  for (const std::int32_t number : catalogue) EXPECT_NE(RequestName(number), "") << number;
  EXPECT_EQ(RequestName(3), "");
}

TEST(RequestText, NamesRequestAndPeriod) {
  EXPECT_EQ(RequestText({.request = 10, .fromDate = "2002-01-01", .toDate = "2002-01-31"}),
            "request 10 (bills) for 2002-01-01 to 2002-01-31");
  EXPECT_EQ(RequestText({.request = 4}), "request 4 (expense accounts)");
  EXPECT_EQ(RequestText({.request = 999}), "request 999");
  EXPECT_EQ(RequestText({}), "a request");
}

}  // namespace
}  // namespace krnqb::cli
