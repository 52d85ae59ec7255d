#include "xml/events.h"

#include <gtest/gtest.h>

#include <array>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

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

TEST(ParseXmlEvents, NumbersTheNamesOfTheVocabulary) {
  class Numbers final : public XmlEventHandler {
   public:
    std::span<const std::string_view> Vocabulary() const override { return names; }
    void StartElement(const XmlEventName& name, const XmlEventAttributes& /*attributes*/) override {
      log += std::to_string(name.Number()) + std::string(name.Text()) + ' ';
    }
    void Text(std::string_view /*piece*/) override {}
    void EndElement() override {}

    std::array<std::string_view, 3> names{"b", "", "a"};
    std::string log;
  } handler;
  EXPECT_FALSE(ParseXmlEvents("<a><b/><c/><x:b xmlns:x='urn:x'/><B/></a>", handler));
  EXPECT_EQ(handler.log, "2a 0b ");
}

TEST(ParseXmlEvents, WithholdsAnUnlistedElementUnlessItHasAnAttributeOrAListedElement) {
  class Log final : public XmlEventHandler {
   public:
    std::span<const std::string_view> Vocabulary() const override { return names; }
    void StartElement(const XmlEventName& name, const XmlEventAttributes& attributes) override {
      log += "<" + std::string(name.Text()) + (attributes.IsEmpty() ? ">" : " ..>");
    }
    void Text(std::string_view piece) override { log += piece; }
    void EndElement() override { log += "</>"; }

    std::array<std::string_view, 1> names{"b"};
    std::string log;
  };
  const std::array<std::pair<const char*, const char*>, 6> cases = {
      {{"<a><b/></a>", "<><b></></>"},
       {"<a>1<c>2<d/>3</c>4<b/></a>", "1234<><b></></>"},
       {"<b><c><d><b/></d></c><c/></b>", "<b><><><b></></></></>"},
       {"<b><c><d e='f'/></c></b>", "<b><>< ..></></></>"},
       {"<b><c xmlns='urn:c'><d/><b/></c></b>", "<b></>"},
       {"<c><d>1</d></c>", "1"}}};
  for (const auto& [document, expected] : cases) {
    Log handler;
    EXPECT_FALSE(ParseXmlEvents(document, handler));
    EXPECT_EQ(handler.log, expected) << document;
  }
}

TEST(ParseXmlEvents, PassesTextOnlyWhileItIsWanted) {
  class OnlyInB final : public XmlEventHandler {
   public:
    OnlyInB() { WantText(false); }
    void StartElement(const XmlEventName& name, const XmlEventAttributes& /*attributes*/) override {
      WantText(name.Text() == "b");
    }
    void Text(std::string_view piece) override { texts += piece; }
    void EndElement() override { WantText(false); }

    std::string texts;
  } handler;
  EXPECT_FALSE(
      ParseXmlEvents("<a>1&lt;<![CDATA[2]]> <b>3&amp;<![CDATA[4]]>\n</b>5&#54;<c>7</c></a>", handler));
  EXPECT_EQ(handler.texts, "3&4\n");
}

// Writes down what a handler with a vocabulary receives that wants the texts of one element.
class ChosenLog final : public XmlEventHandler {
 public:
  ChosenLog() { WantText(false); }
  std::span<const std::string_view> Vocabulary() const override { return names; }
  void StartElement(const XmlEventName& name, const XmlEventAttributes& attributes) override {
    log += "<" + std::string(name.Text()) + " " + attributes.Find("id").value_or("-") + ">";
    open.push_back(name.Number());
    WantText(open.back() == 1);
  }
  void Text(std::string_view piece) override { log += piece; }
  void EndElement() override {
    log += "</>";
    open.pop_back();
    WantText(!open.empty() && open.back() == 1);
  }

  std::array<std::string_view, 2> names = {"a", "t"};
  std::vector<int> open;
  std::string log;
};

std::string ChosenEventsOf(const std::string& text) {
  ChosenLog handler;
  EXPECT_FALSE(ParseXmlEvents(text, handler)) << text;
  return handler.log;
}

TEST(ParseXmlEvents, PassesEachEventOnceWhereverNamespacesBegin) {
  const std::string begin = "<a>1<t>2<u/>3<u>4<v><t>5</t></v></u>6</t>7<t id='8'>9<w id='w'/></t>";
  const std::string document = begin + "</a>";
  std::size_t places = 0;
  for (std::size_t place = 3; place <= begin.size(); ++place) {
    const std::string before = document.substr(0, place);
    const bool inTag = before.rfind('<') != std::string::npos && before.rfind('>') < before.rfind('<');
    if (inTag) continue;
    ++places;
    const auto with = [&](std::string_view element) {
      std::string text = document;
      return ChosenEventsOf(text.insert(place, element));
    };
    EXPECT_EQ(with("<n xmlns='urn:n'/>"), with("<n/>")) << place;
    EXPECT_EQ(with("<n:n xmlns:n='urn:n'/>"), with("<n/>")) << place;
    EXPECT_EQ(with("<n:n xmlns:n='urn:n'>x</n:n>"), with("<n>x</n>")) << place;
  }
  EXPECT_GT(places, 20U);
}

TEST(ParseXmlEvents, FindsAttributesThatTheDocumentTypeDeclares) {
  EXPECT_EQ(EventsOf("<!DOCTYPE a [<!ATTLIST b id CDATA 'declared'>]><a><b/></a>"),
            "<a -><b declared></></>");
}

TEST(ParseXmlEvents, RefusesAnUndeclaredPrefixAndAColonInAnInstruction) {
  for (const std::string text : {"<a>1<n:b/></a>", "<a n:id='1'/>", "<a/><?n:b?>", "<a><?n:b?></a>"}) {
    EventLog handler;
    EXPECT_TRUE(ParseXmlEvents(text, handler)) << text;
  }
}

TEST(ParseXmlEvents, AcceptsWhatTheLibraryOnlyWarnsOf) {
  EXPECT_EQ(EventsOf("<a xml:space='odd'>1<b xmlns='relative'/></a>"), "<a ->1< -></></>");
}

TEST(ParseXmlEvents, ReadsMoreNamesThanItRemembers) {
  std::string text;
  std::string expected;
  for (int number = 0; number < 1000; ++number) {
    const std::string name = "n" + std::to_string(number);
    text += "<" + name + "/>";
    expected += "<" + name + " -></>";
  }
  EXPECT_EQ(EventsOf("<a>" + text + text + "</a>"), "<a ->" + expected + expected + "</>");
  EXPECT_EQ(EventsOf("<a>" + text + "<p:b xmlns:p='urn:p'/></a>"), "<a ->" + expected + "< -></></>");
}

TEST(ParseXmlEvents, ReadsATextOfAnyLengthWhereItIs) {
  class InPlace final : public XmlEventHandler {
   public:
    explicit InPlace(const std::string& document) : document_(document) {}
    void StartElement(const XmlEventName& /*name*/, const XmlEventAttributes& /*attributes*/) override {
      ++elements;
    }
    void Text(std::string_view piece) override {
      if (piece.data() < document_.data() || piece.data() >= document_.data() + document_.size()) ++copied;
    }
    void EndElement() override { --elements; }

    int elements = 0;
    int copied = 0;

   private:
    const std::string& document_;
  };
  // The library looks for more of its input near the end, wherever that is.
  for (std::size_t count = 0; count < 60; ++count) {
    std::string document = "\xEF\xBB\xBF<r>";
    for (std::size_t element = 0; element < count; ++element) document += "<e>some text</e>";
    document += std::string(count * 7, ' ') + "</r>";
    InPlace handler(document);
    EXPECT_FALSE(ParseXmlEvents(document, handler)) << count;
    EXPECT_EQ(handler.elements, 0) << count;
    EXPECT_EQ(handler.copied, 0) << count;
  }
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
