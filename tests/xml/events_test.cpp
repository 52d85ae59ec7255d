#include "xml/events.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace krnqb {
namespace {

// Writes each event down: "<name id>", the text, "</>". A missing attribute is "-".
class EventLog final : public XmlEventHandler {
 public:
  void StartElement(const XmlEventName& name, const XmlEventAttributes& attributes) override {
    log += "<" + std::string(name.Text()) + " " + attributes.Find("id").value_or("-") + ">";
  }
  void Text(std::string_view piece) override { log += piece; }
  void EndElement() override { log += "</>"; }

  std::string log;
};

std::string EventsOf(const std::string& text) {
  EventLog handler;
  EXPECT_FALSE(ParseXmlEvents(text, handler));
  return handler.log;
}

TEST(ParseXmlEvents, ReportsElementsAndTextsInDocumentOrder) {
  EXPECT_EQ(EventsOf("<?xml version='1.0'?><a> 1<b id='2'>&lt;<![CDATA[<]]></b><!-- c --><?i?>\n</a>"),
            "<a -> 1<b 2><<</>\n</>");
}

TEST(ParseXmlEvents, ReportsAnElementInANamespaceWithoutAName) {
  EXPECT_EQ(EventsOf("<a><x:b xmlns:x='urn:x'><c/></x:b><b xmlns='urn:x'><c/><c xmlns=''/></b></a>"),
            "<a ->< -><c -></></>< ->< -></><c -></></></>");
}

TEST(ParseXmlEvents, FindsOnlyAttributesInNoNamespace) {
  EXPECT_EQ(EventsOf("<a x:id='1' xmlns:x='urn:x'><b x:id='2' id='3'/></a>"), "<a -><b 3></></>");
}

TEST(ParseXmlEvents, DecodesAttributeValues) {
  EXPECT_EQ(EventsOf("<a id='&amp;&lt;&quot;&#233; &amp;amp;'/>"), "<a &<\"\u00e9 &amp;></>");
}

TEST(ParseXmlEvents, ReportsTextsOfBlanksAlone) {
  EXPECT_EQ(EventsOf("<a>  <b> </b>\n</a>"), "<a ->  <b -> </>\n</>");
}

TEST(ParseXmlEvents, ReturnsTheFaultOfATextThatIsNotWellFormed) {
  EventLog handler;
  const auto fault = ParseXmlEvents("<a>\n<b></a>", handler);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->line, 2);
}

TEST(ParseXmlEvents, EndsWithTheExceptionOfTheHandler) {
  class Failing final : public XmlEventHandler {
   public:
    void StartElement(const XmlEventName& /*name*/, const XmlEventAttributes& /*attributes*/) override {
      ++calls;
      throw std::runtime_error("no more");
    }
    void Text(std::string_view /*piece*/) override { ++calls; }
    void EndElement() override { ++calls; }
    int calls = 0;
  } handler;
  EXPECT_THROW(ParseXmlEvents("<a><b>text</b></a>", handler), std::runtime_error);
  EXPECT_EQ(handler.calls, 1);
}

}  // namespace
}  // namespace krnqb
