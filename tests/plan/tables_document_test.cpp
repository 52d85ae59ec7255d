#include "plan/tables_document.h"

#include <gtest/gtest.h>

#include "fakes/fixed_clock.h"
#include "fakes/plan_texts.h"

namespace krnqb {
namespace {

using fakes::Block;
using fakes::Row;
using fakes::TableRecord;

class TablesDocumentTest : public testing::Test {
 protected:
  XmlElement Add(std::string_view id, const std::string& tableBlocks) {
    const XmlElement element = XmlElement::Parse(tableBlocks);
    document.Add(id, element, clock);
    return element;
  }

  fakes::FixedClock clock{LocalDateTime{2002, 1, 1, 9, 0, 0}};
  TablesDocument document;
};

TEST_F(TablesDocumentTest, PrintsItsTablesInTheOrderOfAddition) {
  const std::string first = fakes::TableBlocks({Block("a", {Row({"x", "1"})})});
  EXPECT_TRUE(document.Empty());
  Add("21", first);
  Add("20", "<tableblocks/>");
  EXPECT_FALSE(document.Empty());
  EXPECT_EQ(document.Text(),
            fakes::TablesDocument({TableRecord("21", first), TableRecord("20", "<tableblocks/>")}));
}

TEST_F(TablesDocumentTest, PrintsOnlyTheRootWithoutTables) {
  EXPECT_EQ(document.Text(), "<tables>\r\n\r\n</tables>");
  document.UseLineFeeds();
  EXPECT_EQ(document.Text(), "<tables>\n\n</tables>");
}

TEST_F(TablesDocumentTest, WithLineFeedsPrintsWhatParsingItsTextReturns) {
  Add("20", "<tableblocks>\r\n<!-- a\r\nb --><c>x&#13;</c></tableblocks>");
  const std::string text = document.Text();
  document.UseLineFeeds();
  EXPECT_EQ(document.Text(), XmlElement::Parse(text).Xml());
}

TEST_F(TablesDocumentTest, StampsEachTableWithTheDayOnWhichItWasAdded) {
  Add("20", "<tableblocks/>");
  clock.now = LocalDateTime{2002, 1, 1, 18, 0, 0};
  Add("21", "<tableblocks/>");
  EXPECT_EQ(document.Text(), fakes::TablesDocument({TableRecord("20", "<tableblocks/>", "37257"),
                                                    TableRecord("21", "<tableblocks/>", "37258")}));
}

TEST_F(TablesDocumentTest, PrintsLaterChangesToItsTables) {
  const XmlElement blocks = Add("20", "<tableblocks><c>old</c></tableblocks>");
  blocks.FirstChild().SetText("new");
  EXPECT_EQ(document.Text(),
            fakes::TablesDocument({TableRecord("20", "<tableblocks><c>new</c></tableblocks>")}));
}

TEST_F(TablesDocumentTest, FindsTheFirstBlockOfAnIdAtAnyDepthOfAnyTable) {
  Add("20", "<tableblocks><block id=\"a\"/></tableblocks>");
  Add("21", "<tableblocks><deeper><block id=\"b\" n=\"1\"/></deeper><block id=\"b\" n=\"2\"/></tableblocks>");
  Add("22", "<tableblocks><block id=\"b\" n=\"3\"/></tableblocks>");
  EXPECT_EQ(document.FirstBlock("b").Attribute("n"), "1");
  EXPECT_FALSE(document.FirstBlock("B"));
  EXPECT_FALSE(document.FirstBlock("c"));
}

TEST_F(TablesDocumentTest, FindsNoBlockOutsideItsTables) {
  const XmlElement item =
      XmlElement::Parse("<tableitem><block id=\"a\"/><tableblocks/><block id=\"a\"/></tableitem>");
  document.Add("20", item.Child("tableblocks"), clock);
  EXPECT_FALSE(document.FirstBlock("a"));
}

TEST_F(TablesDocumentTest, FindsNoBlockForAnEmptyId) {
  Add("20", "<tableblocks><block id=\"\"/></tableblocks>");
  EXPECT_FALSE(document.FirstBlock(""));
}

}  // namespace
}  // namespace krnqb
