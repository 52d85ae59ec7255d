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
    testing::Values(FrameCase{"Nothing", "", ""}, FrameCase{"Declaration", "<?xml version='1.0'?>\n", "\n"},
                    FrameCase{"DeclarationOfUtf8",
                              "<?xml version=\"1.0\" encoding=\"utf-8\" standalone='yes'?>", ""},
                    FrameCase{"ByteOrderMark", "\xEF\xBB\xBF<?xml version='1.0'?>\n", "\n"},
                    FrameCase{"Comments", "<!-- <plan> -->\n\n<!-- b -->", "\n<!-- </plan> --> <!---->\n"},
                    FrameCase{"Instructions", "<?style a=\"b\"?>", "\n<?end of it?>\n"},
                    FrameCase{"DocumentType", "<!DOCTYPE plan SYSTEM 'plan.dtd'>\n", ""},
                    FrameCase{"DocumentTypeWithSubset", "<!DOCTYPE plan [ <!ELEMENT plan ANY> ]>\n", ""}),
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

TEST(PlanFrame, OfAnotherEncodingIsReplaced) {
  const PlanFrame ofNewPlan;
  EXPECT_EQ(FrameOf("<?xml version='1.0' encoding='windows-1252'?><!-- caf\xE9 --><plan/>").head,
            ofNewPlan.head);
  EXPECT_EQ(FrameOf(std::string("\xFF\xFE<\0p\0l\0a\0n\0/\0>\0", 16)).head, ofNewPlan.head);
  EXPECT_EQ(FrameOf(std::string("<\0p\0l\0a\0n\0/\0>\0", 14)).tail, ofNewPlan.tail);
}

TEST(PlanFrame, ThatIsAmbiguousIsReplaced) {
  for (const char* bytes : {"<!-- a --><plan/><?b <? ?>", "<!DOCTYPE plan [ ] ><plan/><!-- ]> -->"}) {
    const PlanFrame frame = FrameOf(bytes);
    EXPECT_EQ(frame.head, PlanFrame().head) << bytes;
    EXPECT_EQ(frame.tail, PlanFrame().tail) << bytes;
  }
}

}  // namespace
}  // namespace krnqb::plan_file
