#include "krnqb/xml_element.h"

#include <gtest/gtest.h>

#include <utility>

#include "fakes/outside_element.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using tests::NumberThrownBy;

TEST(XmlElement, EmptyHandleReturnsNothingForOptionalParts) {
  const XmlElement none;
  EXPECT_FALSE(none);
  EXPECT_FALSE(none.Child("a").Child("b").Parent().NextSibling());
  EXPECT_FALSE(none.Attribute("a"));
  EXPECT_TRUE(none.Children().empty());
  EXPECT_FALSE(none.NextInDocument());
  EXPECT_EQ(none.Line(), 0);
}

TEST(XmlElement, EmptyHandleThrowsForRequiredParts) {
  XmlElement none;
  EXPECT_EQ(NumberThrownBy([&] { static_cast<void>(none.Text()); }), 91);
  EXPECT_EQ(NumberThrownBy([&] { static_cast<void>(none.Name()); }), 91);
  EXPECT_EQ(NumberThrownBy([&] { static_cast<void>(none.Xml()); }), 91);
  EXPECT_EQ(NumberThrownBy([&] { static_cast<void>(none.Select("//a")); }), 91);
  EXPECT_EQ(NumberThrownBy([&] { static_cast<void>(none.SelectAll("//a")); }), 91);
  EXPECT_EQ(NumberThrownBy([&] { none.SetText("x"); }), 91);
  EXPECT_EQ(NumberThrownBy([&] { none.Remove(); }), 91);
}

TEST(XmlElement, TextIsTheWholeUntrimmedContent) {
  EXPECT_EQ(XmlElement::Parse("<a> x<b>y</b><![CDATA[<z>]]><!-- no --><?no no?> &amp;\n</a>").Text(),
            " xy<z> &\n");
}

TEST(XmlElement, CountsOnlyElementsAsChildren) {
  const XmlElement root = XmlElement::Parse("<a>\n <!-- c --> <b/>text<?pi?><c/>\n</a>");
  ASSERT_EQ(root.Children().size(), 2U);
  EXPECT_EQ(root.FirstChild().Name(), "b");
  EXPECT_EQ(root.FirstChild().NextSibling().Name(), "c");
  EXPECT_EQ(root.LastChild().PreviousSibling().Name(), "b");
  EXPECT_FALSE(root.LastChild().NextSibling());
  EXPECT_FALSE(root.Parent());
}

TEST(XmlElement, KeepsAnAmpersandInText) {
  XmlElement cell = XmlElement::Parse("<c>old<i/></c>");
  cell.SetText("Meals & Entertainment <b>");
  EXPECT_EQ(cell.Text(), "Meals & Entertainment <b>");
  EXPECT_EQ(cell.Xml(), "<c>Meals &amp; Entertainment &lt;b&gt;</c>");
  cell.SetText("");
  EXPECT_EQ(cell.Xml(), "<c/>");
}

TEST(XmlElement, SearchesACloneInItsOwnDocument) {
  const XmlElement root = XmlElement::Parse("<a><b><x>1</x></b><x>2</x></a>");
  const XmlElement clone = root.Child("b").Clone();
  EXPECT_EQ(clone.SelectAll("//x").size(), 1U);
  EXPECT_EQ(root.SelectAll("//x").size(), 2U);
  EXPECT_EQ(root.Child("b").SelectAll("//x").size(), 2U);
}

TEST(XmlElement, PreservesAttributesAndTexts) {
  const std::string text = "<a z=\"é\" b=\"&quot;&amp;\">\n  <!-- ü --><c></c><![CDATA[<x> & ]]>&#183;</a>";
  EXPECT_EQ(XmlElement::Parse(text).Xml(),
            "<a z=\"é\" b=\"&quot;&amp;\">\n  <!-- ü --><c/><![CDATA[<x> & ]]>·</a>");
}

TEST(XmlElement, WritesNoDeclaration) {
  EXPECT_EQ(XmlElement::Parse("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<a>\r\n</a>").Xml(),
            "<a>\n</a>");
}

TEST(XmlElement, SelectsInDocumentOrder) {
  const XmlElement root = XmlElement::Parse("<a><b><x>1</x></b><x>2</x><c x=\"y\"><x>3</x></c></a>");
  EXPECT_EQ(root.Select("//x").Text(), "1");
  EXPECT_EQ(root.Select("./x").Text(), "2");
  EXPECT_EQ(root.Select("//c[@x=\"y\"]/x").Text(), "3");
  EXPECT_FALSE(root.Select("./nothing"));
  EXPECT_EQ(root.SelectAll("//x | //b").front().Name(), "b");
}

TEST(XmlElement, ThrowsForAMalformedPath) {
  const XmlElement root = XmlElement::Parse("<a/>");
  EXPECT_EQ(NumberThrownBy([&] { static_cast<void>(root.Select("//ListID[. = \"a\"b\"]")); }), -2147467259);
  EXPECT_EQ(NumberThrownBy([&] { static_cast<void>(root.Select("1 + 1")); }), -2147467259);
  EXPECT_EQ(root.Select("/a"), root);
}

TEST(XmlElement, PrintsTheNamespacesThatItInheritsAndUses) {
  const XmlElement root = XmlElement::Parse(
      "<a xmlns:d='urn:d' xmlns:e='urn:e' xmlns:f='urn:f'><b f:y='2'><c d:x='1'><e:g/></c></b><h/></a>");
  const std::string text = root.Child("b").Xml();
  EXPECT_EQ(text,
            "<b xmlns:f=\"urn:f\" xmlns:d=\"urn:d\" xmlns:e=\"urn:e\" f:y=\"2\"><c d:x=\"1\"><e:g/></c></b>");
  EXPECT_EQ(XmlElement::Parse(text).Xml(), text);
  EXPECT_EQ(root.Child("h").Xml(), "<h/>") << "what it does not use, it does not declare";
  EXPECT_EQ(root.Child("b").Child("c").Xml(), "<c xmlns:d=\"urn:d\" xmlns:e=\"urn:e\" d:x=\"1\"><e:g/></c>");
  EXPECT_EQ(root.Xml(),
            "<a xmlns:d=\"urn:d\" xmlns:e=\"urn:e\" xmlns:f=\"urn:f\">"
            "<b f:y=\"2\"><c d:x=\"1\"><e:g/></c></b><h/></a>")
      << "printing changes nothing";
}

TEST(XmlElement, PrintsAnInheritedDefaultNamespace) {
  const XmlElement root = XmlElement::Parse("<a xmlns='urn:a'><b><c/><d xmlns=''/></b></a>");
  EXPECT_EQ(root.FirstChild().Xml(), "<b xmlns=\"urn:a\"><c/><d xmlns=\"\"/></b>");
}

TEST(XmlElement, PrintsAPrefixThatItDeclaresAnewOnce) {
  const XmlElement root = XmlElement::Parse("<a xmlns:d='urn:1'><b xmlns:d='urn:2' d:x='1'/></a>");
  EXPECT_EQ(root.FirstChild().Xml(), "<b xmlns:d=\"urn:2\" d:x=\"1\"/>");
}

TEST(XmlElement, InsertsCopiesBeforeAChildOrAtTheEnd) {
  XmlElement root = XmlElement::Parse("<a><r>1</r><r>2</r></a>");
  XmlElement copy = root.InsertCopy(root.FirstChild(), root.LastChild());
  copy.SetText("new");
  root.InsertCopy(XmlElement::Parse("<s>from <i>elsewhere</i></s>"));
  EXPECT_EQ(root.Xml(), "<a><r>1</r><r>new</r><r>2</r><s>from <i>elsewhere</i></s></a>");
}

TEST(XmlElement, StaysValidAfterItsRemoval) {
  XmlElement root = XmlElement::Parse("<a><b>1</b><c/></a>");
  XmlElement child = root.Child("b");
  child.Remove();
  EXPECT_EQ(root.Xml(), "<a><c/></a>");
  EXPECT_EQ(child.Text(), "1");
  EXPECT_FALSE(child.Parent());
  root = {};
  EXPECT_EQ(child.Xml(), "<b>1</b>");
}

TEST(XmlElement, StaysValidWhenItsParentsContentIsReplaced) {
  XmlElement root = XmlElement::Parse("<a><b>1</b></a>");
  const XmlElement child = root.Child("b");
  root.SetText("2");
  EXPECT_EQ(child.Text(), "1");
}

TEST(XmlElement, ReadsAndSetsAttributes) {
  XmlElement root = XmlElement::Parse("<a x='1'/>");
  EXPECT_EQ(root.Attribute("x"), "1");
  EXPECT_FALSE(root.Attribute("y"));
  root.SetAttribute("x", "a & \"b\"");
  EXPECT_EQ(root.Attribute("x"), "a & \"b\"");
  root.SetAttribute("y", "é");
  EXPECT_EQ(root.Xml(), "<a x=\"a &amp; &quot;b&quot;\" y=\"é\"/>");
}

TEST(XmlElement, ReadsAttributesOfTheDocumentTypeWithoutPrintingThem) {
  XmlElement root = XmlElement::Parse("<!DOCTYPE a [<!ATTLIST a x CDATA '1' y CDATA '2'>]><a y='3'/>");
  EXPECT_EQ(root.Attribute("x"), "1");
  EXPECT_EQ(root.Attribute("y"), "3");
  EXPECT_EQ(root.Xml(), "<a y=\"3\"/>");
  root.SetAttribute("x", "4");
  EXPECT_EQ(root.Attribute("x"), "4");
  EXPECT_EQ(root.Xml(), "<a y=\"3\" x=\"4\"/>");
}

TEST(XmlElement, SetsAttributesBeforeItsContent) {
  XmlElement text = XmlElement::Parse("<a>1</a>");
  text.SetAttribute("x", "2");
  text.SetAttribute("y", "3");
  EXPECT_EQ(text.Xml(), "<a x=\"2\" y=\"3\">1</a>");
  EXPECT_EQ(text.Text(), "1");
  text.SetText("4");
  EXPECT_EQ(text.Xml(), "<a x=\"2\" y=\"3\">4</a>");
  text.SetText("");
  EXPECT_EQ(text.Xml(), "<a x=\"2\" y=\"3\"/>");
  text.InsertCopy(XmlElement::Parse("<b/>"));
  EXPECT_EQ(text.Xml(), "<a x=\"2\" y=\"3\"><b/></a>");
  EXPECT_FALSE(text.FirstChild().NextSibling());
}

TEST(XmlElement, KeepsItsTextBesideWhatIsInserted) {
  XmlElement root = XmlElement::Parse("<a>1</a>");
  root.InsertCopy(XmlElement::Parse("<b>2</b>"));
  EXPECT_EQ(root.Xml(), "<a>1<b>2</b></a>");
  EXPECT_EQ(root.Text(), "12");
  EXPECT_EQ(root.FirstTextNode(), "1");
  root.FirstChild().Remove();
  EXPECT_EQ(root.Xml(), "<a>1</a>");
}

TEST(XmlElement, FindsPathsAnewAfterAChange) {
  XmlElement root = XmlElement::Parse("<a><b x='1'/></a>");
  EXPECT_TRUE(root.Select("//b[@x = 1]"));
  EXPECT_FALSE(root.Select("//b[@x = 2]"));
  root.InsertCopy(XmlElement::Parse("<b x='2'/>"), root.FirstChild());
  EXPECT_EQ(root.Select("//b[@x = 2]"), root.FirstChild());
  root.FirstChild().SetAttribute("x", "3");
  EXPECT_FALSE(root.Select("//b[@x = 2]"));
  root.FirstChild().Remove();
  EXPECT_FALSE(root.Select("//b[@x = 3]"));
  root.FirstChild().SetText("4");
  EXPECT_TRUE(root.Select("//b[. = 4]"));
}

TEST(XmlElement, SelectsByASimplePathWhatTheFullOneSelects) {
  const XmlElement root = XmlElement::Parse(
      "<a><b><c>1</c></b><b/><c>2</c><b><c>3</c><c>4</c><b><c>5</c></b></b><x:b "
      "xmlns:x='urn:x'><c>6</c></x:b>"
      "<b xmlns='urn:x'><c>7</c></b><a><b><c>8</c></b></a></a>");
  const std::pair<const char*, const char*> paths[] = {
      // NOLINT(modernize-avoid-c-arrays)
      {"//c", "//c[true()]"},
      {"//a", "//a[true()]"},
      {"//none", "//none[true()]"},
      {"b", "b[true()]"},
      {"./b", "./b[true()]"},
      {"b/c", "b/c[true()]"},
      {"./b/c", "./b/c[true()]"},
      {"./b/b/c", "./b/b/c[true()]"},
      {"./b/none", "./b/none[true()]"},
      {"descendant::b", "descendant::b[true()]"},
      {"descendant::a", "descendant::a[true()]"},
      {"descendant-or-self::a", "descendant-or-self::a[true()]"}};
  for (const XmlElement& from : {root, root.FirstChild(), root.LastChild()}) {
    for (const auto& [simple, full] : paths) {
      EXPECT_EQ(from.SelectAll(simple), from.SelectAll(full)) << simple;
      EXPECT_EQ(from.Select(simple), from.Select(full)) << simple;
    }
  }
}

TEST(XmlElement, FindsOnlyChildrenInNoNamespaceByName) {
  const XmlElement root = XmlElement::Parse(
      "<a><x:b xmlns:x='urn:x'>1</x:b><b xmlns='urn:x'>2</b><x:c xmlns:x='urn:x'/><b>3</b></a>");
  EXPECT_EQ(root.Child("b").Text(), "3");
  EXPECT_FALSE(root.Child("x:b"));
  EXPECT_FALSE(root.Child("c"));
  EXPECT_EQ(XmlElement::Parse("<a xmlns='urn:x'><b/><b xmlns=''>1</b></a>").Child("b").Text(), "1");
}

TEST(XmlElement, IsNamedOnlyByANameInNoNamespace) {
  const XmlElement root =
      XmlElement::Parse("<a><b/><x:b xmlns:x='urn:x'/><b xmlns='urn:x'><b xmlns=''/></b></a>");
  EXPECT_TRUE(root.FirstChild().IsNamed("b"));
  EXPECT_FALSE(root.FirstChild().IsNamed("B"));
  EXPECT_FALSE(root.FirstChild().NextSibling().IsNamed("b"));
  EXPECT_FALSE(root.FirstChild().NextSibling().IsNamed("x:b"));
  EXPECT_FALSE(root.LastChild().IsNamed("b"));
  EXPECT_TRUE(root.LastChild().FirstChild().IsNamed("b"));
  EXPECT_FALSE(XmlElement().IsNamed("b"));
}

TEST(XmlElement, ReadsOnlyAttributesInNoNamespace) {
  const XmlElement root = XmlElement::Parse("<a x:id='1' x:name='2' name='3' xmlns:x='urn:x'/>");
  EXPECT_FALSE(root.Attribute("id"));
  EXPECT_FALSE(root.Attribute("x:id"));
  EXPECT_EQ(root.Attribute("name"), "3");
}

TEST(XmlElement, SearchesADetachedElementInItsTopmostAncestor) {
  const XmlElement root = XmlElement::Parse("<a><x>1</x><b><x>2</x><c><x>3</x></c></b></a>");
  XmlElement detached = root.Child("b");
  const XmlElement inner = detached.Child("c");
  detached.Remove();
  EXPECT_EQ(inner.Root(), detached);
  EXPECT_EQ(inner.Select("//x").Text(), "2");
  EXPECT_EQ(inner.SelectAll("//x").size(), 2U);
  EXPECT_EQ(inner.Select("/b"), detached);
  EXPECT_EQ(inner.Select("./x").Text(), "3");
  EXPECT_FALSE(detached.Parent());
  EXPECT_EQ(root.SelectAll("//x").size(), 1U);
  EXPECT_EQ(root.Child("x").Root(), root);
}

TEST(XmlElement, SharesTheElementBetweenCopiesOfTheHandle) {
  const XmlElement root = XmlElement::Parse("<a><b/></a>");
  XmlElement copy = root;
  copy.Child("b").SetAttribute("x", "1");
  EXPECT_EQ(root.Child("b").Attribute("x"), "1");
  EXPECT_EQ(copy, root);
  EXPECT_FALSE(XmlElement::Parse("<a/>") == XmlElement::Parse("<a/>"));
}

TEST(XmlElement, FirstTextNodeIsNotTakenFromADescendant) {
  EXPECT_EQ(XmlElement::Parse("<c>a<b>x</b>d</c>").FirstTextNode(), "a");
  EXPECT_EQ(XmlElement::Parse("<c><b>x</b>d</c>").FirstTextNode(), "d");
  EXPECT_EQ(XmlElement::Parse("<c><![CDATA[x]]>d</c>").FirstTextNode(), "x");
  EXPECT_EQ(XmlElement::Parse("<c/>").FirstTextNode(), "");
}

TEST(XmlElement, VisitsTheWholeDocumentInOrder) {
  std::string names;
  for (XmlElement element = XmlElement::Parse("<a><b><c/></b><d/></a>"); element;
       element = element.NextInDocument()) {
    names += element.Name();
  }
  EXPECT_EQ(names, "abcd");
}

TEST(OutsideXmlElement, IsReadAtEachAccessAndReturnedAsTheSameObject) {
  const auto outside = std::make_shared<fakes::OutsideElement>("<a x='1'/>");
  const XmlElement element(outside);
  EXPECT_TRUE(element);
  EXPECT_EQ(element.Outside(), outside);
  EXPECT_EQ(element.Own().Attribute("x"), "1");
  outside->text = "<a x='2'/>";
  EXPECT_EQ(element.Own().Attribute("x"), "2");
  EXPECT_EQ(element.Xml(), "<a x='2'/>");
  outside->text = "<broken";
  EXPECT_FALSE(element.Own());
}

TEST(OutsideXmlElement, IsParsedWithinItsDocument) {
  const auto outside = std::make_shared<fakes::OutsideElement>("<b/>");
  const XmlElement element(outside);
  outside->documentText = "<!-- c --><a>text<x/><?i?><y><b>1</b>\n<b>2</b></y><x>3</x></a>";
  outside->path = {1, 1};
  EXPECT_EQ(element.Own().Text(), "2");
  EXPECT_EQ(element.Own().Root().Name(), "a");
  EXPECT_EQ(element.Own().SelectAll("//x").size(), 2U);
  EXPECT_EQ(element.Xml(), "<b/>");
  outside->path = {};
  EXPECT_EQ(element.Own().Name(), "a");
}

TEST(OutsideXmlElement, IsNotFoundOutsideItsDocument) {
  const auto outside = std::make_shared<fakes::OutsideElement>("<b/>");
  outside->documentText = "<a><b/></a>";
  for (const std::vector<std::size_t>& path :
       {std::vector<std::size_t>{1}, std::vector<std::size_t>{0, 0}, std::vector<std::size_t>{7, 7}}) {
    outside->path = path;
    EXPECT_FALSE(XmlElement(outside).Own());
  }
}

}  // namespace
}  // namespace krnqb
