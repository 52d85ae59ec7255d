#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace krnqb::reconcile {

/// The lines of transactions, numbered so that the import's and the ledger's view of a line have one number.
/// The lines of a transaction that have no id share a number.
class LineKeys {
 public:
  /// Returns the number of a line, from 0.
  std::uint32_t NumberOf(std::string_view transactionId, std::string_view lineId) {
    scratch_.assign(transactionId).push_back('\n');
    scratch_.append(lineId);
    return numbers_.try_emplace(scratch_, static_cast<std::uint32_t>(numbers_.size())).first->second;
  }

 private:
  std::unordered_map<std::string, std::uint32_t> numbers_;
  std::string scratch_;
};

}  // namespace krnqb::reconcile
