#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "import/amounts/answer_texts.h"
#include "import/amounts/transaction_line.h"

namespace krnqb {

/// Places in the vectors of `TransactionLines`.
using FrameNumber = std::int32_t;
using NameNumber = std::int32_t;
inline constexpr FrameNumber noFrame = -1;
inline constexpr NameNumber noName = 0;

/// The fields of an element that may be a line or contain one. Names are kept apart: few elements have one,
/// and a frame has to be small.
struct LineFrame {
  TextSpan amount;
  TextSpan quantity;
  TextSpan accountId;       // the ListID of the first AccountRef
  TextSpan laterAccountId;  // or else the first one in those after it
  TextSpan itemId;
  TextSpan laterItemId;
  TextSpan itemGroupId;
  TextSpan customerId;
  TextSpan transactionId;
  TextSpan transactionDate;
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

/// The names that lines have in one answer.
struct LineNames {
  std::string_view one;
  std::string_view other;
};

/// A line as the frames that contain its fields.
struct FoundLine {
  FrameNumber own = noFrame;
  FrameNumber parent = noFrame;
  FrameNumber grandparent = noFrame;
  bool hasOtherName = false;
  bool insideItemGroup = false;
};

/// The lines of one answer in document order. They take few bytes, because an answer may have a million.
struct TransactionLines {
  /// Goes through the lines one by one.
  class Iterator {
   public:
    Iterator(const TransactionLines& lines, std::size_t number) noexcept : lines_(&lines), number_(number) {}

    TransactionLine operator*() const {
      lines_->FetchAhead(number_ + linesAhead);
      return (*lines_)[number_];
    }
    Iterator& operator++() noexcept {
      ++number_;
      return *this;
    }
    bool operator==(const Iterator&) const noexcept = default;

   private:
    // By then the memory has come.
    static constexpr std::size_t linesAhead = 8;

    const TransactionLines* lines_;
    std::size_t number_;
  };

  AnswerTexts texts;
  std::vector<LineFrame> frames;
  std::vector<TextSpan> names = {{}};  ///< the first is missing
  std::vector<FoundLine> found;
  LineNames lineNames;

  /// Removes the lines and frees their answer, but keeps the memory for the lines of the next answer.
  void Clear();

  std::size_t Count() const noexcept { return found.size(); }
  /// Returns the line with this number, from 0 to `Count()` - 1. It refers to texts that are valid until the
  /// lines are cleared or moved.
  TransactionLine operator[](std::size_t number) const;

  /// Has the texts of a line loaded that booking reads first, if there is a line with this number. Where the
  /// lines lie in a large answer the processor cannot foresee.
  void FetchAhead(std::size_t number) const noexcept;

  Iterator begin() const noexcept { return {*this, 0}; }
  Iterator end() const noexcept { return {*this, Count()}; }
};

}  // namespace krnqb
