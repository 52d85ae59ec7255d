#include "import/amounts/transaction_reading.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <utility>

#include "qbxml/response_element.h"
#include "xml/events.h"

namespace krnqb {
namespace {

// A child element whose text, or whose ListID's text, is a field of its parent.
struct FieldElement {
  std::string_view element;
  TextSpan LineFrame::*first = nullptr;  // the text of the first one; for a reference, its first ListID
  TextSpan LineFrame::*later = nullptr;  // unless that was found, the first ListID in the references after it
  bool LineFrame::*hasReference = nullptr;  // null if the element is not a reference
  NameNumber LineFrame::*name = nullptr;  // the FullName of the first reference, or the first element's text
};
constexpr std::array<FieldElement, 12> fieldElements = {
    {{.element = "Amount", .first = &LineFrame::amount},
     {.element = "Quantity", .first = &LineFrame::quantity},
     {.element = "TxnID", .first = &LineFrame::transactionId},
     {.element = "TxnDate", .first = &LineFrame::transactionDate},
     {"AccountRef", &LineFrame::accountId, &LineFrame::laterAccountId, &LineFrame::hasAccount,
      &LineFrame::accountName},
     {"ItemRef", &LineFrame::itemId, &LineFrame::laterItemId, &LineFrame::hasItem, &LineFrame::itemName},
     {"ItemGroupRef", &LineFrame::itemGroupId, nullptr, &LineFrame::hasItemGroup, &LineFrame::itemGroupName},
     {"CustomerRef", &LineFrame::customerId, &LineFrame::customerId, &LineFrame::hasCustomer,
      &LineFrame::customerName},
     {.element = "TxnLineID", .name = &LineFrame::lineId},
     {.element = "RefNumber", .name = &LineFrame::referenceNumber},
     {.element = "VendorRef", .hasReference = &LineFrame::hasParty, .name = &LineFrame::partyName},
     {.element = "PayeeEntityRef", .hasReference = &LineFrame::hasParty, .name = &LineFrame::partyName}}};
constexpr std::size_t fieldsForBookings = 4;  // the last ones

constexpr std::string_view expenseLine = "ExpenseLineRet";
constexpr std::string_view itemLine = "ItemLineRet";

// The names that mean something in an answer have numbers: first those of the fields, then these.
constexpr int listIdWord = fieldElements.size();
constexpr int fullNameWord = listIdWord + 1;
constexpr int groupLineWord = listIdWord + 2;
constexpr int expenseLineWord = listIdWord + 3;
constexpr int itemLineWord = listIdWord + 4;
constexpr int responseWord = listIdWord + 5;
constexpr int lineWord = listIdWord + 6;
using Words = std::array<std::string_view, lineWord + 1>;

Words WordsOf(const LineSelection& selection) {
  Words words = {};
  const std::size_t count = fieldElements.size() - (selection.forBookings ? 0 : fieldsForBookings);
  std::ranges::transform(std::span(fieldElements).first(count), words.begin(), &FieldElement::element);
  std::ranges::copy(std::array<std::string_view, 7>{"ListID", "FullName", "ItemGroupLineRet", expenseLine,
                                                    itemLine, selection.responseName, selection.lineName},
                    words.begin() + listIdWord);
  return words;
}

constexpr TextSpan emptyText{.place = 1, .size = 0};

struct OpenElement {
  FrameNumber frame = noFrame;
  std::int8_t reference = notReference;  // the number of the field that its ListID is
  bool isFirstReference = false;         // the first child with its name
  bool isResponse = false;               // the parent of the transactions
  bool isItemGroup = false;

  static constexpr std::int8_t notReference = -1;
};

// The text of the elements that are being read. Usually it is one piece of the answer and is not copied.
class CapturedText {
 public:
  explicit CapturedText(AnswerTexts& texts) : texts_(texts) {}

  std::size_t Size() const noexcept { return copied_.empty() ? inAnswer_.size() : copied_.size(); }

  void Add(std::string_view piece) {
    if (copied_.empty() && texts_.Contains(piece)) {
      if (inAnswer_.empty()) {
        inAnswer_ = piece;
        return;
      }
      if (inAnswer_.data() + inAnswer_.size() == piece.data()) {
        inAnswer_ = {inAnswer_.data(), inAnswer_.size() + piece.size()};
        return;
      }
    }
    if (copied_.empty()) copied_ = inAnswer_;
    copied_ += piece;
  }

  // Returns where the text is, and begins the next one.
  TextSpan Take() {
    if (Size() == 0) return emptyText;
    const TextSpan span = copied_.empty() ? texts_.SpanOf(inAnswer_) : texts_.Keep(copied_);
    inAnswer_ = {};
    copied_.clear();
    return span;
  }

 private:
  AnswerTexts& texts_;
  std::string_view inAnswer_;
  std::string copied_;
};

// Collects the fields of elements and the elements that are lines.
class LineHandler final : public XmlEventHandler {
 public:
  LineHandler(TransactionLines& lines, const LineSelection& selection, Observer& observer, const Place& place)
      : selection_(selection),
        words_(WordsOf(selection)),
        observer_(observer),
        place_(place),
        lines_(lines),
        captured_(lines.texts) {
    WantText(false);
  }

  std::span<const std::string_view> Vocabulary() const override { return words_; }

  void StartElement(const XmlEventName& name, const XmlEventAttributes& attributes) override {
    if (open_.size() == 2) KeepStatus(attributes);
    open_.emplace_back();
    if (name.Number() != XmlEventName::notListed) StartListed(name.Number());
  }

  void Text(std::string_view piece) override { captured_.Add(piece); }

  void EndElement() override {
    if (!captures_.empty() && captures_.back().depth == open_.size()) EndCaptures();
    open_.pop_back();
  }

  // Reports the answer's statuses and removes the lines if the response is missing. Call it after the end of
  // the document.
  void Finish() {
    for (const auto& status : statuses_) {
      ReportStatus([&](std::string_view name) { return status.AttributeOf(name); }, observer_, place_);
    }
    if (!responseSeen_) lines_.Clear();
  }

 private:
  // A field of a frame, or a name.
  struct Target {
    TextSpan LineFrame::*field;  // null for a name
    std::int32_t number;
  };

  // A field whose element is still open.
  struct Capture {
    std::size_t depth;
    Target target;
    std::size_t begin;  // in `captured_`; a nested element's text belongs to both fields
    std::size_t end = 0;
  };

  struct Status {
    std::optional<std::string> code;
    std::optional<std::string> severity;
    std::optional<std::string> message;

    const std::optional<std::string>& AttributeOf(std::string_view name) const {
      return name == "statusCode" ? code : name == "statusSeverity" ? severity : message;
    }
  };

  void KeepStatus(const XmlEventAttributes& attributes) {
    std::optional<std::string> code = attributes.Find("statusCode");
    if (!code) return;
    statuses_.push_back(
        {std::move(code), attributes.Find("statusSeverity"), attributes.Find("statusMessage")});
  }

  TextSpan& SpanOf(const Target& target) {
    const auto number = static_cast<std::size_t>(target.number);
    return target.field == nullptr ? lines_.names[number] : lines_.frames[number].*target.field;
  }

  void StartListed(int word) {
    OpenElement& element = open_.back();
    if (!responseSeen_ && word == responseWord) responseSeen_ = element.isResponse = true;
    element.isItemGroup = word == groupLineWord;
    if (open_.size() > 1) BeginField(word, open_[open_.size() - 2], element);
    if (IsLine(word)) KeepLine(word);
    WantText(!captures_.empty());
  }

  // Ends the fields whose element ends. A text is kept once: that of the outermost field contains the
  // others'.
  void EndCaptures() {
    if (captures_.size() == 1 && ended_.empty()) {
      SpanOf(captures_.back().target) = captured_.Take();
      captures_.pop_back();
      return WantText(false);
    }
    while (!captures_.empty() && captures_.back().depth == open_.size()) {
      Capture& capture = captures_.back();
      capture.end = captured_.Size();
      SpanOf(capture.target) = emptyText;  // the field is taken; its text follows
      ended_.push_back(capture);
      captures_.pop_back();
    }
    if (!captures_.empty()) return;
    const TextSpan whole = captured_.Take();
    for (const Capture& capture : ended_) {
      SpanOf(capture.target) = {.place = whole.place + static_cast<std::uint32_t>(capture.begin),
                                .size = static_cast<std::uint32_t>(capture.end - capture.begin)};
    }
    ended_.clear();
    WantText(false);
  }

  void BeginField(int word, OpenElement& around, OpenElement& element) {
    if (around.reference != OpenElement::notReference) {
      const FieldElement& reference = fieldElements[static_cast<std::size_t>(around.reference)];  // NOLINT
      const FrameNumber frame = open_[open_.size() - 3].frame;
      if (word == listIdWord) return BeginListId(frame, around.isFirstReference, reference);
      if (word == fullNameWord && around.isFirstReference) return BeginName(frame, reference.name);
    }
    if (word >= listIdWord) return;
    const FieldElement& fieldElement = fieldElements[static_cast<std::size_t>(word)];  // NOLINT
    const FrameNumber frame = FrameOf(around);
    if (fieldElement.hasReference == nullptr) {
      if (fieldElement.name != nullptr) return BeginName(frame, fieldElement.name);
      return BeginCapture(frame, fieldElement.first);
    }
    bool& hasReference = lines_.frames[static_cast<std::size_t>(frame)].*fieldElement.hasReference;
    element.reference = static_cast<std::int8_t>(word);
    element.isFirstReference = !hasReference;
    hasReference = true;
  }

  void BeginListId(FrameNumber frame, bool inFirstReference, const FieldElement& reference) {
    if (reference.first == nullptr) return;
    if (inFirstReference) return BeginCapture(frame, reference.first);
    const bool found = static_cast<bool>(SpanOf({.field = reference.first, .number = frame}));
    if (reference.later != nullptr && !found) BeginCapture(frame, reference.later);
  }

  // The first of several texts of a field counts.
  void BeginCapture(FrameNumber frame, TextSpan LineFrame::*field) {
    const Target target{.field = field, .number = frame};
    if (!SpanOf(target)) captures_.push_back({open_.size(), target, captured_.Size()});
  }

  void BeginName(FrameNumber frame, NameNumber LineFrame::*name) {
    NameNumber& number = lines_.frames[static_cast<std::size_t>(frame)].*name;
    if (number != noName) return;
    number = static_cast<NameNumber>(lines_.names.size());
    lines_.names.emplace_back();
    captures_.push_back({open_.size(), {.field = nullptr, .number = number}, captured_.Size()});
  }

  bool IsLine(int word) const {
    if (selection_.places == LinePlaces::Anywhere) return word == lineWord;
    if (word != expenseLineWord && word != itemLineWord) return false;
    return IsInTransaction(2) || (IsInTransaction(3) && open_[open_.size() - 2].isItemGroup);
  }

  // Returns whether the element opened last is `depth` levels below the response.
  bool IsInTransaction(std::size_t depth) const {
    return open_.size() > depth && open_[open_.size() - 1 - depth].isResponse;
  }

  void KeepLine(int word) {
    const auto frameAbove = [&](std::size_t levels) {
      return open_.size() > levels ? FrameOf(open_[open_.size() - 1 - levels]) : noFrame;
    };
    const bool insideItemGroup = selection_.places == LinePlaces::DirectChildren && IsInTransaction(3);
    lines_.found.push_back({.own = frameAbove(0),
                            .parent = frameAbove(1),
                            .grandparent = frameAbove(2),
                            .hasOtherName = word == itemLineWord,
                            .insideItemGroup = insideItemGroup});
  }

  FrameNumber FrameOf(OpenElement& element) {
    if (element.frame == noFrame) {
      element.frame = static_cast<FrameNumber>(lines_.frames.size());
      static constexpr LineFrame nothing;
      lines_.frames.push_back(nothing);
    }
    return element.frame;
  }

  const LineSelection& selection_;
  const Words words_;
  Observer& observer_;
  const Place& place_;
  std::vector<OpenElement> open_;
  TransactionLines& lines_;
  bool responseSeen_ = false;
  std::vector<Status> statuses_;
  std::vector<Capture> captures_;
  std::vector<Capture> ended_;  // inside the outermost of `captures_`
  CapturedText captured_;
};

}  // namespace

TransactionLines ReadTransactionLines(Variant answer, const LineSelection& selection, Observer& observer,
                                      const Place& place, TransactionLines used) {
  TransactionLines lines = std::move(used);
  lines.Clear();
  lines.texts.Begin(std::move(answer));
  const std::string* const text = lines.texts.Answer();
  if (text == nullptr) return lines;
  const bool anywhere = selection.places == LinePlaces::Anywhere;
  lines.lineNames = {.one = anywhere ? selection.lineName : expenseLine, .other = itemLine};
  LineHandler handler(lines, selection, observer, place);
  if (const std::optional<XmlFault> fault = ParseXmlEvents(*text, handler)) {
    ReportUnreadable(*fault, observer, place);
    lines.Clear();
    return lines;
  }
  handler.Finish();
  return lines;
}

}  // namespace krnqb
