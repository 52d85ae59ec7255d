#include "reconcile/line_keys.h"

#include <functional>

namespace krnqb::reconcile {
namespace {

// How many lines of a transaction are looked through one by one; the others are found by hash.
constexpr int nearLines = 16;

}  // namespace

std::uint32_t LineKeys::NumberOf(std::uint32_t transaction, std::string_view lineId) {
  // Both sides go through the lines of a transaction in the same order.
  if (!Is(last_, transaction, lineId)) {
    last_ = Is(last_ + 1, transaction, lineId) ? last_ + 1 : Find(transaction, lineId);
  }
  return last_;
}

bool LineKeys::Is(std::uint32_t number, std::uint32_t transaction, std::string_view lineId) const noexcept {
  return number < lines_.size() && lines_[number].transaction == transaction && lines_[number].id == lineId;
}

std::uint32_t LineKeys::Find(std::uint32_t transaction, std::string_view lineId) {
  if (first_.size() <= transaction) first_.resize(transaction + std::size_t{1}, none);
  std::uint32_t before = none;
  int seen = 0;
  for (std::uint32_t line = first_[transaction]; line != none; line = lines_[line].next, ++seen) {
    if (lines_[line].id == lineId) return line;
    before = line;
  }
  if (seen == nearLines) return FindFar(transaction, lineId);
  const std::uint32_t added = Add(transaction, lineId);
  (before == none ? first_[transaction] : lines_[before].next) = added;
  return added;
}

std::uint32_t LineKeys::FindFar(std::uint32_t transaction, std::string_view lineId) {
  if (const auto found = far_.find({transaction, lineId}); found != far_.end()) return found->second;
  const std::uint32_t added = Add(transaction, lineId);
  far_.emplace(FarLine{transaction, lines_[added].id}, added);
  return added;
}

std::uint32_t LineKeys::Add(std::uint32_t transaction, std::string_view lineId) {
  lines_.push_back({.id = ids_.Keep(lineId), .transaction = transaction});
  return static_cast<std::uint32_t>(lines_.size() - 1);
}

std::size_t LineKeys::FarLineHash::operator()(const FarLine& line) const noexcept {
  return std::hash<std::string_view>()(line.id) * 31 + line.transaction;
}

}  // namespace krnqb::reconcile
