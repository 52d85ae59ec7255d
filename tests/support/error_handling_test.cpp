#include "support/error_handling.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <vector>

#include "fakes/recording_observer.h"

namespace krnqb {
namespace {

const Place place{.operation = "Operation", .request = 10, .fromDate = "2002-01-01", .toDate = "2002-01-31"};

TEST(SkipOnError, TellsTheObserverWhatFailedAndWhereAndGoesOn) {
  fakes::RecordingObserver observer;
  EXPECT_TRUE(SkipOnError(observer, place, [] {}));
  EXPECT_TRUE(observer.notices.empty());
  EXPECT_FALSE(SkipOnError(observer, place, [] { throw Error(error_number::overflow); }));
  ASSERT_EQ(observer.notices.size(), 1U);
  EXPECT_EQ(observer.notices[0].kind, NoticeKind::StatementSkipped);
  EXPECT_EQ(observer.notices[0].place.operation, "Operation");
  EXPECT_EQ(observer.notices[0].place.request, 10);
  EXPECT_EQ(observer.notices[0].place.toDate, "2002-01-31");
  EXPECT_EQ(observer.notices[0].number, 6);
  EXPECT_EQ(observer.notices[0].description, "Overflow");
}

TEST(EndOnError, TellsTheObserverThatTheOperationEnded) {
  fakes::RecordingObserver observer;
  EXPECT_FALSE(EndOnError(observer, place, [] { throw Error(-2147220480, "refused"); }));
  ASSERT_EQ(observer.notices.size(), 1U);
  EXPECT_EQ(observer.notices[0].kind, NoticeKind::OperationEnded);
  EXPECT_EQ(observer.notices[0].number, -2147220480);
  EXPECT_EQ(observer.notices[0].description, "refused");
}

TEST(CaughtError, CountsAFailedAllocationAsOutOfMemoryAndTheRestAsInternal) {
  fakes::RecordingObserver observer;
  SkipOnError(observer, place, [] { throw std::bad_alloc(); });
  SkipOnError(observer, place, [] { throw std::runtime_error("other"); });
  SkipOnError(observer, place, [] { throw 5; });
  ASSERT_EQ(observer.notices.size(), 3U);
  EXPECT_EQ(observer.notices[0].number, 7);
  EXPECT_EQ(observer.notices[0].description, "Out of memory");
  EXPECT_EQ(observer.notices[1].number, 51);
  EXPECT_EQ(observer.notices[1].description, "Internal error");
  EXPECT_EQ(observer.notices[2].number, 51);
}

TEST(Error, HasTheStandardDescriptionOfItsNumber) {
  const std::vector<std::pair<std::int32_t, std::string>> table = {
      {5, "Invalid procedure call or argument"},
      {6, "Overflow"},
      {7, "Out of memory"},
      {9, "Subscript out of range"},
      {13, "Type mismatch"},
      {51, "Internal error"},
      {91, "Object variable or With block variable not set"},
      {429, "ActiveX component can't create object"},
      {438, "Object doesn't support this property or method"},
      {457, "This key is already associated with an element of this collection"},
      {-2147467259, "Unspecified error"},
      {12345, "Automation error"},
  };
  for (const auto& [number, description] : table)
    EXPECT_EQ(Error(number).Description(), description) << number;
}

}  // namespace
}  // namespace krnqb
