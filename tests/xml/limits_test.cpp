#include <gtest/gtest.h>
#include <sys/mman.h>

#include <string>

#include "limited_child.h"
#include "xml/events.h"
#include "xml/index.h"
#include "xml/parser.h"

namespace krnqb {
namespace {

using tests::StaysWithinLimits;

class NoEvents final : public XmlEventHandler {
 public:
  void StartElement(const XmlEventName& /*name*/, const XmlEventAttributes& attributes) override {
    valueLength += attributes.Find("v").value_or("").size();
  }
  void Text(std::string_view /*piece*/) override {}
  void EndElement() override {}

  std::size_t valueLength = 0;
};

std::optional<XmlFault> EventsFault(const std::string& text) {
  NoEvents handler;
  return ParseXmlEvents(text, handler);
}

std::string Repeated(std::string_view piece, std::size_t times) {
  std::string text;
  for (std::size_t time = 0; time < times; ++time) text += piece;
  return text;
}

std::string Nested(std::size_t depth, std::string_view inside = {}) {
  return Repeated("<a>", depth) + std::string(inside) + Repeated("</a>", depth);
}

// Returns an element with attributes a0, a1, ...
std::string WithAttributes(std::size_t count) {
  std::string text = "<a";
  for (std::size_t index = 0; index < count; ++index) text += " a" + std::to_string(index) + "=\"\"";
  return text + "/>";
}

std::string Utf16(std::string_view ascii) {
  std::string bytes = "\xFF\xFE";
  for (const char character : ascii) {
    bytes += character;
    bytes += '\0';
  }
  return bytes;
}

constexpr auto tooDeep = "elements are nested more than 1,000 deep";
constexpr auto tooManyAttributes = "an element has more than 1,000 attributes";

TEST(XmlDepth, OfAThousandElementsIsAccepted) {
  EXPECT_EQ(ParseXmlText(Nested(1000, "x")).element.Text(), "x");
  EXPECT_FALSE(EventsFault(Nested(1000)));
}

TEST(XmlDepth, BeyondAThousandElementsIsAFaultWithItsLine) {
  const std::string text = Repeated("<a>\n", 1001) + Repeated("</a>", 1001);
  for (const std::optional<XmlFault>& fault : {ParseXmlText(text).fault, ParseXmlBytes(text).fault,
                                               ParseXmlBytes(Utf16(text)).fault, EventsFault(text)}) {
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->line, 1001);
    EXPECT_EQ(fault->message, tooDeep);
  }
}

TEST(XmlDepth, OfAHundredThousandElementsEndsAtTheLimit) {
  const std::string text = Nested(100'000, "x");
  EXPECT_TRUE(StaysWithinLimits(text.size(), [&] {
    const XmlParseResult result = ParseXmlText(text);
    return (!result.element || result.element.Text() != "x") && result.fault &&
           result.fault->message == tooDeep;
  }));
  EXPECT_TRUE(StaysWithinLimits(text.size(), [&] {
    const auto fault = EventsFault(text);
    return fault && fault->message == tooDeep;
  }));
}

TEST(XmlDepth, OfATreeThatIsBuiltIsNotLimitedByTheStack) {
  const std::string text = Nested(1000, "x");
  EXPECT_TRUE(StaysWithinLimits(text.size() * 300, [&] {
    XmlElement root = XmlElement::Parse("<a/>");
    XmlElement innermost = root;
    for (int part = 0; part < 300; ++part) {
      innermost = innermost.InsertCopy(XmlElement::Parse(text));
      while (innermost.FirstChild()) innermost = innermost.FirstChild();
    }
    return root.Text() == std::string(300, 'x') && innermost.Text() == "x";
  }));
}

TEST(XmlAttributes, OfAThousandAreAccepted) {
  EXPECT_EQ(ParseXmlText(WithAttributes(1000)).element.Attribute("a999"), "");
  EXPECT_EQ(ParseXmlBytes(Utf16(WithAttributes(1000))).element.Attribute("a999"), "");
  EXPECT_FALSE(EventsFault(WithAttributes(1000)));
}

TEST(XmlAttributes, BeyondAThousandAreAFaultWithItsLine) {
  const std::string text = "<r>\n<!-- \n --><?p \n?>" + WithAttributes(1001) + "\n</r>";
  for (const std::optional<XmlFault>& fault : {ParseXmlText(text).fault, ParseXmlBytes(text).fault,
                                               ParseXmlBytes(Utf16(text)).fault, EventsFault(text)}) {
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->line, 4);
    EXPECT_EQ(fault->message, tooManyAttributes);
  }
}

TEST(XmlAttributes, CountOnlyInsideTags) {
  const std::string tag = WithAttributes(1001);
  for (const std::string& text :
       {"<r><!--" + tag + "--></r>", "<r><![CDATA[" + tag + "]]></r>", "<r><?p " + tag + "?></r>",
        "<r v='" + Repeated(" a=\">\"", 2000) + "'/>", "<r>" + Repeated("a='' ", 2000) + "</r>",
        "<!DOCTYPE r [<!--" + tag + "-->]><r/>"}) {
    EXPECT_TRUE(ParseXmlText(text).element) << text.substr(0, 40);
  }
}

TEST(XmlAttributes, ByTheHundredThousandAreRefusedAtOnce) {
  const std::string manyNames = WithAttributes(100'000);
  std::string manyRepeated = WithAttributes(15'000);
  manyRepeated.erase(manyRepeated.size() - 2);
  manyRepeated += Repeated(" a14999=\"\"", 90'000) + "/>";
  std::string manyNamespaces = "<a";
  for (int index = 0; index < 60'000; ++index) manyNamespaces += " xmlns:a" + std::to_string(index) + "='u'";
  manyNamespaces += "/>";
  for (const std::string& text : {manyNames, manyRepeated, manyNamespaces}) {
    EXPECT_TRUE(StaysWithinLimits(text.size(), [&] { return ParseXmlText(text).fault.has_value(); }));
    EXPECT_TRUE(StaysWithinLimits(text.size(), [&] { return ParseXmlBytes(text).fault.has_value(); }));
    EXPECT_TRUE(StaysWithinLimits(text.size(), [&] { return EventsFault(text).has_value(); }));
    EXPECT_TRUE(StaysWithinLimits(text.size(), [&] { return ParseXmlBytes(Utf16(text)).fault.has_value(); }));
  }
}

TEST(XmlNamespaces, BeyondAThousandInScopeAreAFault) {
  std::string text;
  for (int level = 0; level < 900; ++level) {
    text += "<a";
    for (int index = 0; index < 50; ++index) {
      text += " xmlns:n" + std::to_string(level) + "x" + std::to_string(index) + "='u'";
    }
    text += ">";
  }
  text += Repeated("<n0x0:b/>", 100'000) + Repeated("</a>", 900);
  EXPECT_TRUE(StaysWithinLimits(text.size(), [&] {
    const auto fault = ParseXmlText(text).fault;
    return fault && fault->message == "more than 1,000 namespaces are declared around an element";
  }));
}

TEST(XmlNames, MayBeManyAndDifferent) {
  std::string text = "<r>";
  for (int index = 0; index < 30'000; ++index) {
    text += "<element" + std::to_string(index) + ">text" + std::to_string(index) + "</element" +
            std::to_string(index) + ">\n";
  }
  text += "</r>";
  EXPECT_TRUE(ParseXmlText(text).element);
  EXPECT_FALSE(EventsFault(text));
}

TEST(XmlNames, OfAFileMayBeThousands) {
  std::string text = "<r>";
  for (int index = 0; index < 2000; ++index) text += "<anElementOfThePlan" + std::to_string(index) + "/>";
  EXPECT_TRUE(ParseXmlBytes(text + "</r>").element);
}

TEST(XmlNames, AreNotUsedUpByTextsAndAttributeValues) {
  std::string text = "<r>";
  for (int index = 0; index < 50'000; ++index) {
    text += "<c v='" + std::to_string(index) + "' xml:id='i" + std::to_string(index) + "'>" +
            std::to_string(index) + "</c>\n" + std::string(static_cast<std::size_t>(index) % 50, ' ');
  }
  EXPECT_TRUE(ParseXmlBytes(text + "</r>").element);
}

TEST(XmlNames, OfAFileInUtf16AreLimited) {
  std::string text = "<r>";
  for (int index = 0; index < 200'000; ++index) text += "<element" + std::to_string(index) + "/>";
  const auto fault = ParseXmlBytes(Utf16(text + "</r>")).fault;
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->message, "the document has too many different names");
}

TEST(XmlIdentifiers, MayOccurTwiceAndNeedNotBeNames) {
  EXPECT_TRUE(ParseXmlText("<r><c xml:id='a'/><c xml:id='a'/><c xml:id='1 2'/></r>").element);
  EXPECT_TRUE(ParseXmlText("<!DOCTYPE r [<!ATTLIST c i ID #IMPLIED>]><r><c i='a'/><c i='a'/></r>").element);
}

TEST(XmlValues, OfManyReferencesAreDecodedInOnePass) {
  const std::string text = "<r v=\"" + Repeated("&amp;", 400'000) + "\"/>";
  EXPECT_TRUE(StaysWithinLimits(text.size(), [&] {
    NoEvents handler;
    return !ParseXmlEvents(text, handler) && handler.valueLength == 400'000;
  }));
}

TEST(XmlAttributes, BeyondTheLimitAreRefusedWhereverTheElementIs) {
  for (std::size_t before = 0; before <= 5'200; before += 325) {
    const std::string text = "<r>" + std::string(before, '.') + WithAttributes(1001) + "</r>";
    const auto fault = EventsFault(text);
    ASSERT_TRUE(fault) << before;
    EXPECT_EQ(fault->message, tooManyAttributes) << before;
  }
}

TEST(XmlSize, OfTwoGibibytesIsRefused) {
  // Pages that nobody has written take no memory.
  constexpr std::size_t size = std::size_t{1} << 31;
  void* const pages = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  ASSERT_NE(pages, MAP_FAILED);
  const std::string_view text(static_cast<const char*>(pages), size);
  for (const std::optional<XmlFault>& fault : {ParseXmlText(text).fault, ParseXmlBytes(text).fault}) {
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->message, "the document has 2 GiB or more");
  }
  ::munmap(pages, size);
}

TEST(XmlTexts, InManyPiecesAreReadInTime) {
  const std::string references = "<r>" + Repeated("&lt;x&#233;", 100'000) + "</r>";
  const std::string sections = "<r>" + Repeated("<![CDATA[<]]>x", 100'000) + "</r>";
  const std::string comments = "<r>" + Repeated("x<!---->", 100'000) + "</r>";
  for (const std::string& text : {references, sections, comments}) {
    EXPECT_TRUE(StaysWithinLimits(text.size(), [&] { return !ParseXmlText(text).element.Text().empty(); }));
    EXPECT_TRUE(StaysWithinLimits(text.size(), [&] { return !EventsFault(text); }));
  }
}

TEST(XmlTextIndex, OfNestedElementsHoldsTheirTextOnce) {
  std::string text = "<r>";
  for (int level = 0; level < 900; ++level) text += "<ListID>" + std::to_string(level);
  text += std::string(1'000'000, 'x') + Repeated("</ListID>", 900) + "</r>";
  EXPECT_TRUE(StaysWithinLimits(text.size(), [&] {
    const XmlElement root = XmlElement::Parse(text);
    const XmlTextIndex index(root, "ListID");
    return !index.Find("x") && index.Find(root.Text()) == root.FirstChild();
  }));
}

}  // namespace
}  // namespace krnqb
