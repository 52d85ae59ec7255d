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
  LineHandler(const LineSelection& lineSelection, Observer& toldObserver, const Place& toldPlace)
      : selection(lineSelection), observer(toldObserver), place(toldPlace) {}

  void StartElement(std::string_view name, const XmlEventAttributes& attributes) override {
    if (open.size() == 2) KeepStatus(attributes);
    OpenElement element;
    if (!responseSeen && name == selection.responseName) responseSeen = element.isResponse = true;
    element.isItemGroup = name == "ItemGroupLineRet";
    if (!open.empty()) BeginField(name, element);
    open.push_back(element);
    if (IsLine(name)) KeepLine(name);
  }

  void Text(std::string_view piece) override {
    if (!captures.empty()) captured += piece;
  }

  void EndElement() override {
    if (!captures.empty() && captures.back().depth == open.size()) {
      const Capture& capture = captures.back();
      frames[capture.frame].*capture.field =
          lines.texts.Keep(std::string_view(captured).substr(capture.begin));
      captures.pop_back();
      if (captures.empty()) captured.clear();
    }
    open.pop_back();
  }

  // The lines with their fields, once everything around them has been read; tells the answer's statuses.
  TransactionLines Lines() && {
    for (const auto& status : statuses) {
      TellStatus([&](std::string_view name) { return status.at(name); }, observer, place);
    }
    if (!responseSeen) return {};
    lines.lines.reserve(found.size());
    for (const FoundLine& line : found) lines.lines.push_back(LineOf(line));
    return std::move(lines);
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
    Status& status = statuses.emplace_back();
    for (const std::string_view name : {"statusCode", "statusSeverity", "statusMessage"}) {
      status.emplace(name, attributes.Find(name));
    }
  }

  void BeginField(std::string_view name, OpenElement& element) {
    OpenElement& around = open.back();
    if (around.reference != nullptr && name == "ListID") {
      // A reference stands inside the element that its ListID is a field of.
      BeginCapture(open[open.size() - 2].frame, around.reference->field);
      return;
    }
    for (const FieldElement& fieldElement : fieldElements) {
      if (fieldElement.name != name) continue;
      const FrameNumber frame = FrameOf(around);
      if (fieldElement.isReference) {
        element.reference = &fieldElement;
        if (fieldElement.field == &Frame::customerId)
          frames[static_cast<std::size_t>(frame)].hasCustomer = true;
      } else {
        BeginCapture(frame, fieldElement.field);
      }
      return;
    }
  }

  // The first of several counts.
  void BeginCapture(FrameNumber frame, Field Frame::*field) {
    const auto index = static_cast<std::size_t>(frame);
    if (!(frames[index].*field)) captures.push_back({open.size() + 1, index, field, captured.size()});
  }

  bool IsLine(std::string_view name) const {
    if (selection.places == LinePlaces::Anywhere) return name == selection.lineName;
    if (name != "ExpenseLineRet" && name != "ItemLineRet") return false;
    return IsInTransaction(2) || (IsInTransaction(3) && open[open.size() - 2].isItemGroup);
  }

  // Whether the element that was opened last stands `depth` levels below the response.
  bool IsInTransaction(std::size_t depth) const {
    return open.size() > depth && open[open.size() - 1 - depth].isResponse;
  }

  void KeepLine(std::string_view name) {
    const auto frameAbove = [&](std::size_t levels) {
      return open.size() > levels ? FrameOf(open[open.size() - 1 - levels]) : noFrame;
    };
    const bool insideItemGroup = selection.places == LinePlaces::DirectChildren && IsInTransaction(3);
    found.push_back({lines.texts.Keep(name), frameAbove(0), frameAbove(1), frameAbove(2), insideItemGroup});
  }

  FrameNumber FrameOf(OpenElement& element) {
    if (element.frame == noFrame) {
      element.frame = static_cast<FrameNumber>(frames.size());
      frames.emplace_back();
    }
    return element.frame;
  }

  TransactionLine LineOf(const FoundLine& line) const {
    static const Frame nothing;
    const auto frameAt = [&](FrameNumber number) -> const Frame& {
      return number == noFrame ? nothing : frames[static_cast<std::size_t>(number)];
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

  const LineSelection& selection;
  Observer& observer;
  const Place& place;
  std::vector<OpenElement> open;
  std::vector<Frame> frames;
  std::vector<FoundLine> found;
  TransactionLines lines;
  bool responseSeen = false;
  std::vector<Status> statuses;
  std::vector<Capture> captures;
  std::string captured;
};

}  // namespace

TransactionLines ReadTransactionLines(const Variant& answer, const LineSelection& selection,
                                      Observer& observer, const Place& place) {
  const std::string* text = answer.AsText();
  if (text == nullptr) return {};
  LineHandler handler(selection, observer, place);
  if (const std::optional<XmlFault> fault = ParseXmlEvents(*text, handler)) {
    TellUnreadable(*fault, observer, place);
    return {};
  }
  return std::move(handler).Lines();
}

}  // namespace krnqb
