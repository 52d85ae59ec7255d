#include "company/records/texts.h"

#include <fmt/format.h>

#include <string_view>

#include "company/records/ascii.h"
#include "company/records/errors.h"
#include "company/records/kinds.h"
#include "company/records/markup.h"
#include "krnqb/error.h"
#include "xml/parser.h"

namespace krnqb::company {
namespace {

std::string_view NameOf(std::string_view tag) {
  return tag.substr(0, tag.find_first_of(" \t\n"));
}

class RecordTextWriter {
 public:
  void Write(const Markup& markup) {
    switch (markup.kind) {
      case MarkupKind::StartTag:
        StartElement(markup.text);
        break;
      case MarkupKind::EmptyTag:
        EmptyElement(markup.text);
        break;
      case MarkupKind::EndTag:
        EndElement(markup.text);
        break;
      case MarkupKind::Text:
        AppendAscii(content, markup.text, Quotes::Escape);
        break;
      case MarkupKind::PlainText:
        AppendAsciiText(content, markup.text);
        break;
      case MarkupKind::End:
        break;
    }
  }

  RecordText Take() { return std::move(text); }

 private:
  // The start tag stays without its bracket until it is known whether the element is empty.
  void StartElement(std::string_view tag) {
    BeginChild(NameOf(tag));
    text.xml += '<';
    AppendAscii(text.xml, tag, Quotes::Keep);
    startTagOpen = true;
    ++depth;
  }

  void EmptyElement(std::string_view tag) {
    StartElement(tag);
    EndElement(NameOf(tag));
  }

  void EndElement(std::string_view name) {
    if (!startTagOpen) RequireBlankContent();
    if (startTagOpen && content.empty()) {
      text.xml += " />\n";
    } else {
      if (startTagOpen) text.xml.append(">").append(content);
      text.xml.append("</").append(name).append(">\n");
    }
    startTagOpen = false;
    content.clear();
    --depth;
    if (depth == 1 && IsTransactionLine(name)) text.linesEnd = text.xml.size();
  }

  void BeginChild(std::string_view name) {
    RequireBlankContent();
    content.clear();
    if (startTagOpen) text.xml += ">\n";
    startTagOpen = false;
    if (depth == 1 && IsTransactionLine(name)) BeginLine(name);
  }

  void BeginLine(std::string_view name) {
    if (text.linesEnd == 0) text.linesBegin = text.linesEnd = text.xml.size();
    if (text.linesEnd != text.xml.size()) {
      throw Error(company_error::cannotParse, fmt::format("{} stands apart from the other lines", name));
    }
  }

  void RequireBlankContent() const {
    if (content.find_first_not_of(" \t\n") == std::string::npos) return;
    throw Error(company_error::cannotParse, fmt::format("the text \"{}\" stands between elements", content));
  }

  RecordText text;
  std::string content;  // the text since the last tag
  bool startTagOpen = false;
  int depth = 0;
};

}  // namespace

RecordText WriteRecordText(const XmlElement& record) {
  const std::string xml = record.Xml();
  RecordTextWriter writer;
  MarkupReader reader(xml);
  for (Markup markup = reader.Next(); markup.kind != MarkupKind::End; markup = reader.Next())
    writer.Write(markup);
  return writer.Take();
}

}  // namespace krnqb::company
