#include "import/amounts/transaction_lines.h"

namespace krnqb {
namespace {

std::string_view NameAt(const TransactionLines& lines, NameNumber number) {
  return lines.texts.At(lines.names[static_cast<std::size_t>(number)]).value_or("");
}

// The item that a line is taken to sell: its own, or else its group, or else the group around it.
NameNumber ItemName(const LineFrame& own, const LineFrame& parent) {
  if (own.itemId.size > 0) return own.itemName;
  if (own.itemGroupId.size > 0) return own.itemGroupName;
  return parent.itemGroupName;
}

NameNumber CustomerName(const LineFrame& own, const LineFrame& parent, const LineFrame& grandparent) {
  for (const LineFrame* frame : {&own, &parent, &grandparent}) {
    if (frame->customerId) return frame->customerName;
  }
  return noName;
}

}  // namespace

void TransactionLines::Clear() {
  texts.Begin({});
  frames.clear();
  names.resize(1);
  found.clear();
}

void TransactionLines::FetchAhead(std::size_t number) const noexcept {
  if (number >= found.size() || found[number].own == noFrame) return;
  const LineFrame& own = frames[static_cast<std::size_t>(found[number].own)];
  for (const TextSpan text : {own.amount, own.accountId, own.itemId, own.customerId}) texts.FetchAhead(text);
}

TransactionLine TransactionLines::operator[](std::size_t number) const {
  static constexpr LineFrame nothing;
  const auto frameAt = [&](FrameNumber frame) -> const LineFrame& {
    return frame == noFrame ? nothing : frames[static_cast<std::size_t>(frame)];
  };
  const FoundLine& line = found[number];
  const LineFrame& own = frameAt(line.own);
  const LineFrame& parent = frameAt(line.parent);
  const LineFrame& grandparent = frameAt(line.grandparent);
  // A line is a child of its transaction or of a group in it.
  const LineFrame& transaction = parent.transactionId ? parent : grandparent;
  const NameNumber party = transaction.partyName != noName ? transaction.partyName : transaction.customerName;
  return {.element = line.hasOtherName ? lineNames.other : lineNames.one,
          .amount = texts.At(own.amount),
          .quantity = texts.At(own.quantity),
          .accountId = texts.At(own.accountId),
          .itemId = texts.At(own.itemId),
          .anyAccountId = texts.At(own.accountId ? own.accountId : own.laterAccountId),
          .anyItemId = texts.At(own.itemId ? own.itemId : own.laterItemId),
          .itemGroupId = texts.At(own.itemGroupId),
          .parentItemGroupId = texts.At(parent.itemGroupId),
          .hasCustomer = own.hasCustomer,
          .customerId = texts.At(own.customerId),
          .parentCustomerId = texts.At(parent.customerId),
          .grandparentCustomerId = texts.At(grandparent.customerId),
          .accountName = NameAt(*this, own.accountName),
          .itemName = NameAt(*this, ItemName(own, parent)),
          .customerName = NameAt(*this, CustomerName(own, parent, grandparent)),
          .transactionId = texts.At(transaction.transactionId).value_or(""),
          .transactionDate = texts.At(transaction.transactionDate).value_or(""),
          .insideItemGroup = line.insideItemGroup,
          .lineId = NameAt(*this, own.lineId),
          .referenceNumber = NameAt(*this, transaction.referenceNumber),
          .partyName = NameAt(*this, party)};
}

}  // namespace krnqb
