#include "import/amounts/transaction_reading.h"

#include <array>
#include <cstdint>
#include <deque>
#include <span>

#include "qbxml/response_element.h"
#include "xml/events.h"

namespace krnqb {
namespace {

using Field = TransactionLine::Field;
using FrameNumber = std::int32_t;
constexpr FrameNumber noFrame = -1;

// Names are kept apart from the frames: few elements have one, and a frame has to be small.
using NameNumber = std::int32_t;
constexpr NameNumber noName = -1;

// The fields of an element that may be a line or contain one.
struct Frame {
  Field amount;
  Field quantity;
  Field accountId;
  Field anyAccountId;
  Field itemId;
  Field anyItemId;
  Field itemGroupId;
  Field customerId;
  Field transactionId;
  Field transactionDate;
  NameNumber accountName = noName;
  NameNumber itemName = noName;
  NameNumber itemGroupName = noName;
  NameNumber customerName = noName;
  NameNumber lineId = noName;
  NameNumber referenceNumber = noName;
  NameNumber partyName = noName;
  bool hasAccount = false;
  bool hasItem = false;
  bool hasItemGroup = false;
  bool hasCustomer = false;
  bool hasParty = false;
};

// A child element whose text, or whose ListID's text, is a field of its parent.
struct FieldElement {
  std::string_view element;
  Field Frame::*first;        // the text of the first one; for a reference, the ListID of the first one
  Field Frame::*any;          // the first ListID in all references of this name
  bool Frame::*hasReference;  // null if the element is not a reference
  NameNumber Frame::*name = nullptr;  // the FullName of the first reference, or the first element's text
};
constexpr std::array<FieldElement, 12> fieldElements = {
    {{"Amount", &Frame::amount, nullptr, nullptr},
     {"Quantity", &Frame::quantity, nullptr, nullptr},
     {"TxnID", &Frame::transactionId, nullptr, nullptr},
     {"TxnDate", &Frame::transactionDate, nullptr, nullptr},
     {"AccountRef", &Frame::accountId, &Frame::anyAccountId, &Frame::hasAccount, &Frame::accountName},
     {"ItemRef", &Frame::itemId, &Frame::anyItemId, &Frame::hasItem, &Frame::itemName},
     {"ItemGroupRef", &Frame::itemGroupId, nullptr, &Frame::hasItemGroup, &Frame::itemGroupName},
     {"CustomerRef", nullptr, &Frame::customerId, &Frame::hasCustomer, &Frame::customerName},
     {"TxnLineID", nullptr, nullptr, nullptr, &Frame::lineId},
     {"RefNumber", nullptr, nullptr, nullptr, &Frame::referenceNumber},
     {"VendorRef", nullptr, nullptr, &Frame::hasParty, &Frame::partyName},
     {"PayeeEntityRef", nullptr, nullptr, &Frame::hasParty, &Frame::partyName}}};
constexpr std::size_t fieldsForBookings = 4;  // the last ones

// A line and the frames that contain its fields.
struct FoundLine {
  std::string_view element;
  FrameNumber own;
  FrameNumber parent;
  FrameNumber grandparent;
  bool insideItemGroup;
};

struct OpenElement {
  FrameNumber frame = noFrame;
  const FieldElement* reference = nullptr;  // set if its ListID is a field of its parent
  bool isFirstReference = false;            // the first child with its name
  bool isResponse = false;                  // the parent of the transactions
  bool isItemGroup = false;
};

// Collects the fields of elements and the elements that are lines.
class LineHandler final : public XmlEventHandler {
 public:
  LineHandler(const LineSelection& selection, Observer& observer, const Place& place)
      : selection_(selection),
        fields_(std::span(fieldElements)
                    .first(fieldElements.size() - (selection.forBookings ? 0 : fieldsForBookings))),
        observer_(observer),
        place_(place) {}

  void StartElement(std::string_view name, const XmlEventAttributes& attributes) override {
    if (open_.size() == 2) KeepStatus(attributes);
    OpenElement element;
    if (!responseSeen_ && name == selection_.responseName) responseSeen_ = element.isResponse = true;
    element.isItemGroup = name == "ItemGroupLineRet";
    if (!open_.empty()) BeginField(name, element);
    open_.push_back(element);
    if (IsLine(name)) KeepLine(name);
  }

  void Text(std::string_view piece) override {
    if (!captures_.empty()) captured_ += piece;
  }

  void EndElement() override {
    while (!captures_.empty() && captures_.back().depth == open_.size()) {
      Capture& capture = captures_.back();
      capture.end = captured_.size();
      *capture.field = std::string_view();  // the field is taken; its text follows
      ended_.push_back(capture);
      captures_.pop_back();
    }
    if (captures_.empty() && !ended_.empty()) KeepTexts();
    open_.pop_back();
  }

  // Reports the answer's statuses and returns the lines. Call it after the end of the document.
  TransactionLines Lines() && {
    for (const auto& status : statuses_) {
      ReportStatus([&](std::string_view name) { return status.AttributeOf(name); }, observer_, place_);
    }
    if (!responseSeen_) return {};
    lines_.lines.reserve(found_.size());
    for (const FoundLine& line : found_) lines_.lines.push_back(LineOf(line));
    return std::move(lines_);
  }

 private:
  // A field whose element is still open.
  struct Capture {
    std::size_t depth;
    Field* field;
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

  // Keeps the text of the outermost field, which contains the others', once.
  void KeepTexts() {
    const std::string_view kept = lines_.texts.Keep(captured_);
    for (const Capture& capture : ended_) {
      *capture.field = kept.substr(capture.begin, capture.end - capture.begin);
    }
    ended_.clear();
    captured_.clear();
  }

  void BeginField(std::string_view name, OpenElement& element) {
    OpenElement& around = open_.back();
    if (around.reference != nullptr && name == "ListID") {
      const FrameNumber parent = open_[open_.size() - 2].frame;
      if (around.isFirstReference) BeginCapture(parent, around.reference->first);
      BeginCapture(parent, around.reference->any);
      return;
    }
    if (around.reference != nullptr && around.isFirstReference && name == "FullName") {
      return BeginName(open_[open_.size() - 2].frame, around.reference->name);
    }
    for (const FieldElement& fieldElement : fields_) {
      if (fieldElement.element != name) continue;
      const FrameNumber frame = FrameOf(around);
      if (fieldElement.hasReference == nullptr) {
        if (fieldElement.name != nullptr) return BeginName(frame, fieldElement.name);
        return BeginCapture(frame, fieldElement.first);
      }
      bool& hasReference = frames_[static_cast<std::size_t>(frame)].*fieldElement.hasReference;
      element.reference = &fieldElement;
      element.isFirstReference = !hasReference;
      hasReference = true;
      return;
    }
  }

  // The first of several texts of a field counts.
  void BeginCapture(FrameNumber frame, Field Frame::*field) {
    if (field == nullptr) return;
    Field& target = frames_[static_cast<std::size_t>(frame)].*field;
    if (!target) captures_.push_back({open_.size() + 1, &target, captured_.size()});
  }

  void BeginName(FrameNumber frame, NameNumber Frame::*name) {
    NameNumber& number = frames_[static_cast<std::size_t>(frame)].*name;
    if (number != noName) return;
    number = static_cast<NameNumber>(names_.size());
    captures_.push_back({open_.size() + 1, &names_.emplace_back(), captured_.size()});
  }

  bool IsLine(std::string_view name) const {
    if (selection_.places == LinePlaces::Anywhere) return name == selection_.lineName;
    if (name != "ExpenseLineRet" && name != "ItemLineRet") return false;
    return IsInTransaction(2) || (IsInTransaction(3) && open_[open_.size() - 2].isItemGroup);
  }

  // Returns whether the element opened last is `depth` levels below the response.
  bool IsInTransaction(std::size_t depth) const {
    return open_.size() > depth && open_[open_.size() - 1 - depth].isResponse;
  }

  void KeepLine(std::string_view name) {
    const auto frameAbove = [&](std::size_t levels) {
      return open_.size() > levels ? FrameOf(open_[open_.size() - 1 - levels]) : noFrame;
    };
    const bool insideItemGroup = selection_.places == LinePlaces::DirectChildren && IsInTransaction(3);
    found_.push_back({lines_.texts.Keep(name), frameAbove(0), frameAbove(1), frameAbove(2), insideItemGroup});
  }

  FrameNumber FrameOf(OpenElement& element) {
    if (element.frame == noFrame) {
      element.frame = static_cast<FrameNumber>(frames_.size());
      frames_.emplace_back();
    }
    return element.frame;
  }

  // The item that a line is taken to sell: its own, or else its group, or else the group around it.
  std::string_view ItemName(const Frame& own, const Frame& parent) const {
    if (!own.itemId.value_or("").empty()) return Name(own.itemName);
    if (!own.itemGroupId.value_or("").empty()) return Name(own.itemGroupName);
    return Name(parent.itemGroupName);
  }

  std::string_view CustomerName(const Frame& own, const Frame& parent, const Frame& grandparent) const {
    for (const Frame* frame : {&own, &parent, &grandparent}) {
      if (frame->customerId) return Name(frame->customerName);
    }
    return {};
  }

  std::string_view Name(NameNumber number) const {
    return number == noName ? std::string_view() : names_[static_cast<std::size_t>(number)].value_or("");
  }

  TransactionLine LineOf(const FoundLine& line) const {
    static const Frame nothing;
    const auto frameAt = [&](FrameNumber number) -> const Frame& {
      return number == noFrame ? nothing : frames_[static_cast<std::size_t>(number)];
    };
    const Frame& own = frameAt(line.own);
    const Frame& parent = frameAt(line.parent);
    const Frame& grandparent = frameAt(line.grandparent);
    // A line is a child of its transaction or of a group in it.
    const Frame& transaction = parent.transactionId ? parent : grandparent;
    return {.element = line.element,
            .amount = own.amount,
            .quantity = own.quantity,
            .accountId = own.accountId,
            .itemId = own.itemId,
            .anyAccountId = own.anyAccountId,
            .anyItemId = own.anyItemId,
            .itemGroupId = own.itemGroupId,
            .parentItemGroupId = parent.itemGroupId,
            .hasCustomer = own.hasCustomer,
            .customerId = own.customerId,
            .parentCustomerId = parent.customerId,
            .grandparentCustomerId = grandparent.customerId,
            .accountName = Name(own.accountName),
            .itemName = ItemName(own, parent),
            .customerName = CustomerName(own, parent, grandparent),
            .transactionId = transaction.transactionId.value_or(""),
            .transactionDate = transaction.transactionDate.value_or(""),
            .insideItemGroup = line.insideItemGroup,
            .lineId = Name(own.lineId),
            .referenceNumber = Name(transaction.referenceNumber),
            .partyName =
                Name(transaction.partyName != noName ? transaction.partyName : transaction.customerName)};
  }

  const LineSelection& selection_;
  const std::span<const FieldElement> fields_;
  Observer& observer_;
  const Place& place_;
  std::vector<OpenElement> open_;
  // Captures point into these two.
  std::deque<Frame> frames_;
  std::deque<Field> names_;
  std::vector<FoundLine> found_;
  TransactionLines lines_;
  bool responseSeen_ = false;
  std::vector<Status> statuses_;
  std::vector<Capture> captures_;
  std::vector<Capture> ended_;  // inside the outermost of `captures_`
  std::string captured_;
};

}  // namespace

TransactionLines ReadTransactionLines(const Variant& answer, const LineSelection& selection,
                                      Observer& observer, const Place& place) {
  const std::string* text = answer.AsText();
  if (text == nullptr) return {};
  LineHandler handler(selection, observer, place);
  if (const std::optional<XmlFault> fault = ParseXmlEvents(*text, handler)) {
    ReportUnreadable(*fault, observer, place);
    return {};
  }
  return std::move(handler).Lines();
}

}  // namespace krnqb
