#include "qbxml/session.h"

#include <gtest/gtest.h>

#include "fakes/import_surroundings.h"
#include "qbxml/request_catalogue.h"

// The notices about requests. Opening a session is tested with the whole component.

namespace krnqb {
namespace {

class SessionReport : public testing::Test {
 protected:
  Session& AskedSession() { return surroundings.context.session; }
  const std::vector<Notice>& Notices() const { return surroundings.observer.notices; }

  fakes::ImportSurroundings surroundings;
};

TEST_F(SessionReport, OfAnAnswerHasThePeriodOfItsRequest) {
  surroundings.quickBooks->answers["300"] = "<QBXML>";
  AskedSession().Ask(request_number::incomeByMonth, Operation::ParseProfitAndLossReport, "2002-04-01",
                     "2003-03-31");
  ASSERT_EQ(Notices().size(), 1U);
  EXPECT_EQ(Notices()[0].kind, NoticeKind::AnswerUnreadable);
  EXPECT_EQ(Notices()[0].place.operation, Operation::ParseProfitAndLossReport);
  EXPECT_EQ(Notices()[0].place.request, 300);
  EXPECT_EQ(Notices()[0].place.fromDate, "2002-04-01");
  EXPECT_EQ(Notices()[0].place.toDate, "2003-03-31");
}

TEST_F(SessionReport, OfARefusedRequestHasItsPeriodAndTheProcessorsError) {
  surroundings.journal->Fail("ProcessRequest 300 2002-04-01 2003-03-31", Error(91, "own words"));
  try {
    AskedSession().Ask(request_number::incomeByMonth, Operation::ParseProfitAndLossReport, "2002-04-01",
                       "2003-03-31");
    ADD_FAILURE() << "a refused request threw no Error";
  } catch (const Error& error) {
    EXPECT_EQ(error.Kind(), ErrorKind::RequestRefused);
    EXPECT_EQ(error.Number(), 91);
    EXPECT_EQ(error.Description(), "own words");
  }
  ASSERT_EQ(Notices().size(), 1U);
  const Notice& notice = Notices()[0];
  EXPECT_EQ(notice.kind, NoticeKind::RequestRefused);
  EXPECT_EQ(notice.meaning, NoticeMeaning::Incomplete);
  EXPECT_EQ(notice.place.request, 300);
  EXPECT_EQ(notice.place.fromDate, "2002-04-01");
  EXPECT_EQ(notice.place.toDate, "2003-03-31");
  EXPECT_EQ(notice.number, 91);
  EXPECT_EQ(notice.description, "own words");
  EXPECT_EQ(notice.errorKind, ErrorKind::RequestRefused);
}

TEST_F(SessionReport, OmitsARequestWithoutText) {
  EXPECT_THROW(AskedSession().QbSerialize(Variant(ObjectReference()), {}), Error);
  EXPECT_TRUE(Notices().empty());
}

class SessionVersionCheck : public SessionReport {};

TEST_F(SessionVersionCheck, ThrowsError91WithoutAReadableAnswerForAnyVersion) {
  surroundings.quickBooks->answers["100"] = "<QBXML>";
  for (const std::string_view version : {"1.1", "1\"1"}) {
    try {
      AskedSession().IsSDKVersionSupported(version);
      ADD_FAILURE() << version;
    } catch (const Error& error) {
      EXPECT_EQ(error.Number(), error_number::objectNotSet) << version;
    }
  }
}

}  // namespace
}  // namespace krnqb
