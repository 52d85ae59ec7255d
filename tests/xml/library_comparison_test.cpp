#include <gtest/gtest.h>
#include <libxml/tree.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "build_paths.h"
#include "krnqb/xml_element.h"
#include "xml/strict_parser.h"

namespace krnqb {
namespace {

struct FreeDocument {
  void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};
struct FreeBuffer {
  void operator()(xmlBuffer* buffer) const noexcept { xmlBufferFree(buffer); }
};

// Returns what the library prints of the document element that it parses; empty if it refuses the text.
std::string PrintedByTheLibrary(const std::string& text) {
  StrictParser parser;
  const std::unique_ptr<xmlDoc, FreeDocument> document(parser.Parse(text, XmlEncoding::Utf8));
  if (document == nullptr) return {};
  if (document->encoding == nullptr) document->encoding = xmlCharStrdup("UTF-8");
  const std::unique_ptr<xmlBuffer, FreeBuffer> buffer(xmlBufferCreate());
  xmlNodeDump(buffer.get(), document.get(), xmlDocGetRootElement(document.get()), 0, 0);
  return reinterpret_cast<const char*>(xmlBufferContent(buffer.get()));
}

std::string PrintedByTheTree(const std::string& text) {
  const XmlElement element = XmlElement::Parse(text);
  return element ? element.Xml() : std::string();
}

void ExpectSame(const std::string& text) {
  EXPECT_EQ(PrintedByTheTree(text), PrintedByTheLibrary(text)) << text.substr(0, 2000);
}

TEST(XmlTree, PrintsWhatTheLibraryPrints) {
  for (const std::string text :
       {"<a/>",
        "<a></a>",
        "<a> </a>",
        "<a><b/>\n<b>x</b>\t<c><d> y </d></c></a>",
        "<a>&lt;&gt;&amp;&quot;&apos;\"'&#13;&#10;&#9;&#xe9;\r\nb\rc</a>",
        "<a b=\"&lt;&gt;&amp;&quot;&apos;'&#13;&#10;&#9;&#xe9;\r\nb\rc\td\ne\" c='\"'/>",
        "<a b=\"&amp;amp;&amp;#38;&amp;\">x</a>",
        "<a><![CDATA[]]></a>",
        "<a><![CDATA[x<&>y]]>z<![CDATA[a]]]]><![CDATA[>b]]></a>",
        "<a>x<![CDATA[y]]><![CDATA[z]]>w&amp;<!-- c --->",
        "<a>x<!-- c --><!----><?p?><?p  q ?><?p ?>y</a>",
        "<!-- before --><?x y?><a>x</a><!-- after -->",
        "<!DOCTYPE a [<!ELEMENT a ANY><!ATTLIST a b CDATA 'default &amp; more' c (d|e) 'd'>]><a>x</a>",
        "<!DOCTYPE a SYSTEM 'none.dtd'><a>&unknown;</a>",
        "<a xmlns='urn:a' xmlns:p='urn:p' p:b='1' b='2'><p:c/><c xmlns=''><d/></c><q:e xmlns:q='urn:q'/></a>",
        "<a xml:space='preserve' xml:lang='en'> <b xml:id='x'/> </a>",
        "<p:a xmlns:p='urn:p'><p:a xmlns:p='urn:q' p:x='1'/></p:a>",
        "<a>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80<\xC3\xA9 \xC3\xA8='\xC3\xA0'/></a>",
        "<a><b>1</b>2<b>3</b></a>",
        "<a>1<b/></a>",
        "<a><b></a>",
        "<p:a/>",
        "",
        "x"}) {
    ExpectSame(text);
  }
}

TEST(XmlTree, PrintsKeptFuzzingInputsAsTheLibraryDoes) {
  const std::filesystem::path corpus =
      std::filesystem::path(tests::SamplesFolder()) / ".." / "tests" / "fuzz" / "corpus";
  std::size_t documents = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(corpus)) {
    if (!entry.is_regular_file()) continue;
    std::ifstream stream(entry.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    // A document may be behind what else an input holds.
    for (std::size_t begin : {std::size_t{0}, bytes.find("<?xml"), bytes.find('<')}) {
      if (begin >= bytes.size()) continue;
      const std::string text = bytes.substr(begin);
      const std::string printed = PrintedByTheLibrary(text);
      if (!printed.empty()) ++documents;
      EXPECT_EQ(PrintedByTheTree(text), printed) << entry.path();
    }
  }
  EXPECT_GT(documents, 100U);
}

}  // namespace
}  // namespace krnqb
