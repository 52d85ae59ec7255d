#include "xml/index.h"

#include <gtest/gtest.h>

namespace krnqb {
namespace {

TEST(XmlTextIndex, FindsTheFirstElementInDocumentOrderAtAnyDepth) {
  const XmlElement root = XmlElement::Parse(
      "<r><p><ref><ListID>1</ListID></ref></p><ListID>1</ListID><x><ListID>2</ListID></x><ListID>A&amp;B</"
      "ListID></r>");
  const XmlTextIndex index(root, "ListID");
  EXPECT_EQ(index.Find("1").Parent().Name(), "ref");
  EXPECT_EQ(index.Find("2").Parent().Name(), "x");
  EXPECT_TRUE(index.Find("A&B"));
  EXPECT_FALSE(index.Find("3"));
}

TEST(XmlTextIndex, CoversTheWholeDocumentOfAnInnerElement) {
  const XmlElement root = XmlElement::Parse("<r><ListID>1</ListID><x/></r>");
  EXPECT_TRUE(XmlTextIndex(root.Child("x"), "ListID").Find("1"));
}

TEST(XmlTextIndex, FindsTheSameElementsAsThePath) {
  const XmlElement root = XmlElement::Parse(
      "<r><ListID> 1</ListID><ListID>1</ListID><listid>5</listid><ListID><i>7</i>8</ListID><ListID/></r>");
  const XmlTextIndex index(root, "ListID");
  for (const std::string text : {" 1", "1", "5", "78", "", "7"}) {
    EXPECT_EQ(index.Find(text), root.Select("//ListID[. = \"" + text + "\"]")) << text;
  }
}

TEST(XmlTextIndex, LeavesOutElementsInANamespace) {
  const XmlElement root = XmlElement::Parse(
      "<r><ListID xmlns='urn:x'>1</ListID><x:ListID xmlns:x='urn:x'>1</x:ListID><a><ListID>1</ListID></a>"
      "<ListID xmlns='urn:x'>2</ListID></r>");
  const XmlTextIndex index(root, "ListID");
  EXPECT_EQ(index.Find("1").Parent().Name(), "a");
  EXPECT_FALSE(index.Find("2"));
}

TEST(XmlTextIndex, FindsNothingForAnEmptyHandle) {
  EXPECT_FALSE(XmlTextIndex(XmlElement(), "ListID").Find("1"));
}

}  // namespace
}  // namespace krnqb
