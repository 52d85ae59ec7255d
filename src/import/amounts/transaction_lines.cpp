#include "import/amounts/transaction_lines.h"

namespace krnqb {
namespace {

std::string_view NameAt(const TransactionLines& lines, NameNumber number) {
  return number == noName ? std::string_view() : lines.names[static_cast<std::size_t>(number)].value_or("");
}

// The item that a line is taken to sell: its own, or else its group, or else the group around it.
NameNumber ItemName(const LineFrame& own, const LineFrame& parent) {
  if (!own.itemId.value_or("").empty()) return own.itemName;
  if (!own.itemGroupId.value_or("").empty()) return own.itemGroupName;
  return parent.itemGroupName;
}

NameNumber CustomerName(const LineFrame& own, const LineFrame& parent, const LineFrame& grandparent) {
  for (const LineFrame* frame : {&own, &parent, &grandparent}) {
    if (frame->customerId) return frame->customerName;
  }
  return noName;
}

}  // namespace

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
          .accountName = NameAt(*this, own.accountName),
          .itemName = NameAt(*this, ItemName(own, parent)),
          .customerName = NameAt(*this, CustomerName(own, parent, grandparent)),
          .transactionId = transaction.transactionId.value_or(""),
          .transactionDate = transaction.transactionDate.value_or(""),
          .insideItemGroup = line.insideItemGroup,
          .lineId = NameAt(*this, own.lineId),
          .referenceNumber = NameAt(*this, transaction.referenceNumber),
          .partyName = NameAt(*this, party)};
}

}  // namespace krnqb
