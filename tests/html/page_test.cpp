#include "html/page.h"

#include <gtest/gtest.h>

#include <regex>

#include "html/elements.h"
#include "html/style.h"
#include "plan_file/history/digest.h"

namespace krnqb::html {
namespace {

// Returns the bytes of hexadecimal digits in base64.
std::string Base64(const std::string& digits) {
  static constexpr std::string_view alphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  std::uint32_t bits = 0;
  int count = 0;
  const auto take = [&] {
    text += alphabet[(bits >> static_cast<unsigned>(count - 6)) & 0x3FU];
    count -= 6;
  };
  for (const char digit : digits) {
    bits = (bits << 4U) | static_cast<std::uint32_t>(std::stoi(std::string(1, digit), nullptr, 16));
    count += 4;
    if (count >= 6) take();
  }
  if (count > 0) {
    bits <<= static_cast<unsigned>(6 - count);
    count = 6;
    take();
  }
  while (text.size() % 4 != 0) text += '=';
  return text;
}

Page Example() {
  return {.title = "Import of <Nursery>",
          .introduction = Paragraph("Done."),
          .sections = {{"figures", "Figures", Paragraph("One")},
                       {"nothing", "Nothing", {}},
                       {"warnings", "Warnings & more", Paragraph("Two")}},
          .footer = "The end"};
}

TEST(PageText, AdmitsItsOwnStyleSheetAndNothingElse) {
  EXPECT_EQ(StyleDigest(), Base64(plan_file::DigestOf(StyleSheet())));
  const std::string text = PageText(Example());
  std::smatch style;
  ASSERT_TRUE(std::regex_search(text, style, std::regex("<style>([\\s\\S]*)</style>")));
  EXPECT_EQ(style[1].str(), StyleSheet());
  EXPECT_NE(text.find(Escaped("default-src 'none'; style-src 'sha256-" + std::string(StyleDigest()) + "';")),
            std::string::npos);
  EXPECT_LT(text.find("Content-Security-Policy"), text.find("<style>"));
  for (const char* forbidden :
       {"<script", "<link", "src=", "url(", "@import", " style=", "http://", "https://"})
    EXPECT_EQ(text.find(forbidden), std::string::npos) << forbidden;
}

TEST(PageText, HasALanguageATitleAndLandmarks) {
  const std::string text = PageText(Example());
  EXPECT_EQ(text.find("<!DOCTYPE html>\n<html lang=\"en\">\n"), 0U);
  EXPECT_NE(text.find("<title>Import of &lt;Nursery&gt;</title>"), std::string::npos);
  EXPECT_NE(text.find("<h1>Import of &lt;Nursery&gt;</h1>"), std::string::npos);
  EXPECT_NE(text.find("<main>"), std::string::npos);
  EXPECT_NE(text.find("<footer><p>The end</p></footer>"), std::string::npos);
}

TEST(PageText, LinksToSectionsWithContentAndLeavesOutTheOthers) {
  const std::string text = PageText(Example());
  EXPECT_NE(text.find("<nav aria-label=\"Contents\"><ul><li><a href=\"#figures\">Figures</a></li>"
                      "<li><a href=\"#warnings\">Warnings &amp; more</a></li></ul></nav>"),
            std::string::npos);
  EXPECT_NE(text.find("<section id=\"warnings\"><h2>Warnings &amp; more</h2><p>Two</p></section>"),
            std::string::npos);
  EXPECT_EQ(text.find("nothing"), std::string::npos);
}

// The relative luminance and the contrast of colours as WCAG 2 defines them.
double Luminance(const std::string& colour) {
  const auto part = [&](std::size_t at) {
    const double value = std::stoi(colour.substr(at, 2), nullptr, 16) / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(1) + 0.7152 * part(3) + 0.0722 * part(5);
}

double Contrast(const std::string& one, const std::string& other) {
  const auto [low, high] = std::minmax(Luminance(one), Luminance(other));
  return (high + 0.05) / (low + 0.05);
}

TEST(StyleSheet, HasEnoughContrastInEveryPalette) {
  const std::string css(StyleSheet());
  const std::regex palette(":root \\{([^}]*--paper[^}]*)\\}");
  int palettes = 0;
  for (std::sregex_iterator match(css.begin(), css.end(), palette), end; match != end; ++match, ++palettes) {
    const std::string body = (*match)[1];
    const auto colour = [&](const std::string& name) {
      std::smatch value;
      EXPECT_TRUE(std::regex_search(body, value, std::regex("--" + name + ": (#[0-9a-f]{6});"))) << name;
      return value.empty() ? std::string("#000000") : value[1].str();
    };
    for (const char* surface : {"paper", "raised"}) {
      for (const char* letters : {"ink", "pale", "link", "good", "caution", "bad"})
        EXPECT_GE(Contrast(colour(letters), colour(surface)), 4.5)
            << letters << " on " << surface << palettes;
      for (const char* shape : {"c0", "c1", "c2", "c3"})
        EXPECT_GE(Contrast(colour(shape), colour(surface)), 3.0) << shape << " on " << surface << palettes;
    }
  }
  EXPECT_EQ(palettes, 3);
}

}  // namespace
}  // namespace krnqb::html
