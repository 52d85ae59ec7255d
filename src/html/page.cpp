#include "html/page.h"

#include <algorithm>
#include <iterator>

#include "html/elements.h"
#include "html/style.h"

namespace krnqb::html {
namespace {

std::string PolicyText() {
  return "default-src 'none'; style-src 'sha256-" + std::string(StyleDigest()) +
         "'; base-uri 'none'; form-action 'none'";
}

std::string HeadText(const Page& page) {
  const Fragment beforeStyle =
      EmptyElement("meta", {{"charset", "utf-8"}}) +
      EmptyElement("meta", {{"http-equiv", "Content-Security-Policy"}, {"content", PolicyText()}}) +
      EmptyElement("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}}) +
      EmptyElement("meta", {{"name", "color-scheme"}, {"content", "light dark"}}) +
      EmptyElement("meta", {{"name", "referrer"}, {"content", "no-referrer"}}) +
      Element("title", Text(page.title));
  std::string text = "<head>\n" + beforeStyle.Markup() + "\n<style>";
  text.append(StyleSheet()).append("</style>\n</head>\n");
  return text;
}

Fragment Contents(const std::vector<Section>& sections) {
  constexpr std::size_t fewest = 2;
  if (sections.size() < fewest) return {};
  std::vector<Fragment> links;
  links.reserve(sections.size());
  for (const Section& section : sections) links.push_back(LinkTo(section.id, Text(section.heading)));
  return Element("nav", {{"aria-label", "Contents"}}, List(links));
}

}  // namespace

std::string PageText(const Page& page) {
  std::vector<Section> sections;
  std::ranges::copy_if(page.sections, std::back_inserter(sections),
                       [](const Section& section) { return !section.content.Empty(); });
  std::string text = "<!DOCTYPE html>\n<html lang=\"en\">\n" + HeadText(page) + "<body>\n";
  text +=
      Element("header", Element("h1", Text(page.title)) + page.introduction + Contents(sections)).Markup();
  text += "\n<main>\n";
  for (const Section& section : sections) {
    text += Element("section", {{"id", section.id}}, Heading(2, section.heading) + section.content).Markup();
    text += '\n';
  }
  text += "</main>\n";
  if (!page.footer.empty()) text += Element("footer", Paragraph(page.footer)).Markup() + '\n';
  return text + "</body>\n</html>\n";
}

}  // namespace krnqb::html
