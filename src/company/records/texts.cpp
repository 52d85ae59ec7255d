#include "company/records/texts.h"

#include <fmt/format.h>

#include <algorithm>
#include <ranges>
#include <utility>

#include "company/records/ascii.h"
#include "company/records/errors.h"
#include "company/records/kinds.h"
#include "krnqb/error.h"

namespace krnqb::company {
namespace {

// The prefix of names such as xml:lang, which is never declared.
constexpr std::string_view reservedPrefix = "xml";

class SingleRecord final : public XmlStreamHandler {
 public:
  void StartElement(const XmlStartTag& tag) override { writer_.StartElement(tag); }
  void Text(std::string_view piece) override { writer_.Text(piece); }
  void EndElement() override { writer_.EndElement(); }

  RecordText Take() { return writer_.Take(); }

 private:
  RecordTextWriter writer_;
};

void AppendName(std::string& output, const XmlName& name) {
  if (!name.prefix.empty()) output.append(name.prefix) += ':';
  output += name.local;
}

void AppendDeclaration(std::string& output, std::string_view prefix, std::string_view uri) {
  output += " xmlns";
  if (!prefix.empty()) (output += ':') += prefix;
  output += "=\"";
  AppendAsciiAttribute(output, uri);
  output += '"';
}

}  // namespace

void RecordTextWriter::StartElement(const XmlStartTag& tag) {
  DropBlankContent();
  if (isLeaf_) text_.xml += '\n';
  isLeaf_ = true;
  const std::size_t tagBegin = text_.xml.size();
  text_.xml += '<';
  AppendName(text_.xml, tag.name);
  open_.push_back({{tagBegin + 1, text_.xml.size() - tagBegin - 1}, declaredPrefixes_.size()});
  if (open_.size() == 2 && IsTransactionLine(NameOf(open_.back()))) BeginLine(tagBegin);
  WriteMembers(tag);
  text_.xml += '>';
  contentBegin_ = text_.xml.size();
  tree_.Open(open_.back().name, contentBegin_, tag.name.uri.empty());
}

void RecordTextWriter::Text(std::string_view piece) {
  // Written as a character, a carriage return would be read as a line feed.
  if (piece == "\r") {
    text_.xml += "&#13;";
  } else {
    AppendAsciiText(text_.xml, piece);
  }
}

void RecordTextWriter::EndElement() {
  if (!isLeaf_) DropBlankContent();
  const OpenElement element = open_.back();
  open_.pop_back();
  declaredPrefixes_.resize(element.declaredBefore);
  tree_.Close(text_.xml.size());
  if (isLeaf_ && text_.xml.size() == contentBegin_) {
    text_.xml.replace(contentBegin_ - 1, 1, " />\n");
  } else {
    text_.xml.append("</").append(text_.xml, element.name.begin, element.name.length).append(">\n");
  }
  isLeaf_ = false;
  contentBegin_ = text_.xml.size();
  if (open_.size() == 1 && IsTransactionLine(NameOf(element))) text_.linesEnd = text_.xml.size();
}

RecordText RecordTextWriter::Take() {
  if (!refusal_.empty()) throw Error(company_error::cannotParse, refusal_);
  RecordText taken = std::exchange(text_, {});
  text_.xml.reserve(taken.xml.size());  // records of a kind are of similar length
  tree_.Clear();
  inheritedPrefixes_.clear();
  contentBegin_ = 0;
  return taken;
}

std::string_view RecordTextWriter::NameOf(const OpenElement& element) const noexcept {
  return std::string_view(text_.xml).substr(element.name.begin, element.name.length);
}

void RecordTextWriter::BeginLine(std::size_t tagBegin) {
  if (text_.linesEnd == 0) text_.linesBegin = text_.linesEnd = tagBegin;
  if (text_.linesEnd == tagBegin) return;
  Refuse(fmt::format("{} is separated from the other lines", NameOf(open_.back())));
}

void RecordTextWriter::DropBlankContent() {
  const std::string_view content = std::string_view(text_.xml).substr(contentBegin_);
  if (content.find_first_not_of(" \t\n") != std::string_view::npos)
    Refuse(fmt::format("text \"{}\" between elements", content));
  text_.xml.resize(contentBegin_);
}

void RecordTextWriter::WriteMembers(const XmlStartTag& tag) {
  for (const auto& [prefix, uri] : tag.namespaces) {
    AppendDeclaration(text_.xml, prefix, uri);
    declaredPrefixes_.emplace_back(prefix);
  }
  if (open_.size() == 1) declarationsEnd_ = text_.xml.size();
  DeclareInherited(tag.name);
  for (const XmlAttribute& attribute : tag.attributes) DeclareInherited(attribute.name);
  for (const XmlAttribute& attribute : tag.attributes) {
    text_.xml += ' ';
    AppendName(text_.xml, attribute.name);
    text_.xml += "=\"";
    AppendAsciiAttribute(text_.xml, attribute.value);
    text_.xml += '"';
  }
}

void RecordTextWriter::Refuse(std::string reason) {
  if (refusal_.empty()) refusal_ = std::move(reason);
}

// Declares the namespace of a name in the record's own tag unless the record declares it around the name.
void RecordTextWriter::DeclareInherited(const XmlName& name) {
  if (name.uri.empty() || name.prefix == reservedPrefix) return;
  const auto declares = [&](const std::vector<std::string>& prefixes) {
    return std::ranges::find(prefixes, name.prefix) != prefixes.end();
  };
  if (declares(declaredPrefixes_) || declares(inheritedPrefixes_)) return;
  inheritedPrefixes_.emplace_back(name.prefix);
  std::string declaration;
  AppendDeclaration(declaration, name.prefix, name.uri);
  text_.xml.insert(declarationsEnd_, declaration);
  tree_.MakeRoom(declarationsEnd_, declaration.size());
  declarationsEnd_ += declaration.size();
  for (OpenElement& element : open_ | std::views::drop(1)) element.name.begin += declaration.size();
  if (text_.linesEnd == 0) return;
  text_.linesBegin += declaration.size();
  text_.linesEnd += declaration.size();
}

std::optional<XmlFault> WriteRecordText(std::string_view xml, RecordText& text) {
  SingleRecord record;
  std::optional<XmlFault> fault = ParseXmlStream(BytesOf(xml), record);
  if (!fault) text = record.Take();
  return fault;
}

}  // namespace krnqb::company
