#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "xml/text_arena.h"

namespace krnqb::reconcile {

/// The lines of transactions, numbered so that the import's and the ledger's view of a line have one number.
/// The lines of a transaction that have no id share a number.
class LineKeys {
 public:
  /// Returns the number of a line, from 0, in the order in which lines are first asked for. `transaction` is
  /// the number of its transaction in the work table.
  std::uint32_t NumberOf(std::uint32_t transaction, std::string_view lineId);

 private:
  static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

  struct Line {
    std::string_view id;
    std::uint32_t transaction;
    std::uint32_t next = none;  // of the first lines of the same transaction
  };
  // A line after the first ones of its transaction.
  struct FarLine {
    std::uint32_t transaction;
    std::string_view id;
    bool operator==(const FarLine&) const = default;
  };
  struct FarLineHash {
    std::size_t operator()(const FarLine& line) const noexcept;
  };

  bool Is(std::uint32_t number, std::uint32_t transaction, std::string_view lineId) const noexcept;
  std::uint32_t Find(std::uint32_t transaction, std::string_view lineId);
  std::uint32_t FindFar(std::uint32_t transaction, std::string_view lineId);
  std::uint32_t Add(std::uint32_t transaction, std::string_view lineId);

  TextArena ids_;
  std::vector<Line> lines_;           // by number
  std::vector<std::uint32_t> first_;  // line by transaction; or `none`
  std::unordered_map<FarLine, std::uint32_t, FarLineHash> far_;
  std::uint32_t last_ = 0;  // asked for
};

}  // namespace krnqb::reconcile
