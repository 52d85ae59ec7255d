#include "company/records/document.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <string>
#include <utility>

#include "company/records/errors.h"
#include "krnqb/error.h"
#include "xml/document_stream.h"

namespace krnqb::company {
namespace {

constexpr int firstErrorStatus = 1000;  // below it an answer is complete

[[noreturn]] void Refuse(const std::string& reason) {
  throw Error(company_error::cannotParse, reason);
}

// Item records are answers to the request for all items or for one kind of item.
bool IsAnswerOf(std::string_view answer, const RecordKind& kind) {
  if (!answer.ends_with("QueryRs")) return false;
  answer.remove_suffix(std::string_view("QueryRs").size());
  return answer == kind.family || answer == kind.element.substr(0, kind.element.size() - 3);
}

bool IsKnownAnswer(std::string_view answer) {
  return std::ranges::any_of(RecordKinds(), [&](const RecordKind& kind) { return IsAnswerOf(answer, kind); });
}

// An answer with an error status has no records even if the company has some, so it must not count as empty.
void CheckStatus(std::string_view answer, const XmlStartTag& tag) {
  const std::string_view status = FindAttribute(tag, "statusCode").value_or("0");
  int number = 0;
  std::from_chars(status.data(), status.data() + status.size(), number);
  if (number < firstErrorStatus) return;
  Refuse(fmt::format("{} has the error status {}: {}", answer, status,
                     FindAttribute(tag, "statusMessage").value_or("")));
}

// Where the innermost open element is in the document.
enum class Level : std::uint8_t { Outside, Response, Messages, Answer, Record };

class DocumentReader final : public XmlStreamHandler {
 public:
  DocumentReader(std::string_view name, const RecordReceiver& receive, const PassedOverReceiver& passOver)
      : name_(name), receive_(receive), passOver_(passOver) {}

  void Read(const ByteSource& document) {
    if (const std::optional<XmlFault> fault = ParseXmlStream(document, *this)) {
      line_ = fault->line;
      Refuse(Located("not well-formed: " + fault->message));
    }
  }

  void StartElement(const XmlStartTag& tag) override {
    if (skipped_ > 0) {
      ++skipped_;
    } else if (level_ == Level::Record) {
      text_.StartElement(tag);
    } else {
      line_ = tag.line;
      AtLine([&] { Enter(tag); });
    }
  }

  void Text(std::string_view piece) override {
    if (level_ == Level::Record) text_.Text(piece);
  }

  void EndElement() override {
    if (skipped_ > 0) {
      --skipped_;
    } else if (level_ != Level::Record) {
      level_ = static_cast<Level>(static_cast<int>(level_) - 1);
    } else {
      text_.EndElement();
      if (!text_.IsInside()) Leave();
    }
  }

 private:
  void Enter(const XmlStartTag& tag) {
    std::string name = QualifiedName(tag.name);
    switch (level_) {
      case Level::Outside:
        if (name != "QBXML") Refuse("not a qbXML response: the root element is " + name);
        level_ = Level::Response;
        break;
      case Level::Response:
        if (name != "QBXMLMsgsRs") Refuse("QBXMLMsgsRs expected, found " + name);
        level_ = Level::Messages;
        break;
      case Level::Messages:
        EnterAnswer(std::move(name), tag);
        break;
      default:
        EnterRecord(name, tag);
    }
  }

  void EnterAnswer(std::string name, const XmlStartTag& tag) {
    answer_ = std::move(name);
    if (answer_ == "HostQueryRs") {
      skipped_ = 1;
      return;
    }
    const bool isKnown = IsKnownAnswer(answer_);
    if (!isKnown && !passOver_)
      Refuse(fmt::format("company files cannot store records of {}", Shown(answer_)));
    if (isKnown) CheckStatus(answer_, tag);
    level_ = Level::Answer;
  }

  void EnterRecord(const std::string& name, const XmlStartTag& tag) {
    const bool isKnown = FindRecordKind(name) != nullptr;
    if (!isKnown && !passOver_) Refuse(fmt::format("company files cannot store {} records", name));
    if (isKnown) {
      text_.StartElement(tag);
      level_ = Level::Record;
    } else {
      passOver_(name);
      skipped_ = 1;
    }
  }

  void Leave() {
    level_ = Level::Answer;
    CompanyRecord record;
    AtLine([&] {
      record = ReadRecord(text_.Root());
      record.text = text_.Take();
      if (!IsAnswerOf(answer_, *record.kind)) {
        Refuse(fmt::format("{} cannot contain {}", Shown(answer_), record.kind->element));
      }
    });
    receive_(std::move(record));
  }

  std::string Located(const std::string& reason) const {
    return fmt::format("{}, line {}: {}", name_, line_, reason);
  }

  // Faults of a record are on the line on which it begins.
  template <typename Reading>
  void AtLine(Reading&& reading) const {
    try {
      std::forward<Reading>(reading)();
    } catch (const Error& error) {
      throw Error(error.Number(), Located(error.Description()));
    }
  }

  std::string name_;
  const RecordReceiver& receive_;
  const PassedOverReceiver& passOver_;
  Level level_ = Level::Outside;
  int skipped_ = 0;  // how many open elements are within one that is skipped, which counts too
  long line_ = 0;    // of the last start tag outside records or of a record
  std::string answer_;
  RecordTextWriter text_;
};

}  // namespace

void ReadDocument(std::string_view documentName, const ByteSource& document, const RecordReceiver& receive,
                  const PassedOverReceiver& passOver) {
  DocumentReader(documentName, receive, passOver).Read(document);
}

}  // namespace krnqb::company
