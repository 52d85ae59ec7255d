#include "import/amounts/transaction_reading.h"

#include <array>
#include <cstdint>
#include <map>

#include "qbxml/response_element.h"
#include "xml/events.h"

namespace krnqb {
namespace {

using Field = TransactionLine::Field;
using FrameNumber = std::int32_t;
constexpr FrameNumber noFrame = -1;

// What is kept of an element that may be a line, or stand above one.
struct Frame {
  Field amount;
  Field quantity;
  Field accountId;
  Field itemId;
  Field itemGroupId;
  bool hasCustomer = false;
  Field customerId;
  Field transactionId;
  Field transactionDate;
};

// A child element whose text, or whose ListID's text, is a field of the element around it.
struct FieldElement {
  std::string_view name;
  Field Frame::*field;
  bool isReference;
};
constexpr std::array<FieldElement, 8> fieldElements = {{{"Amount", &Frame::amount, false},
                                                        {"Quantity", &Frame::quantity, false},
                                                        {"TxnID", &Frame::transactionId, false},
                                                        {"TxnDate", &Frame::transactionDate, false},
                                                        {"AccountRef", &Frame::accountId, true},
                                                        {"ItemRef", &Frame::itemId, true},
                                                        {"ItemGroupRef", &Frame::itemGroupId, true},
                                                        {"CustomerRef", &Frame::customerId, true}}};

// A line by the frames that its fields come from.
struct FoundLine {
  std::string_view element;
  FrameNumber own;
  FrameNumber parent;
  FrameNumber grandparent;
  bool insideItemGroup;
};

struct OpenElement {
  FrameNumber frame = noFrame;
  const FieldElement* reference = nullptr;  // when its ListID is a field of the element around it
  bool isResponse = false;                  // the one whose children are the transactions
  bool isItemGroup = false;
};

// Keeps the first text of each field of each element, and which elements are lines.
class LineHandler final : public XmlEventHandler {
 public:
  LineHandler(const LineSelection& selection, Observer& observer, const Place& place)
      : selection_(selection), observer_(observer), place_(place) {}

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
    if (!captures_.empty() && captures_.back().depth == open_.size()) {
      const Capture& capture = captures_.back();
      frames_[capture.frame].*capture.field =
          lines_.texts.Keep(std::string_view(captured_).substr(capture.begin));
      captures_.pop_back();
      if (captures_.empty()) captured_.clear();
    }
    open_.pop_back();
  }

  // The lines with their fields, once everything around them has been read; tells the answer's statuses.
  TransactionLines Lines() && {
    for (const auto& status : statuses_) {
      ReportStatus([&](std::string_view name) { return status.at(name); }, observer_, place_);
    }
    if (!responseSeen_) return {};
    lines_.lines.reserve(found_.size());
    for (const FoundLine& line : found_) lines_.lines.push_back(LineOf(line));
    return std::move(lines_);
  }

 private:
  // A text of the document whose element is still open.
  struct Capture {
    std::size_t depth;
    std::size_t frame;
    Field Frame::*field;
    std::size_t begin;  // in `captured`: a text inside another is part of both
  };
  using Status = std::map<std::string_view, std::optional<std::string>>;

  void KeepStatus(const XmlEventAttributes& attributes) {
    Status& status = statuses_.emplace_back();
    for (const std::string_view name : {"statusCode", "statusSeverity", "statusMessage"}) {
      status.emplace(name, attributes.Find(name));
    }
  }

  void BeginField(std::string_view name, OpenElement& element) {
    OpenElement& around = open_.back();
    if (around.reference != nullptr && name == "ListID") {
      // A reference stands inside the element that its ListID is a field of.
      BeginCapture(open_[open_.size() - 2].frame, around.reference->field);
      return;
    }
    for (const FieldElement& fieldElement : fieldElements) {
      if (fieldElement.name != name) continue;
      const FrameNumber frame = FrameOf(around);
      if (fieldElement.isReference) {
        element.reference = &fieldElement;
        if (fieldElement.field == &Frame::customerId)
          frames_[static_cast<std::size_t>(frame)].hasCustomer = true;
      } else {
        BeginCapture(frame, fieldElement.field);
      }
      return;
    }
  }

  // The first of several counts.
  void BeginCapture(FrameNumber frame, Field Frame::*field) {
    const auto index = static_cast<std::size_t>(frame);
    if (!(frames_[index].*field)) captures_.push_back({open_.size() + 1, index, field, captured_.size()});
  }

  bool IsLine(std::string_view name) const {
    if (selection_.places == LinePlaces::Anywhere) return name == selection_.lineName;
    if (name != "ExpenseLineRet" && name != "ItemLineRet") return false;
    return IsInTransaction(2) || (IsInTransaction(3) && open_[open_.size() - 2].isItemGroup);
  }

  // Whether the element that was opened last stands `depth` levels below the response.
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

  TransactionLine LineOf(const FoundLine& line) const {
    static const Frame nothing;
    const auto frameAt = [&](FrameNumber number) -> const Frame& {
      return number == noFrame ? nothing : frames_[static_cast<std::size_t>(number)];
    };
    const Frame& own = frameAt(line.own);
    const Frame& parent = frameAt(line.parent);
    const Frame& grandparent = frameAt(line.grandparent);
    // A line stands in its transaction, or in a group in it.
    const Frame& transaction = parent.transactionId ? parent : grandparent;
    return {.element = line.element,
            .amount = own.amount,
            .quantity = own.quantity,
            .accountId = own.accountId,
            .itemId = own.itemId,
            .itemGroupId = own.itemGroupId,
            .parentItemGroupId = parent.itemGroupId,
            .hasCustomer = own.hasCustomer,
            .customerId = own.customerId,
            .parentCustomerId = parent.customerId,
            .grandparentCustomerId = grandparent.customerId,
            .transactionId = transaction.transactionId.value_or(""),
            .transactionDate = transaction.transactionDate.value_or(""),
            .insideItemGroup = line.insideItemGroup};
  }

  const LineSelection& selection_;
  Observer& observer_;
  const Place& place_;
  std::vector<OpenElement> open_;
  std::vector<Frame> frames_;
  std::vector<FoundLine> found_;
  TransactionLines lines_;
  bool responseSeen_ = false;
  std::vector<Status> statuses_;
  std::vector<Capture> captures_;
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
