#include "qbxml/response_element.h"

#include <gtest/gtest.h>

#include "fakes/recording_observer.h"

namespace krnqb {
namespace {

const Place place{.operation = "Reader", .request = 4, .fromDate = {}, .toDate = {}};

TEST(ResponseElement, GivesTheDocumentElementOfATextByName) {
  EXPECT_EQ(ResponseElement("<QBXML/>", "").Name(), "QBXML");
  EXPECT_TRUE(ResponseElement("<QBXML/>", "QBXML"));
  EXPECT_FALSE(ResponseElement("<QBXML/>", "Other"));
  EXPECT_FALSE(ResponseElement("<QBXML/>", "qbxml"));
}

TEST(ResponseElement, GivesAnElementItselfByName) {
  const XmlElement element = XmlElement::Parse("<COGS/>");
  EXPECT_EQ(ResponseElement(element, ""), element);
  EXPECT_EQ(ResponseElement(element, "COGS"), element);
  EXPECT_FALSE(ResponseElement(element, "Other"));
}

TEST(ResponseElement, OfAnythingElseIsNothingAndNoError) {
  EXPECT_FALSE(ResponseElement({}, ""));
  EXPECT_FALSE(ResponseElement("", ""));
  EXPECT_FALSE(ResponseElement("not xml", ""));
  EXPECT_FALSE(ResponseElement(1.5, ""));
  EXPECT_FALSE(ResponseElement(ObjectReference(), ""));
}

TEST(AnswerElement, TellsAStatusThatIsNeitherFineNorEmpty) {
  fakes::RecordingObserver observer;
  EXPECT_TRUE(AnswerElement(
      "<QBXML><QBXMLMsgsRs>"
      "<AccountQueryRs statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\"/>"
      "<AccountQueryRs statusCode=\"1\" statusSeverity=\"Info\" statusMessage=\"none\"/>"
      "<AccountQueryRs statusCode=\"3260\" statusSeverity=\"Error\" statusMessage=\"no permission\"/>"
      "<AccountQueryRs statusCode=\"500\" statusSeverity=\"Warn\" statusMessage=\"perhaps not all\"/>"
      "</QBXMLMsgsRs></QBXML>",
      observer, place));
  ASSERT_EQ(observer.notices.size(), 2U);
  EXPECT_EQ(observer.notices[0].kind, NoticeKind::AnswerStatus);
  EXPECT_EQ(observer.notices[0].place.request, 4);
  EXPECT_EQ(observer.notices[0].number, 3260);
  EXPECT_EQ(observer.notices[0].severity, "Error");
  EXPECT_EQ(observer.notices[0].description, "no permission");
  EXPECT_EQ(observer.notices[1].number, 500);
}

TEST(AnswerElement, TellsAnAnswerThatIsNoDocument) {
  fakes::RecordingObserver observer;
  EXPECT_FALSE(AnswerElement("<QBXML>", observer, place));
  ASSERT_EQ(observer.notices.size(), 1U);
  EXPECT_EQ(observer.notices[0].kind, NoticeKind::AnswerUnreadable);
  EXPECT_FALSE(observer.notices[0].description.empty());
}

TEST(AnswerElement, OfNoAnswerTellsNothing) {
  fakes::RecordingObserver observer;
  EXPECT_FALSE(AnswerElement({}, observer, place));
  EXPECT_TRUE(observer.notices.empty());
}

}  // namespace
}  // namespace krnqb
