#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "import/amounts/transaction_line.h"
#include "krnqb/variant.h"
#include "xml/text_arena.h"

namespace krnqb {

/// Places in the vectors of `TransactionLines`; negative if missing.
using FrameNumber = std::int32_t;
using NameNumber = std::int32_t;
inline constexpr FrameNumber noFrame = -1;
inline constexpr NameNumber noName = -1;

/// The fields of an element that may be a line or contain one. Names are kept apart: few elements have one,
/// and a frame has to be small.
struct LineFrame {
  using Field = TransactionLine::Field;

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

/// A line as the frames that contain its fields.
struct FoundLine {
  std::string_view element;
  FrameNumber own = noFrame;
  FrameNumber parent = noFrame;
  FrameNumber grandparent = noFrame;
  bool insideItemGroup = false;
};

/// The lines of one answer in document order.
struct TransactionLines {
  /// Goes through the lines one by one.
  class Iterator {
   public:
    Iterator(const TransactionLines& lines, std::size_t number) noexcept : lines_(&lines), number_(number) {}

    TransactionLine operator*() const { return (*lines_)[number_]; }
    Iterator& operator++() noexcept {
      ++number_;
      return *this;
    }
    bool operator==(const Iterator&) const noexcept = default;

   private:
    const TransactionLines* lines_;
    std::size_t number_;
  };

  std::unique_ptr<const Variant> answer;  ///< contains the texts to which the lines refer
  std::vector<LineFrame> frames;
  std::vector<TransactionLine::Field> names;
  std::vector<FoundLine> found;
  TextArena texts;  ///< texts that the answer does not contain as they are, such as those with references

  std::size_t Count() const noexcept { return found.size(); }
  /// Returns the line with this number, from 0 to `Count()` - 1. It refers to texts that live as long as the
  /// lines.
  TransactionLine operator[](std::size_t number) const;

  Iterator begin() const noexcept { return {*this, 0}; }
  Iterator end() const noexcept { return {*this, Count()}; }
};

}  // namespace krnqb
