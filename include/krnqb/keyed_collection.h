#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "krnqb/error.h"

namespace krnqb {

/// Returns the form in which collection keys are compared: each code point is replaced by its one-to-one
/// lower case, without normalisation ("ß" remains distinct from "ss"). `text` is UTF-8; invalid bytes are
/// kept.
std::string FoldedKey(std::string_view text);

/// An ordered collection of values with optional text keys. Items are found by case-insensitive key or by
/// position, counted from 1; iteration follows insertion order. References to items remain valid for the
/// lifetime of the collection.
template <typename Item>
class KeyedCollection {
 public:
  /// Returns the number of items.
  std::size_t Count() const noexcept { return items_.size(); }

  /// Appends an item without a key.
  void Add(Item item) { items_.push_back(std::move(item)); }

  /// Appends an item under a key. Throws Error 457 and leaves the collection unchanged if the key already
  /// exists.
  void Add(Item item, std::string_view key) {
    std::string folded = FoldedKey(key);
    if (positions_.contains(folded)) throw Error(error_number::keyAlreadyPresent);
    items_.push_back(std::move(item));
    positions_.emplace(std::move(folded), items_.size() - 1);
  }

  /// Returns the item with this key, owned by the collection, or null if the key is missing.
  const Item* Find(std::string_view key) const {
    const auto found = positions_.find(FoldedKey(key));
    return found == positions_.end() ? nullptr : &items_[found->second];
  }
  Item* Find(std::string_view key) {
    const auto found = positions_.find(FoldedKey(key));
    return found == positions_.end() ? nullptr : &items_[found->second];
  }

  /// Returns the item with this key; throws Error 5 if the key is missing.
  const Item& At(std::string_view key) const {
    const Item* item = Find(key);
    if (item == nullptr) throw Error(error_number::invalidProcedureCall);
    return *item;
  }
  Item& At(std::string_view key) {
    Item* item = Find(key);
    if (item == nullptr) throw Error(error_number::invalidProcedureCall);
    return *item;
  }

  /// Returns the item at a position from 1 to Count(); throws Error 9 if the position is out of range.
  const Item& AtPosition(std::size_t position) const {
    if (position < 1 || position > items_.size()) throw Error(error_number::subscriptOutOfRange);
    return items_[position - 1];
  }

  /// Returns an iterator to the first item.
  auto begin() const noexcept { return items_.begin(); }
  auto begin() noexcept { return items_.begin(); }
  /// Returns the iterator past the last item.
  auto end() const noexcept { return items_.end(); }
  auto end() noexcept { return items_.end(); }

 private:
  std::deque<Item> items_;
  std::unordered_map<std::string, std::size_t> positions_;
};

}  // namespace krnqb
