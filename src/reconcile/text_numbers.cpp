#include "reconcile/text_numbers.h"

#include <functional>

namespace krnqb::reconcile {
namespace {

constexpr std::size_t fewestPlaces = 64;  // a power of 2, as is every later number of places

}  // namespace

std::uint32_t TextNumbers::NumberOf(std::string_view text, std::uint32_t guess) {
  // The lines of a transaction follow one another.
  if (last_ < texts_.size() && texts_[last_].text == text) return last_;
  if (guess < texts_.size() && texts_[guess].text == text) return last_ = guess;
  if (2 * (texts_.size() + 1) > places_.size()) Grow();
  const std::size_t hash = std::hash<std::string_view>()(text);
  std::uint32_t& place = places_[PlaceOf(text, hash)];
  if (place == 0) {
    texts_.push_back({.text = arena_.Keep(text), .hash = hash});
    place = static_cast<std::uint32_t>(texts_.size());
  }
  return last_ = place - 1;
}

std::size_t TextNumbers::PlaceOf(std::string_view text, std::size_t hash) const noexcept {
  std::size_t place = hash & (places_.size() - 1);
  for (; places_[place] != 0; place = (place + 1) & (places_.size() - 1)) {
    const Text& present = texts_[places_[place] - 1];
    if (present.hash == hash && present.text == text) break;
  }
  return place;
}

void TextNumbers::Grow() {
  std::vector<std::uint32_t> places(places_.empty() ? fewestPlaces : 2 * places_.size());
  for (std::size_t number = 0; number < texts_.size(); ++number) {
    std::size_t place = texts_[number].hash & (places.size() - 1);
    while (places[place] != 0) place = (place + 1) & (places.size() - 1);
    places[place] = static_cast<std::uint32_t>(number + 1);
  }
  places_ = std::move(places);
}

}  // namespace krnqb::reconcile
