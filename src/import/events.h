#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "krnqb/outside_world.h"

namespace krnqb {

/// Raises the component's events to every sink, in the order of the list. What a sink throws reaches the
/// caller.
class Events {
 public:
  /// The list outlives the events; it may change while an event is raised.
  explicit Events(const std::vector<std::shared_ptr<EventSink>>& sinks) noexcept : sinks_(sinks) {}

  void XMLprocessing() const;
  void AfterImport() const;
  /// `percent` is 0 to 100.
  void ProgressBarChange(std::int16_t percent, std::string_view description) const;

 private:
  const std::vector<std::shared_ptr<EventSink>>& sinks_;
};

}  // namespace krnqb
