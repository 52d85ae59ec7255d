#include "company/records/element_tree.h"

#include <gtest/gtest.h>

#include <array>

#include "krnqb/xml_element.h"

namespace krnqb::company {
namespace {

// Expects the same names, texts and children as those of a parsed document.
// NOLINTNEXTLINE(misc-no-recursion)
void ExpectSame(const RecordElement& element, const XmlElement& parsed) {
  ASSERT_TRUE(element);
  EXPECT_EQ(element.Name(), parsed.Name());
  EXPECT_EQ(element.Text(), parsed.Text());
  for (const std::string_view name : {"a", "b", "x:a", "none"}) {
    const XmlElement child = parsed.Child(name);
    EXPECT_EQ(static_cast<bool>(element.Child(name)), static_cast<bool>(child))
        << parsed.Name() << " " << name;
    EXPECT_EQ(element.Child(name).Text(), child ? child.Text() : "");
  }
  RecordElement child = element.FirstChild();
  for (const XmlElement& parsedChild : parsed.Children()) {
    ASSERT_NO_FATAL_FAILURE(ExpectSame(child, parsedChild));
    EXPECT_EQ(child.Parent().Name(), parsed.Name());
    child = child.NextSibling();
  }
  EXPECT_FALSE(child);
}

TEST(CompanyElementTree, HasWhatADocumentHas) {
  constexpr std::array<std::string_view, 14> documents = {
      "<r/>",
      "<r></r>",
      "<r>\n<a>1</a>\n<b />\n<a>2</a>\n</r>\n",
      "<r><a>x<b>y</b>z</a><b>  </b></r>",
      "<r><a>1 &lt; 2 &amp; 3 &gt; 2 &quot;q&quot; &apos;s&apos;</a></r>",
      "<r><a>Caf&#233; &#x20AC; &#65; &#128512; &#13;</a></r>",
      "<r><a>Caf\xC3\xA9</a></r>",
      "<r><a><![CDATA[<b>&amp;</b>]]></a><!-- <b/> --><?p <b/>?></r>",
      R"(<r><a t="&gt;>" u='/>'>1</a><b t=">"/></r>)",
      R"(<r xmlns="n"><a>1</a></r>)",
      R"(<r><a xmlns="n"><b>1</b></a><b>2</b></r>)",
      R"(<r xmlns="n"><a xmlns=""><b>1</b></a><b>2</b></r>)",
      R"(<r xmlns:x="n"><x:a>1</x:a><a>2</a></r>)",
      "<r><a><b><a><b>deep</b></a></b></a></r>",
  };
  ElementTree tree;
  for (const std::string_view document : documents) {
    SCOPED_TRACE(document);
    const XmlElement parsed = XmlElement::Parse(document);
    ASSERT_TRUE(parsed);
    const std::string xml = parsed.Xml();
    ExpectSame(tree.Read(xml), parsed);
  }
}

TEST(CompanyElementTree, ReadsReferencesOfEitherBase) {
  ElementTree tree;
  EXPECT_EQ(tree.Read("<r>&#8364; &#x20AC; &#x20ac;</r>").Text(), "\u20ac \u20ac \u20ac");
}

TEST(CompanyElementTree, IsEmptyIfTagsAreMissing) {
  ElementTree tree;
  for (const std::string_view text :
       {"", "text", "<r>", "<r><a></r>", "<r></r></r>", "<r></s>", "</r>", "<r/><s/>", "<r", "<r><a></a>"}) {
    EXPECT_FALSE(tree.Read(text)) << text;
  }
  EXPECT_TRUE(tree.Read("<r/>"));
}

TEST(CompanyElementTree, AnswersAnEmptyHandleWithEmptyOnes) {
  const RecordElement none;
  EXPECT_FALSE(none);
  EXPECT_EQ(none.Name(), "");
  EXPECT_EQ(none.Text(), "");
  EXPECT_FALSE(none.Child("a").Child("b").FirstChild().NextSibling().Parent());
  ElementTree tree;
  EXPECT_FALSE(tree.Read("<r/>").Parent());
}

}  // namespace
}  // namespace krnqb::company
