#include "xml/document_stream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <span>
#include <stdexcept>
#include <string>

#include "limited_child.h"

namespace krnqb {
namespace {

using tests::StaysWithinLimits;

// Writes what it receives: "<p:a{urn}@3 xmlns:p=urn b=1>text</>", pieces of a text joined.
class Transcript final : public XmlStreamHandler {
 public:
  void StartElement(const XmlStartTag& tag) override {
    text += '<' + QualifiedName(tag.name);
    if (!tag.name.uri.empty()) text.append("{").append(tag.name.uri) += '}';
    if (withLines) text += '@' + std::to_string(tag.line);
    for (const auto& [prefix, uri] : tag.namespaces)
      text.append(" xmlns:").append(prefix).append("=").append(uri);
    for (const auto& [name, value] : tag.attributes)
      text.append(" ").append(QualifiedName(name)).append("=").append(value);
    text += '>';
  }
  void Text(std::string_view piece) override { text += piece; }
  void EndElement() override { text += "</>"; }

  std::string text;
  bool withLines = false;
};

// Passes a text in parts of at most `length` bytes.
ByteSource InParts(std::string_view text, std::size_t length) {
  return [whole = BytesOf(text), length](std::span<char> part) {
    return whole(part.first(std::min(part.size(), length)));
  };
}

std::string TranscriptOf(std::string_view document) {
  Transcript transcript;
  EXPECT_FALSE(ParseXmlStream(BytesOf(document), transcript));
  return transcript.text;
}

std::optional<XmlFault> FaultOf(std::string_view document) {
  Transcript transcript;
  return ParseXmlStream(BytesOf(document), transcript);
}

std::string Repeated(std::string_view piece, std::size_t times) {
  std::string text;
  for (std::size_t time = 0; time < times; ++time) text += piece;
  return text;
}

std::string Utf16(std::string_view ascii) {
  std::string bytes = "\xFF\xFE";
  for (const char character : ascii) bytes += {character, '\0'};
  return bytes;
}

TEST(ParseXmlStream, PassesElementsAndTextsInDocumentOrder) {
  EXPECT_EQ(TranscriptOf(
                "<?xml version='1.0'?>\n<a> <b>1 &lt; 2&#13;</b><!-- c --><?d e?><f/><![CDATA[<&]]></a>\n"),
            "<a> <b>1 < 2\r</><f></><&</>");
}

TEST(ParseXmlStream, PassesNamesWithTheirNamespaces) {
  EXPECT_EQ(TranscriptOf("<a xmlns='urn:a' xmlns:p='urn:p'><p:b p:c='1' d='2'/><e xmlns=''/></a>"),
            "<a{urn:a} xmlns:=urn:a xmlns:p=urn:p><p:b{urn:p} p:c=1 d=2></><e xmlns:=></></>");
}

TEST(ParseXmlStream, DecodesTheValuesOfAttributes) {
  EXPECT_EQ(TranscriptOf("<a b='&amp;&#38;&lt;&#xE9;&#10;' c='&amp;amp;'/>"),
            "<a b=&&<\xC3\xA9\n c=&amp;></>");
}

TEST(ParseXmlStream, FindsTheAttributesInNoNamespace) {
  class Finder final : public XmlStreamHandler {
   public:
    void StartElement(const XmlStartTag& tag) override {
      EXPECT_EQ(FindAttribute(tag, "b"), "2");
      EXPECT_EQ(FindAttribute(tag, "c"), std::nullopt);
    }
    void Text(std::string_view /*piece*/) override {}
    void EndElement() override { ++ended; }
    int ended = 0;
  } finder;
  EXPECT_FALSE(ParseXmlStream(BytesOf("<a xmlns:p='urn:p' p:b='1' b='2' p:c='3'/>"), finder));
  EXPECT_EQ(finder.ended, 1);
}

TEST(ParseXmlStream, NamesTheLineOnWhichATagEnds) {
  Transcript transcript;
  transcript.withLines = true;
  const std::string document = "<a>\n<b\nc='1'>" + std::string(100'000, '\n') + "<d/></b></a>";
  EXPECT_FALSE(ParseXmlStream(BytesOf(document), transcript));
  std::erase(transcript.text, '\n');
  EXPECT_EQ(transcript.text, "<a@1><b@3 c=1><d@100003></></></>");
}

TEST(ParseXmlStream, ReadsPartsOfAnyLength) {
  std::string document = "<?xml version='1.0' encoding='windows-1252'?>\n<a>";
  for (int index = 0; index < 300; ++index)
    document += "<b c='" + std::to_string(index) + "'>Caf\xE9 &amp; " + std::to_string(index) + "</b>\n";
  document += "</a>";
  const std::string whole = TranscriptOf(document);
  EXPECT_NE(whole.find("<b c=299>Caf\xC3\xA9 & 299</>"), std::string::npos);
  for (const std::size_t length : std::initializer_list<std::size_t>{1U, 3U, 250U, 3999U, 4001U}) {
    Transcript transcript;
    EXPECT_FALSE(ParseXmlStream(InParts(document, length), transcript));
    EXPECT_EQ(transcript.text, whole) << length;
  }
}

TEST(ParseXmlStream, ReturnsTheFaultAfterWhatPrecedesIt) {
  Transcript transcript;
  const auto fault = ParseXmlStream(BytesOf("<a>\n<b>1</b>\n<c></a>"), transcript);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->line, 3);
  EXPECT_TRUE(transcript.text.starts_with("<a>\n<b>1</>\n<c>")) << transcript.text;
}

TEST(ParseXmlStream, RefusesWhatADocumentParserRefuses) {
  for (const std::string_view document :
       {"", "x", "<a>", "<a></b>", "<a/><b/>", "<a>&b;</a>", "<a b='1' b='2'/>", "<p:a/>", "<a>]]></a>",
        "<a>\x01</a>", "<!DOCTYPE a [<!ENTITY b 'c'>]><a/>", "<!DOCTYPE a SYSTEM 'none'><a>&b;</a>",
        "<a>\xE9</a>", "<?xml version='1.0' encoding='unknown'?><a/>"}) {
    SCOPED_TRACE(document);
    const auto expected = ParseXmlBytes(document).fault;
    const auto fault = FaultOf(document);
    ASSERT_TRUE(expected);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->line, expected->line);
    EXPECT_EQ(fault->message, expected->message);
  }
}

TEST(ParseXmlStream, EndsWithTheExceptionOfTheHandler) {
  class Thrower final : public XmlStreamHandler {
   public:
    void StartElement(const XmlStartTag& /*tag*/) override {}
    void Text(std::string_view /*piece*/) override { throw std::runtime_error("enough"); }
    void EndElement() override { ADD_FAILURE() << "goes on"; }
  } thrower;
  EXPECT_THROW(ParseXmlStream(BytesOf("<a>1</a>"), thrower), std::runtime_error);
}

TEST(ParseXmlStream, EndsWithTheExceptionOfTheSource) {
  Transcript transcript;
  const std::string begin = "<a>" + std::string(10'000, '.');
  const auto source = [rest = BytesOf(begin)](std::span<char> part) {
    const std::size_t length = rest(part);
    if (length == 0) throw std::runtime_error("unreadable");
    return length;
  };
  EXPECT_THROW(ParseXmlStream(source, transcript), std::runtime_error);
}

TEST(ParseXmlStream, RefusesElementsThatAreNestedTooDeep) {
  EXPECT_FALSE(FaultOf(Repeated("<a>", 1000) + Repeated("</a>", 1000)));
  const auto fault = FaultOf(Repeated("<a>\n", 1001) + Repeated("</a>", 1001));
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->line, 1001);
  EXPECT_EQ(fault->message, "elements are nested more than 1,000 deep");
}

std::string WithAttributes(std::size_t count) {
  std::string text = "<a";
  for (std::size_t index = 0; index < count; ++index) text += " a" + std::to_string(index) + "=\"\"";
  return text + "/>";
}

TEST(ParseXmlStream, RefusesElementsWithTooManyAttributes) {
  EXPECT_FALSE(FaultOf(WithAttributes(1000)));
  EXPECT_FALSE(FaultOf("<r>" + Repeated(WithAttributes(1000), 30) + "</r>"));
  for (const std::size_t count : std::initializer_list<std::size_t>{1001U, 1900U, 2500U, 10'000U}) {
    for (const std::string& document :
         {"<r>\n" + WithAttributes(count) + "</r>", Utf16("<r>\n" + WithAttributes(count) + "</r>")}) {
      const auto fault = FaultOf(document);
      ASSERT_TRUE(fault) << count;
      EXPECT_EQ(fault->line, 2);
      EXPECT_EQ(fault->message, "an element has more than 1,000 attributes");
    }
  }
}

TEST(ParseXmlStream, RefusesAttributesByTheHundredThousandAtOnce) {
  std::string repeated = WithAttributes(15'000);
  repeated.erase(repeated.size() - 2);
  repeated += Repeated(" a14999=\"\"", 90'000) + "/>";
  std::string namespaces = "<a";
  for (int index = 0; index < 60'000; ++index) namespaces += " xmlns:a" + std::to_string(index) + "='u'";
  namespaces += "/>";
  for (const std::string& document : {WithAttributes(100'000), repeated, namespaces}) {
    EXPECT_TRUE(StaysWithinLimits(document.size(), [&] { return FaultOf(document).has_value(); }));
    EXPECT_TRUE(StaysWithinLimits(document.size(), [&] { return FaultOf(Utf16(document)).has_value(); }));
  }
}

TEST(ParseXmlStream, RefusesTooManyDifferentNames) {
  std::string document = "<r>";
  for (int index = 0; index < 200'000; ++index) document += "<element" + std::to_string(index) + "/>";
  const auto fault = FaultOf(document + "</r>");
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->message, "the document has too many different names");
}

TEST(ParseXmlStream, TakesAnyNumberOfDifferentTexts) {
  std::string document = "<r>";
  for (int index = 0; index < 200'000; ++index)
    document += "<c v='" + std::to_string(index) + "'>" + std::to_string(index) + "</c>";
  EXPECT_FALSE(FaultOf(document + "</r>"));
}

// The document is generated as it is read: only what the parser keeps takes memory.
TEST(ParseXmlStream, TakesTheSameMemoryForADocumentOfAnySize) {
  EXPECT_TRUE(StaysWithinLimits(0, [] {
    class Counter final : public XmlStreamHandler {
     public:
      void StartElement(const XmlStartTag& /*tag*/) override { ++elements; }
      void Text(std::string_view /*piece*/) override {}
      void EndElement() override {}
      std::size_t elements = 0;
    } counter;
    const std::string record = "<b><c>" + std::string(500, '.') + "</c></b>\n";
    constexpr std::size_t records = 160'000;  // 82 MB
    std::size_t written = 0;
    std::string_view rest = "<a>";
    const auto source = [&](std::span<char> part) {
      while (rest.empty() && written <= records)
        rest = ++written <= records ? std::string_view(record) : "</a>";
      const std::size_t length = std::min(rest.size(), part.size());
      std::copy_n(rest.begin(), length, part.begin());
      rest.remove_prefix(length);
      return length;
    };
    return !ParseXmlStream(source, counter) && counter.elements == 2 * records + 1;
  }));
}

}  // namespace
}  // namespace krnqb
