#include "support/error_handling.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <stdexcept>
#include <vector>

#include "fakes/recording_observer.h"

namespace krnqb {
namespace {

const Place place{
    .operation = Operation::ItemAccount, .request = 10, .fromDate = "2002-01-01", .toDate = "2002-01-31"};

TEST(SkipOnError, ReportsTheErrorAndItsPlaceAndContinues) {
  fakes::RecordingObserver observer;
  EXPECT_TRUE(SkipOnError(observer, place, [] {}));
  EXPECT_TRUE(observer.notices.empty());
  EXPECT_FALSE(SkipOnError(observer, place, [] { throw Error(error_number::overflow); }));
  ASSERT_EQ(observer.notices.size(), 1U);
  EXPECT_EQ(observer.notices[0].kind, NoticeKind::StatementSkipped);
  EXPECT_EQ(observer.notices[0].place.operation, Operation::ItemAccount);
  EXPECT_EQ(observer.notices[0].place.request, 10);
  EXPECT_EQ(observer.notices[0].place.toDate, "2002-01-31");
  EXPECT_EQ(observer.notices[0].number, 6);
  EXPECT_EQ(observer.notices[0].description, "Overflow");
}

TEST(EndOnError, ReportsTheErrorThatEndedTheOperation) {
  fakes::RecordingObserver observer;
  EXPECT_FALSE(EndOnError(observer, place, [] { throw Error(-2147220480, "refused"); }));
  ASSERT_EQ(observer.notices.size(), 1U);
  EXPECT_EQ(observer.notices[0].kind, NoticeKind::OperationEnded);
  EXPECT_EQ(observer.notices[0].number, -2147220480);
  EXPECT_EQ(observer.notices[0].description, "refused");
}

TEST(EndOnError, ReportsTheMeaningOfTheEndForTheImport) {
  fakes::RecordingObserver observer;
  const auto failing = [] { throw Error(error_number::objectNotSet); };
  SkipOnError(observer, place, failing);
  EndOnError(observer, place, failing);
  EndOnError(observer, place, failing, NoticeMeaning::Complete);
  ASSERT_EQ(observer.notices.size(), 3U);
  EXPECT_EQ(observer.notices[0].meaning, NoticeMeaning::Complete);
  EXPECT_EQ(observer.notices[1].meaning, NoticeMeaning::Incomplete);
  EXPECT_EQ(observer.notices[2].meaning, NoticeMeaning::Complete);
}

// The refusal is already reported; another failure with the same number is not.
TEST(EndOnError, ReportsTheEndAfterARefusedRequestAsComplete) {
  fakes::RecordingObserver observer;
  EndOnError(observer, place, [] { throw Error(ErrorKind::RequestRefused, 91, "No"); });
  EndOnError(observer, place, [] { throw Error(91, "No"); });
  ASSERT_EQ(observer.notices.size(), 2U);
  EXPECT_EQ(observer.notices[0].meaning, NoticeMeaning::Complete);
  EXPECT_EQ(observer.notices[0].errorKind, ErrorKind::RequestRefused);
  EXPECT_EQ(observer.notices[1].meaning, NoticeMeaning::Incomplete);
  EXPECT_EQ(observer.notices[1].errorKind, ErrorKind::ObjectNotSet);
}

TEST(CaughtError, IsOutOfMemoryForAFailedAllocationAndInternalForAnyOtherException) {
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

TEST(Error, HasTheKindOfItsRunTimeNumber) {
  EXPECT_EQ(Error(6).Kind(), ErrorKind::Overflow);
  EXPECT_EQ(Error(429, "own words").Kind(), ErrorKind::CannotCreateObject);
  EXPECT_EQ(Error(-2147467259).Kind(), ErrorKind::Unspecified);
  EXPECT_EQ(Error(-2147221504).Kind(), ErrorKind::Other) << "several kinds have this number";
  EXPECT_EQ(Error(12345).Kind(), ErrorKind::Other);
}

TEST(Error, HasTheNumberAndTheDescriptionOfItsKind) {
  const Error update(ErrorKind::UpdateRequired);
  const Error month(ErrorKind::FiscalMonthUnreadable);
  EXPECT_EQ(update.Kind(), ErrorKind::UpdateRequired);
  EXPECT_EQ(update.Number(), -2147221504);
  EXPECT_EQ(month.Number(), update.Number());
  EXPECT_EQ(update.Description(), "Your QuickBooks must be updated to R2.");
  EXPECT_NE(month.Description(), update.Description());
  EXPECT_EQ(Error(ErrorKind::TypeMismatch).Number(), 13);
}

TEST(OperationName, IsDifferentForEveryOperation) {
  std::vector<std::string_view> names;
  const auto last = static_cast<int>(Operation::ProgressBarChange);
  for (int value = 1; value <= last; ++value) {
    const std::string_view name = OperationName(static_cast<Operation>(value));
    EXPECT_NE(name, "") << value;
    EXPECT_EQ(std::ranges::find(names, name), names.end()) << name;
    names.push_back(name);
  }
  EXPECT_EQ(OperationName(Operation::None), "");
  EXPECT_EQ(OperationName(Operation::Go), "Go");
  EXPECT_EQ(OperationName(Operation::IsSDKVersionSupported), "IsSDKVersionSupported");
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
