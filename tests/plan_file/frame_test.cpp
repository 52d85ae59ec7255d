#include "plan_file/frame.h"

#include <gtest/gtest.h>

#include <string>

namespace krnqb::plan_file {
namespace {

struct FrameCase {
  const char* name;
  std::string head;
  std::string tail;
};

class KeptFrame : public testing::TestWithParam<FrameCase> {};

TEST_P(KeptFrame, IsTheTextAroundTheElement) {
  const FrameCase& expected = GetParam();
  for (const char* element : {"<plan/>", "<plan><!-- inside --></plan>", "<plan a='-->'>text</plan >"}) {
    const PlanFrame frame = FrameOf(expected.head + element + expected.tail);
    EXPECT_EQ(frame.head, expected.head);
    EXPECT_EQ(frame.tail, expected.tail);
  }
}

INSTANTIATE_TEST_SUITE_P(
    PlanFrame, KeptFrame,
    testing::Values(
        FrameCase{"Nothing", "", ""}, FrameCase{"Declaration", "<?xml version='1.0'?>\n", "\n"},
        FrameCase{"DeclarationOfUtf8", "<?xml version=\"1.0\" encoding=\"utf-8\" standalone='yes'?>", ""},
        FrameCase{"ByteOrderMark", "\xEF\xBB\xBF<?xml version='1.0'?>\n", "\n"},
        FrameCase{"Comments", "<!-- <plan> -->\n\n<!-- b -->", "\n<!-- </plan> --> <!---->\n"},
        FrameCase{"Instructions", "<?style a=\"b\"?>", "\n<?end of it?>\n"},
        FrameCase{"DocumentType", "<!DOCTYPE plan SYSTEM 'plan.dtd'>\n", ""},
        FrameCase{"DocumentTypeWithSubset", "<!DOCTYPE plan [ <!ELEMENT plan ANY> ]>\n", ""},
        FrameCase{"CommentsAroundADocumentType", "<!-- a -->\n<!DOCTYPE plan>\n<!-- b -->\n", "\n<!-- c -->"},
        FrameCase{"SubsetEndingInABlank", "<!DOCTYPE plan [ ] ><!-- a -->", "<!-- ]> -->"},
        FrameCase{"SubsetWithBracketsInTexts",
                  "<!DOCTYPE plan [<!ATTLIST plan a CDATA \"]>\" b CDATA ']'>\n]>\n<!-- a -->", ""},
        FrameCase{"SubsetWithComments", "<!DOCTYPE plan [<!-- ]> ' \" --><?p ]> '?>]><!-- a -->\n", ""},
        FrameCase{"SystemIdentifierWithATag", "<!DOCTYPE plan SYSTEM \"a><b\">\n<!-- a -->\n", ""},
        FrameCase{"SystemIdentifierWithBrackets", "<!DOCTYPE plan SYSTEM \"a>[b\">\n<!-- a -->\n", ""},
        FrameCase{"QuotesInComments", "<!-- it's > \"here -->\n<?p it's > \"here?>\n", "<!-- it's -->"},
        FrameCase{"MarkupInsideMarkup", "<!-- <?a --><?b <!-- ?>\n", "<?b <? <!-- ?>\n<!-- ?> <? -->\n"},
        FrameCase{"StyleSheetWithoutADeclaration", "<?xml-stylesheet href='a' encoding='b'?><!-- a -->\n",
                  ""},
        FrameCase{"DeclarationThatNamesUtf8Elsewhere",
                  "<?xml version='1.0' encoding=\"UTF-8\"?><!-- encoding='latin1' -->", ""}),
    [](const testing::TestParamInfo<FrameCase>& test) { return std::string(test.param.name); });

TEST(PlanFrame, HasOnlyLineFeeds) {
  const PlanFrame frame = FrameOf("<?xml version='1.0'?>\r\n<!-- a\rb -->\r\n<plan/>\r\n");
  EXPECT_EQ(frame.head, "<?xml version='1.0'?>\n<!-- a\nb -->\n");
  EXPECT_EQ(frame.tail, "\n");
}

TEST(PlanFrame, ConvertsCarriageReturnsAtItsEnds) {
  const PlanFrame frame = FrameOf("<?xml version='1.0'?>\r<plan/>\r");
  EXPECT_EQ(frame.head, "<?xml version='1.0'?>\n");
  EXPECT_EQ(frame.tail, "\n");
}

TEST(PlanFrame, EndsBehindCharactersThatLookLikeMarkup) {
  const std::string head = "<!-- a -->\n";
  for (const char* element :
       {"<plan><![CDATA[</plan><!-- ]]></plan>", "<plan><!-- </plan> --><?p </plan>?></plan>",
        "<plan><plan/><plan a='>'></plan></plan\n>", "<plan a=\"/>\"/>",
        "<plan><plan><![CDATA[]]]]><![CDATA[>]]></plan></plan>"}) {
    const PlanFrame frame = FrameOf(head + element + "\n<!-- b -->\n");
    EXPECT_EQ(frame.head, head) << element;
    EXPECT_EQ(frame.tail, "\n<!-- b -->\n") << element;
  }
}

TEST(PlanFrame, OfAnotherEncodingIsWrittenInUtf8) {
  const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  const PlanFrame latin = FrameOf(
      "<?xml version='1.0' encoding='windows-1252'?><!-- caf\xE9 -->\n<?p a?><!DOCTYPE plan SYSTEM "
      "'p.dtd'>\n<plan/><!-- \x80 -->");
  EXPECT_EQ(latin.head, declaration + "<!-- caf\u00e9 -->\n<?p a?>\n<!DOCTYPE plan SYSTEM \"p.dtd\">\n");
  EXPECT_EQ(latin.tail, "\n<!-- \u20ac -->\n");
  std::string wide = "\xFF\xFE";
  for (const char character : std::string("<!-- a --><plan/><?b?>")) wide += std::string{character, '\0'};
  EXPECT_EQ(FrameOf(wide).head, declaration + "<!-- a -->\n");
  EXPECT_EQ(FrameOf(wide).tail, "\n<?b?>\n");
  EXPECT_EQ(FrameOf("<?xml version='1.0' encoding='US-ASCII'?><!-- a -->\n<plan/>").head,
            declaration + "<!-- a -->\n");
  EXPECT_EQ(FrameOf("<?xml version='1.0' encoding='ISO-8859-1'?><plan/>").head, PlanFrame().head);
  EXPECT_EQ(FrameOf("<?xml version='1.0' encoding='ISO-8859-1'?><plan/>").tail, PlanFrame().tail);
}

}  // namespace
}  // namespace krnqb::plan_file
