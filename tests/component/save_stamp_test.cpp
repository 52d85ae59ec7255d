#include <gtest/gtest.h>

#include "fakes/test_host.h"

namespace krnqb {
namespace {

using fakes::TestHost;

struct StampCase {
  LocalDateTime moment;
  const char* stamp;
};

TEST(SaveStamp, IsTheDayNumberRoundedHalfToEven) {
  const StampCase cases[] = {{{2002, 1, 1, 0, 0, 0}, "37257"},    {{2002, 1, 1, 11, 59, 0}, "37257"},
                             {{2002, 1, 1, 11, 59, 59}, "37257"}, {{2002, 1, 1, 12, 0, 0}, "37258"},
                             {{2002, 1, 1, 23, 59, 59}, "37258"}, {{2002, 1, 2, 0, 0, 0}, "37258"},
                             {{2002, 1, 2, 12, 0, 0}, "37258"},   {{2002, 1, 2, 12, 0, 1}, "37259"},
                             {{2002, 1, 2, 12, 1, 0}, "37259"},   {{2000, 2, 29, 6, 0, 0}, "36585"},
                             {{2000, 3, 1, 6, 0, 0}, "36586"},    {{2001, 12, 31, 12, 0, 0}, "37256"},
                             {{1999, 12, 31, 23, 0, 0}, "36526"}, {{2100, 3, 1, 0, 0, 0}, "73110"}};
  for (const StampCase& each : cases) {
    TestHost host;
    host.clock->now = each.moment;
    const std::string document =
        fakes::TextOf(host.component.KRNDeserialize(Variant(host.quickBooks->answers["4"])));
    const std::string expected = std::string("<lastsavedid>QB") + each.stamp + "</lastsavedid>";
    EXPECT_TRUE(fakes::Holds(document, expected)) << expected << " in " << document;
    EXPECT_FALSE(fakes::Holds(document, "KRN1")) << "the table's own stamp is gone";
  }
}

TEST(SaveStamp, IsReadFromTheClockForEachImport) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  EXPECT_TRUE(host.component.Go());
  host.clock->now = {2002, 6, 1, 9, 0, 0};
  EXPECT_TRUE(host.component.Go());
  ASSERT_EQ(host.planContent->loaded.size(), 2U);
  EXPECT_TRUE(fakes::Holds(host.planContent->loaded[0], "QB37257"));
  EXPECT_TRUE(fakes::Holds(host.planContent->loaded[1], "QB37408"));
}

}  // namespace
}  // namespace krnqb
