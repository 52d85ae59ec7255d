#include "html/fragment.h"

#include <gtest/gtest.h>

#include "html/elements.h"

namespace krnqb::html {
namespace {

TEST(EscapedText, ShowsEveryCharacterAndObeysNone) {
  struct Case {
    std::string_view text;
    std::string_view markup;
  };
  const Case cases[] = {
      {"", ""},
      {"Rent", "Rent"},
      {"<script>alert(1)</script>", "&lt;script&gt;alert(1)&lt;/script&gt;"},
      {"\" onload=\"x", "&quot; onload=&quot;x"},
      {"O'Brien & Sons", "O&#39;Brien &amp; Sons"},
      {"&lt;", "&amp;lt;"},
      {"M\u00FCller \u2014 \U0001F331", "M\u00FCller \u2014 \U0001F331"},
      {"two\nlines\tand\r\nmore", "two lines and  more"},
      {std::string_view("a\0b", 3), "a\uFFFDb"},
      {"\x1B[31m\x7F", "\uFFFD[31m\uFFFD"},
      {"\u0085\u2028", "\uFFFD\uFFFD"},
      {"\u202Egpj.exe\u202C \u2066x\u2069 \u200F\u200E\u061C",
       "\uFFFDgpj.exe\uFFFD \uFFFDx\uFFFD \uFFFD\uFFFD\uFFFD"},
      {"\xC3", "\uFFFD"},
      {"\xFF<", "\uFFFD&lt;"},
      {"\xC0\xBCscript", "\uFFFDscript"},
      {"\xED\xA0\x80", "\uFFFD"},
      {"\uFFFE\uFDD0", "\uFFFD\uFFFD"},
      {"\uFFFD", "\uFFFD"},
      {"\u05D0\u05D1 \u0627", "\u05D0\u05D1 \u0627"},
  };
  for (const Case& each : cases) EXPECT_EQ(Escaped(each.text), each.markup) << each.text;
}

TEST(Elements, EscapeValuesOfAttributesAndLeaveOutNamelessOnes) {
  EXPECT_EQ(Element("a", {{"href", "#\"><b>"}, {}}, Text("<")).Markup(),
            "<a href=\"#&quot;&gt;&lt;b&gt;\">&lt;</a>");
  EXPECT_EQ(EmptyElement("meta", {{"charset", "utf-8"}}).Markup(), "<meta charset=\"utf-8\">");
}

TEST(Elements, AreWrittenAsBrowsersReadThem) {
  EXPECT_EQ(Name("a<b").Markup(), "<bdi>a&lt;b</bdi>");
  EXPECT_TRUE(Name("").Empty());
  EXPECT_EQ(Heading(3, "Sales").Markup(), "<h3>Sales</h3>");
  EXPECT_EQ(List({Text("a"), Name("b")}).Markup(), "<ul><li>a</li><li><bdi>b</bdi></li></ul>");
  EXPECT_EQ(Facts({{"Plan", Text("x.kpf")}}).Markup(), "<dl><div><dt>Plan</dt><dd>x.kpf</dd></div></dl>");
  EXPECT_EQ(Badge(Mark::Bad, "failed").Markup(), "<span class=\"badge bad\">failed</span>");
  EXPECT_EQ(Details(Text("s"), Text("c")).Markup(), "<details><summary>s</summary>c</details>");
  EXPECT_EQ(Details(Text("s"), Text("c"), "t1").Markup(),
            "<details><summary>s</summary><div id=\"t1\">c</div></details>");
}

}  // namespace
}  // namespace krnqb::html
