#include "company/records/texts.h"

#include <gtest/gtest.h>

#include "company/records/ascii.h"
#include "company/records/errors.h"
#include "company/testing.h"

namespace krnqb::company {
namespace {

RecordText Written(std::string_view xml) {
  RecordText text;
  EXPECT_FALSE(WriteRecordText(xml, text));
  return text;
}

std::string TextOf(std::string_view xml) {
  return Written(xml).xml;
}

TEST(CompanyRecordText, PutsEachElementOnALineOfItsOwn) {
  EXPECT_EQ(
      TextOf("<BillRet>\n\t<TxnID>1-2</TxnID>  <VendorRef><ListID>3</ListID>\r\n</VendorRef></BillRet>"),
      "<BillRet>\n<TxnID>1-2</TxnID>\n<VendorRef>\n<ListID>3</ListID>\n</VendorRef>\n</BillRet>\n");
}

TEST(CompanyRecordText, WritesABlankBeforeTheSlashOfAnEmptyElement) {
  EXPECT_EQ(TextOf("<A><B/><C></C><D att=\"1\"/><E><!-- nothing --></E></A>"),
            "<A>\n<B />\n<C />\n<D att=\"1\" />\n<E />\n</A>\n");
  EXPECT_EQ(TextOf("<A/>"), "<A />\n");
}

TEST(CompanyRecordText, DeclaresItsNamespacesBeforeTheAttributesOfTheirElement) {
  EXPECT_EQ(
      TextOf("<A b='1' xmlns='urn:a'><C xmlns:p='urn:p' p:d='2'><p:E/></C><F xmlns='' xml:lang='en'/></A>"),
      "<A xmlns=\"urn:a\" b=\"1\">\n<C xmlns:p=\"urn:p\" p:d=\"2\">\n<p:E />\n</C>\n"
      "<F xmlns=\"\" xml:lang=\"en\" />\n</A>\n");
}

TEST(CompanyRecordText, EscapesTheWhiteSpaceOfAttributes) {
  EXPECT_EQ(TextOf("<A b='&#9;&#10;&#13;&lt;&amp;\"&apos;'/>"),
            "<A b=\"&#9;&#10;&#13;&lt;&amp;&quot;'\" />\n");
}

TEST(CompanyRecordText, KeepsACarriageReturn) {
  EXPECT_EQ(TextOf("<A>a&#13;b</A>"), "<A>a&#13;b</A>\n");
}

TEST(CompanyRecordText, IsMissingIfTheTextIsNotWellFormed) {
  RecordText text;
  const std::optional<XmlFault> fault = WriteRecordText("<A>\n<B></A>", text);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->line, 2);
  EXPECT_EQ(text.xml, "");
}

TEST(CompanyRecordText, IsPlainAsciiWithDecimalReferences) {
  EXPECT_EQ(TextOf("<A><B>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8C\xB1</B><C n=\"\xC2\xB7 '&gt;'\">x</C></A>"),
            "<A>\n<B>&#233;&#8364;&#127793;</B>\n<C n=\"&#183; '&gt;'\">x</C>\n</A>\n");
}

TEST(CompanyRecordText, EscapesMarkupAndQuotesInText) {
  EXPECT_EQ(TextOf("<A>&amp; &lt;b&gt; \"c\" 'd' &#38;#38;</A>"),
            "<A>&amp; &lt;b&gt; &quot;c&quot; &apos;d&apos; &amp;#38;</A>\n");
}

TEST(CompanyRecordText, WritesCharacterDataSectionsAsText) {
  EXPECT_EQ(TextOf("<A>x<![CDATA[<&\"]]>y</A>"), "<A>x&lt;&amp;&quot;y</A>\n");
}

TEST(CompanyRecordText, KeepsTheTextOfAnElementExactly) {
  EXPECT_EQ(TextOf("<A><Memo>  two  blanks </Memo><Desc> </Desc><Note>one\ntwo</Note></A>"),
            "<A>\n<Memo>  two  blanks </Memo>\n<Desc> </Desc>\n<Note>one\ntwo</Note>\n</A>\n");
}

TEST(CompanyRecordText, KeepsTheTextAroundACommentTogether) {
  EXPECT_EQ(TextOf("<A><B>a<!-- > -->b<?x y?>c</B></A>"), "<A>\n<B>abc</B>\n</A>\n");
}

TEST(CompanyRecordText, RefusesTextBetweenElements) {
  for (const std::string_view xml :
       {"<A>x<B/></A>", "<A><B/>x</A>", "<A><B/>x<C/></A>", "<A><B/><![CDATA[x]]></A>"}) {
    SCOPED_TRACE(xml);
    const Error error = tests::ThrownError([&] { TextOf(xml); });
    EXPECT_EQ(error.Number(), company_error::cannotParse);
    EXPECT_EQ(error.Description(), "text \"x\" between elements");
  }
}

TEST(CompanyRecordText, HasTheRangeOfItsLines) {
  const RecordText text = Written(
      "<BillRet><TxnID>1</TxnID><ExpenseLineRet><Amount>1.00</Amount></ExpenseLineRet><ItemLineRet/>"
      "<ItemGroupLineRet><ItemLineRet/></ItemGroupLineRet><OpenAmount>2.00</OpenAmount></BillRet>");
  EXPECT_EQ(text.xml.substr(text.linesBegin, text.linesEnd - text.linesBegin),
            "<ExpenseLineRet>\n<Amount>1.00</Amount>\n</ExpenseLineRet>\n<ItemLineRet />\n"
            "<ItemGroupLineRet>\n<ItemLineRet />\n</ItemGroupLineRet>\n");
}

TEST(CompanyRecordText, HasAnEmptyRangeWithoutLines) {
  const RecordText text = Written("<BillRet><TxnID>1</TxnID></BillRet>");
  EXPECT_EQ(text.linesBegin, 0U);
  EXPECT_EQ(text.linesEnd, 0U);
}

TEST(CompanyRecordText, RefusesSeparatedLines) {
  const Error error =
      tests::ThrownError([] { TextOf("<BillRet><ItemLineRet/><Memo/><ItemLineRet/></BillRet>"); });
  EXPECT_EQ(error.Description(), "ItemLineRet is separated from the other lines");
}

TEST(CompanyAscii, RefusesInvalidUtf8) {
  for (const std::string_view bytes : {"\xE9", "\x80", "\xC3(", "\xE2\x82", "\xFF"}) {
    std::string output;
    EXPECT_EQ(tests::ThrownError([&] { AppendAsciiText(output, bytes); }).Number(),
              company_error::cannotParse);
  }
}

}  // namespace
}  // namespace krnqb::company
