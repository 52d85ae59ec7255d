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
        AppendAscii(content_, markup.text, Quotes::Escape);
        break;
      case MarkupKind::PlainText:
        AppendAsciiText(content_, markup.text);
        break;
      case MarkupKind::End:
        break;
    }
  }

  RecordText Take() { return std::move(text_); }

 private:
  // The start tag's bracket is written once it is known whether the element is empty.
  void StartElement(std::string_view tag) {
    BeginChild(NameOf(tag));
    text_.xml += '<';
    AppendAscii(text_.xml, tag, Quotes::Keep);
    startTagOpen_ = true;
    ++depth_;
  }

  void EmptyElement(std::string_view tag) {
    StartElement(tag);
    EndElement(NameOf(tag));
  }

  void EndElement(std::string_view name) {
    if (!startTagOpen_) RequireBlankContent();
    if (startTagOpen_ && content_.empty()) {
      text_.xml += " />\n";
    } else {
      if (startTagOpen_) text_.xml.append(">").append(content_);
      text_.xml.append("</").append(name).append(">\n");
    }
    startTagOpen_ = false;
    content_.clear();
    --depth_;
    if (depth_ == 1 && IsTransactionLine(name)) text_.linesEnd = text_.xml.size();
  }

  void BeginChild(std::string_view name) {
    RequireBlankContent();
    content_.clear();
    if (startTagOpen_) text_.xml += ">\n";
    startTagOpen_ = false;
    if (depth_ == 1 && IsTransactionLine(name)) BeginLine(name);
  }

  void BeginLine(std::string_view name) {
    if (text_.linesEnd == 0) text_.linesBegin = text_.linesEnd = text_.xml.size();
    if (text_.linesEnd != text_.xml.size()) {
      throw Error(company_error::cannotParse, fmt::format("{} is separated from the other lines", name));
    }
  }

  void RequireBlankContent() const {
    if (content_.find_first_not_of(" \t\n") == std::string::npos) return;
    throw Error(company_error::cannotParse, fmt::format("text \"{}\" between elements", content_));
  }

  RecordText text_;
  std::string content_;  // text since the last tag
  bool startTagOpen_ = false;
  int depth_ = 0;
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
