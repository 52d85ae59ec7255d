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

using Field = TransactionLine::Field;

// A child element whose text, or whose ListID's text, is a field of its parent.
struct FieldElement {
  std::string_view element;
  Field LineFrame::*first =
      nullptr;                      // the text of the first one; for a reference, the ListID of the first one
  Field LineFrame::*any = nullptr;  // the first ListID in all references of this name
  bool LineFrame::*hasReference = nullptr;  // null if the element is not a reference
  NameNumber LineFrame::*name = nullptr;  // the FullName of the first reference, or the first element's text
};
constexpr std::array<FieldElement, 12> fieldElements = {
    {{.element = "Amount", .first = &LineFrame::amount},
     {.element = "Quantity", .first = &LineFrame::quantity},
     {.element = "TxnID", .first = &LineFrame::transactionId},
     {.element = "TxnDate", .first = &LineFrame::transactionDate},
     {"AccountRef", &LineFrame::accountId, &LineFrame::anyAccountId, &LineFrame::hasAccount,
      &LineFrame::accountName},
     {"ItemRef", &LineFrame::itemId, &LineFrame::anyItemId, &LineFrame::hasItem, &LineFrame::itemName},
     {"ItemGroupRef", &LineFrame::itemGroupId, nullptr, &LineFrame::hasItemGroup, &LineFrame::itemGroupName},
     {"CustomerRef", nullptr, &LineFrame::customerId, &LineFrame::hasCustomer, &LineFrame::customerName},
     {.element = "TxnLineID", .name = &LineFrame::lineId},
     {.element = "RefNumber", .name = &LineFrame::referenceNumber},
     {.element = "VendorRef", .hasReference = &LineFrame::hasParty, .name = &LineFrame::partyName},
     {.element = "PayeeEntityRef", .hasReference = &LineFrame::hasParty, .name = &LineFrame::partyName}}};
constexpr int fieldsForBookings = 4;  // the last ones

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
  std::ranges::transform(fieldElements, words.begin(), &FieldElement::element);
  std::ranges::copy(
      std::array<std::string_view, 7>{"ListID", "FullName", "ItemGroupLineRet", "ExpenseLineRet",
                                      "ItemLineRet", selection.responseName, selection.lineName},
      words.begin() + listIdWord);
  return words;
}

struct OpenElement {
  FrameNumber frame = noFrame;
  const FieldElement* reference = nullptr;  // set if its ListID is a field of its parent
  bool isFirstReference = false;            // the first child with its name
  bool isResponse = false;                  // the parent of the transactions
  bool isItemGroup = false;
};

// The text of the elements that are being read. Usually it is one piece of the answer and is not copied.
class CapturedText {
 public:
  explicit CapturedText(const std::string& answer) : answer_(answer) {}

  std::size_t Size() const noexcept { return copied_.empty() ? inAnswer_.size() : copied_.size(); }

  void Add(std::string_view piece) {
    if (copied_.empty() && IsInAnswer(piece)) {
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

  // Returns the text, kept in the arena if it is not in the answer, and begins the next one.
  std::string_view Take(TextArena& arena) {
    const std::string_view text = copied_.empty() ? inAnswer_ : arena.Keep(copied_);
    inAnswer_ = {};
    copied_.clear();
    return text;
  }

 private:
  bool IsInAnswer(std::string_view piece) const noexcept {
    const std::less_equal<> before;
    return before(answer_.data(), piece.data()) &&
           before(piece.data() + piece.size(), answer_.data() + answer_.size());
  }

  const std::string& answer_;
  std::string_view inAnswer_;
  std::string copied_;
};

// Collects the fields of elements and the elements that are lines.
class LineHandler final : public XmlEventHandler {
 public:
  LineHandler(const std::string& answer, const LineSelection& selection, Observer& observer,
              const Place& place)
      : selection_(selection),
        words_(WordsOf(selection)),
        fieldCount_(listIdWord - (selection.forBookings ? 0 : fieldsForBookings)),
        observer_(observer),
        place_(place),
        captured_(answer) {
    WantText(false);
  }

  std::span<const std::string_view> Vocabulary() const override { return words_; }

  void StartElement(const XmlEventName& name, const XmlEventAttributes& attributes) override {
    const int word = name.Number();
    if (open_.size() == 2) KeepStatus(attributes);
    OpenElement element;
    if (!responseSeen_ && word == responseWord) responseSeen_ = element.isResponse = true;
    element.isItemGroup = word == groupLineWord;
    if (!open_.empty()) BeginField(word, element);
    open_.push_back(element);
    if (IsLine(word)) KeepLine(word);
    WantText(!captures_.empty());
  }

  void Text(std::string_view piece) override { captured_.Add(piece); }

  void EndElement() override {
    while (!captures_.empty() && captures_.back().depth == open_.size()) {
      Capture& capture = captures_.back();
      capture.end = captured_.Size();
      FieldOf(capture.target) = "";  // the field is taken; its text follows
      ended_.push_back(capture);
      captures_.pop_back();
    }
    if (captures_.empty() && !ended_.empty()) KeepTexts();
    open_.pop_back();
    WantText(!captures_.empty());
  }

  // Reports the answer's statuses and returns the lines. Call it after the end of the document.
  TransactionLines Lines() && {
    for (const auto& status : statuses_) {
      ReportStatus([&](std::string_view name) { return status.AttributeOf(name); }, observer_, place_);
    }
    if (!responseSeen_) return {};
    return std::move(lines_);
  }

 private:
  // A field of a frame, or a name.
  struct Target {
    Field LineFrame::*field;  // null for a name
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

  Field& FieldOf(const Target& target) {
    const auto number = static_cast<std::size_t>(target.number);
    return target.field == nullptr ? lines_.names[number] : lines_.frames[number].*target.field;
  }

  // Keeps the text of the outermost field, which contains the others', once.
  void KeepTexts() {
    const std::string_view kept = captured_.Take(lines_.texts);
    for (const Capture& capture : ended_) {
      FieldOf(capture.target) = kept.substr(capture.begin, capture.end - capture.begin);
    }
    ended_.clear();
  }

  void BeginField(int word, OpenElement& element) {
    OpenElement& around = open_.back();
    if (around.reference != nullptr && word == listIdWord) {
      const FrameNumber parent = open_[open_.size() - 2].frame;
      if (around.isFirstReference) BeginCapture(parent, around.reference->first);
      BeginCapture(parent, around.reference->any);
      return;
    }
    if (around.reference != nullptr && around.isFirstReference && word == fullNameWord) {
      return BeginName(open_[open_.size() - 2].frame, around.reference->name);
    }
    if (word < 0 || word >= fieldCount_) return;
    const FieldElement& fieldElement = fieldElements.at(static_cast<std::size_t>(word));
    const FrameNumber frame = FrameOf(around);
    if (fieldElement.hasReference == nullptr) {
      if (fieldElement.name != nullptr) return BeginName(frame, fieldElement.name);
      return BeginCapture(frame, fieldElement.first);
    }
    bool& hasReference = lines_.frames[static_cast<std::size_t>(frame)].*fieldElement.hasReference;
    element.reference = &fieldElement;
    element.isFirstReference = !hasReference;
    hasReference = true;
  }

  // The first of several texts of a field counts.
  void BeginCapture(FrameNumber frame, Field LineFrame::*field) {
    if (field == nullptr) return;
    const Target target{.field = field, .number = frame};
    if (!FieldOf(target)) captures_.push_back({open_.size() + 1, target, captured_.Size()});
  }

  void BeginName(FrameNumber frame, NameNumber LineFrame::*name) {
    NameNumber& number = lines_.frames[static_cast<std::size_t>(frame)].*name;
    if (number != noName) return;
    number = static_cast<NameNumber>(lines_.names.size());
    lines_.names.emplace_back();
    captures_.push_back({open_.size() + 1, {.field = nullptr, .number = number}, captured_.Size()});
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
    lines_.found.push_back({.element = words_.at(static_cast<std::size_t>(word)),
                            .own = frameAbove(0),
                            .parent = frameAbove(1),
                            .grandparent = frameAbove(2),
                            .insideItemGroup = insideItemGroup});
  }

  FrameNumber FrameOf(OpenElement& element) {
    if (element.frame == noFrame) {
      element.frame = static_cast<FrameNumber>(lines_.frames.size());
      lines_.frames.emplace_back();
    }
    return element.frame;
  }

  const LineSelection& selection_;
  const Words words_;
  const int fieldCount_;
  Observer& observer_;
  const Place& place_;
  std::vector<OpenElement> open_;
  TransactionLines lines_;
  bool responseSeen_ = false;
  std::vector<Status> statuses_;
  std::vector<Capture> captures_;
  std::vector<Capture> ended_;  // inside the outermost of `captures_`
  CapturedText captured_;
};

}  // namespace

TransactionLines ReadTransactionLines(Variant answer, const LineSelection& selection, Observer& observer,
                                      const Place& place) {
  auto kept = std::make_unique<const Variant>(std::move(answer));
  const std::string* text = kept->AsText();
  if (text == nullptr) return {};
  LineHandler handler(*text, selection, observer, place);
  if (const std::optional<XmlFault> fault = ParseXmlEvents(*text, handler)) {
    ReportUnreadable(*fault, observer, place);
    return {};
  }
  TransactionLines lines = std::move(handler).Lines();
  lines.answer = std::move(kept);
  return lines;
}

}  // namespace krnqb
