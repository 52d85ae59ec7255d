#include "xml/parser.h"

#include <gtest/gtest.h>

namespace krnqb {
namespace {

TEST(ParseXmlText, ReturnsTheDocumentElement) {
  const XmlParseResult result = ParseXmlText("<?xml version=\"1.0\" ?>\n<QBXML><a/></QBXML>\n");
  ASSERT_TRUE(result.element);
  EXPECT_FALSE(result.fault);
  EXPECT_EQ(result.element.Name(), "QBXML");
}

TEST(ParseXmlText, ReportsTheLineOfAFault) {
  const XmlParseResult result = ParseXmlText("<a>\n<b>\n</a>");
  EXPECT_FALSE(result.element);
  ASSERT_TRUE(result.fault);
  EXPECT_EQ(result.fault->line, 3);
  EXPECT_NE(result.fault->message.find("mismatch"), std::string::npos) << result.fault->message;
}

TEST(ParseXmlText, RejectsTextsThatAreNotWellFormed) {
  for (const std::string text :
       {"", " ", "text", "<a>", "<a></b>", "<a/><b/>", "<a>]]></a>", "<a b=c/>", "<a>&nbsp;</a>", "<a>&</a>",
        "<a b='1' b='2'/>", "<a><!-- -- --></a>", "<a>\x01</a>", "<a>\xff</a>"}) {
    const XmlParseResult result = ParseXmlText(text);
    EXPECT_FALSE(result.element) << text;
    EXPECT_TRUE(result.fault) << text;
  }
}

TEST(ParseXmlText, RejectsEntityDeclarations) {
  for (const std::string text :
       {"<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>", "<!DOCTYPE a [<!ENTITY e 'x'>]><a/>",
        "<!DOCTYPE a [<!ENTITY % p 'x'>]><a/>",
        "<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/hostname'>]><a>&e;</a>",
        "<!DOCTYPE a [<!NOTATION n SYSTEM 'n'><!ENTITY e SYSTEM 'x' NDATA n>]><a/>"}) {
    const XmlParseResult result = ParseXmlText(text);
    EXPECT_FALSE(result.element) << text;
    ASSERT_TRUE(result.fault) << text;
    EXPECT_EQ(result.fault->message, "the document declares entities");
  }
}

TEST(ParseXmlText, RejectsEntitiesBeforeExpandingThem) {
  std::string text = "<!DOCTYPE a [<!ENTITY e0 'xxxxxxxxxx'>";
  for (int level = 1; level < 30; ++level) {
    text += "<!ENTITY e" + std::to_string(level) + " '";
    for (int copy = 0; copy < 10; ++copy) text += "&e" + std::to_string(level - 1) + ";";
    text += "'>";
  }
  EXPECT_FALSE(ParseXmlText(text + "]><a b='&e29;'>&e29;</a>").element);
}

TEST(ParseXmlText, AcceptsADocumentTypeWithoutEntities) {
  EXPECT_TRUE(ParseXmlText("<!DOCTYPE a SYSTEM 'missing.dtd'><a/>").element);
}

TEST(ParseXmlText, IgnoresTheEncodingDeclaration) {
  for (const std::string encoding : {"UTF-16", "ISO-8859-1", "windows-1252", "no-such-encoding"}) {
    const auto result = ParseXmlText("<?xml version=\"1.0\" encoding=\"" + encoding + "\"?><a>é€</a>");
    ASSERT_TRUE(result.element) << encoding;
    EXPECT_EQ(result.element.Text(), "é€") << encoding;
  }
}

TEST(ParseXmlText, AcceptsAByteOrderMark) {
  EXPECT_EQ(ParseXmlText("\xEF\xBB\xBF<a>é</a>").element.Text(), "é");
}

TEST(ParseXmlText, PrintsNothing) {
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  const auto broken = ParseXmlText("<a><b></a>");
  const auto selected = ParseXmlText("<a/>");
  EXPECT_ANY_THROW(static_cast<void>(selected.element.Select("//[")));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(ParseXmlText, CountsLinesBeyondSixteenBits) {
  std::string text = "<a>";
  for (int line = 1; line < 70000; ++line) text += "\n";
  text += "<b>x</b>\n</a>";
  const auto result = ParseXmlText(text);
  ASSERT_TRUE(result.element);
  EXPECT_EQ(result.element.Child("b").Line(), 70000);
}

TEST(ParseXmlText, ParsesTextsOfManyMegabytes) {
  const std::string large(20'000'000, 'x');
  EXPECT_EQ(ParseXmlText("<a>" + large + "</a>").element.Text().size(), large.size());
}

TEST(ParseXmlBytes, ObeysTheEncodingDeclaration) {
  EXPECT_EQ(ParseXmlBytes("<?xml version=\"1.0\" encoding=\"windows-1252\"?><a>\x80\xe9</a>").element.Text(),
            "€é");
  EXPECT_EQ(ParseXmlBytes("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\xe9</a>").element.Text(), "é");
  EXPECT_EQ(ParseXmlBytes("<a>é</a>").element.Text(), "é");
}

TEST(ParseXmlBytes, RecognizesUtf16ByItsByteOrderMark) {
  const std::u16string wide = u"<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>é€</a>";
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : wide) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  EXPECT_EQ(ParseXmlBytes(bytes).element.Text(), "é€");
}

TEST(EscapedXmlText, EscapesMarkupCharacters) {
  EXPECT_EQ(EscapedXmlText("a & b < c > \"d\" 'e' é"), "a &amp; b &lt; c &gt; &quot;d&quot; 'e' é");
}

}  // namespace
}  // namespace krnqb
