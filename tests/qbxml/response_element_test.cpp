#include "qbxml/response_element.h"

#include <gtest/gtest.h>

#include "fakes/recording_observer.h"

namespace krnqb {
namespace {

const Place place{.operation = Operation::LoadQuickBooksLists, .request = 4};

TEST(ResponseElement, ReturnsTheDocumentElementOfATextByName) {
  EXPECT_EQ(ResponseElement("<QBXML/>", "").Name(), "QBXML");
  EXPECT_TRUE(ResponseElement("<QBXML/>", "QBXML"));
  EXPECT_FALSE(ResponseElement("<QBXML/>", "Other"));
  EXPECT_FALSE(ResponseElement("<QBXML/>", "qbxml"));
}

TEST(ResponseElement, ReturnsAnElementItselfByName) {
  const XmlElement element = XmlElement::Parse("<COGS/>");
  EXPECT_EQ(ResponseElement(element, ""), element);
  EXPECT_EQ(ResponseElement(element, "COGS"), element);
  EXPECT_FALSE(ResponseElement(element, "Other"));
}

TEST(ResponseElement, IsEmptyForAnythingElse) {
  EXPECT_FALSE(ResponseElement({}, ""));
  EXPECT_FALSE(ResponseElement("", ""));
  EXPECT_FALSE(ResponseElement("not xml", ""));
  EXPECT_FALSE(ResponseElement(1.5, ""));
  EXPECT_FALSE(ResponseElement(ObjectReference(), ""));
}

TEST(AnswerElement, ReportsAStatusOtherThanSuccessAndNoRecords) {
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

NoticeMeaning MeaningOf(const std::string& number, const std::string& severity,
                        ErrorStatus errorStatus = ErrorStatus::DataMissing) {
  fakes::RecordingObserver observer;
  AnswerElement("<QBXML><QBXMLMsgsRs><AccountQueryRs statusCode=\"" + number + "\" statusSeverity=\"" +
                    severity + "\"/></QBXMLMsgsRs></QBXML>",
                observer, place, errorStatus);
  EXPECT_EQ(observer.notices.size(), 1U) << number << severity;
  return observer.notices.empty() ? NoticeMeaning::LeftOut : observer.notices[0].meaning;
}

TEST(AnswerElement, ReportsInformationBelowStatus500AsComplete) {
  EXPECT_EQ(MeaningOf("2", "Info"), NoticeMeaning::Complete);
  EXPECT_EQ(MeaningOf("499", "Info"), NoticeMeaning::Complete);
}

TEST(AnswerElement, ReportsEveryOtherStatusAsIncomplete) {
  for (const auto& [number, severity] : std::vector<std::pair<std::string, std::string>>{
           {"2", "Warn"}, {"2", "Error"}, {"2", ""}, {"500", "Info"}, {"1000", "Info"}, {"3260", "Error"}}) {
    EXPECT_EQ(MeaningOf(number, severity), NoticeMeaning::Incomplete) << number << severity;
  }
}

TEST(AnswerElement, ReportsAnExpectedErrorAsComplete) {
  EXPECT_EQ(MeaningOf("3140", "Error", ErrorStatus::Expected), NoticeMeaning::Complete);
}

TEST(AnswerElement, ReportsAnAnswerThatIsNotWellFormed) {
  fakes::RecordingObserver observer;
  EXPECT_FALSE(AnswerElement("<QBXML>", observer, place));
  ASSERT_EQ(observer.notices.size(), 1U);
  EXPECT_EQ(observer.notices[0].kind, NoticeKind::AnswerUnreadable);
  EXPECT_EQ(observer.notices[0].meaning, NoticeMeaning::Incomplete);
  EXPECT_EQ(observer.notices[0].description.find("line 1: "), 0U) << observer.notices[0].description;
}

TEST(AnswerElement, ReportsAnAnswerThatIsNestedTooDeepWithItsLine) {
  fakes::RecordingObserver observer;
  std::string answer = "<QBXML>\n<AccountQueryRs><AccountRet><ListID>\n";
  for (int level = 0; level < 100'000; ++level) answer += "<a>";
  EXPECT_FALSE(AnswerElement(answer, observer, place));
  ASSERT_EQ(observer.notices.size(), 1U);
  EXPECT_EQ(observer.notices[0].description, "line 3: elements are nested more than 1,000 deep");
}

TEST(AnswerElement, ReportsNothingWithoutAnAnswer) {
  fakes::RecordingObserver observer;
  EXPECT_FALSE(AnswerElement({}, observer, place));
  EXPECT_TRUE(observer.notices.empty());
}

}  // namespace
}  // namespace krnqb
