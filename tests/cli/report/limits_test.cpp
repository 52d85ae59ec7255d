#include <gtest/gtest.h>

#include "cli/report/transactions.h"

namespace krnqb::cli {
namespace {

TEST(LimitForAll, IsTheLargestWithWhichAllListsFit) {
  struct Case {
    std::vector<std::int64_t> lengths;
    std::int64_t most;
    std::int64_t together;
    std::int64_t limit;
  };
  const Case cases[] = {
      {{}, 200, 10'000, 200},         {{5, 300, 7}, 200, 10'000, 200}, {{100, 100, 100}, 200, 150, 50},
      {{10, 100, 100}, 200, 150, 70}, {{1, 2, 3, 4}, 200, 10, 200},    {{1, 2, 3, 4}, 200, 9, 3},
      {{500, 500, 500}, 200, 2, 1},   {{1'000}, 200, 10'000, 200},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(LimitForAll(each.lengths, each.most, each.together), each.limit)
        << testing::PrintToString(each.lengths) << each.together;
  }
}

}  // namespace
}  // namespace krnqb::cli
