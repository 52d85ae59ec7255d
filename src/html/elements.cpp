#include "html/elements.h"

namespace krnqb::html {
namespace {

std::string_view ClassOf(Mark mark) noexcept {
  switch (mark) {
    case Mark::Good:
      return "good";
    case Mark::Caution:
      return "caution";
    case Mark::Bad:
      return "bad";
    case Mark::Plain:
      break;
  }
  return "plain";
}

std::string Classes(std::string_view kind, Mark mark) {
  return std::string(kind) + ' ' + std::string(ClassOf(mark));
}

}  // namespace

Fragment Name(std::string_view name) {
  return name.empty() ? Fragment() : Element("bdi", Text(name));
}

Fragment Paragraph(const Fragment& content) {
  return Element("p", content);
}

Fragment Paragraph(std::string_view text) {
  return Paragraph(Text(text));
}

Fragment Remark(std::string_view text) {
  return Element("p", {{"class", "remark"}}, Text(text));
}

Fragment Heading(int level, std::string_view text) {
  return Element("h" + std::to_string(level), Text(text));
}

Fragment LinkTo(std::string_view id, const Fragment& content) {
  return Element("a", {{"href", '#' + std::string(id)}}, content);
}

Fragment List(const std::vector<Fragment>& items) {
  Fragment content;
  for (const Fragment& item : items) content += Element("li", item);
  return Element("ul", content);
}

Fragment Facts(const std::vector<Fact>& facts) {
  Fragment content;
  for (const Fact& fact : facts) {
    content += Element("div", Element("dt", Text(fact.name)) + Element("dd", fact.value));
  }
  return Element("dl", content);
}

Fragment Badge(Mark mark, std::string_view word) {
  return Element("span", {{"class", Classes("badge", mark)}}, Text(word));
}

Fragment Box(Mark mark, const Fragment& content) {
  return Element("div", {{"class", Classes("box", mark)}}, content);
}

Fragment Details(const Fragment& summary, const Fragment& content, std::string_view id) {
  // Browsers open what contains the target of a link, not the target itself.
  const Fragment inner = id.empty() ? content : Element("div", {{"id", std::string(id)}}, content);
  return Element("details", Element("summary", summary) + inner);
}

}  // namespace krnqb::html
