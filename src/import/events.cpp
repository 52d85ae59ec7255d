#include "import/events.h"

namespace krnqb {
namespace {

using Sinks = std::vector<std::shared_ptr<EventSink>>;

}  // namespace

void Events::XMLprocessing() const {
  Variant nothing{ObjectReference()};
  for (const auto& sink : Sinks(sinks_)) sink->XMLprocessing(nothing);
}

void Events::AfterImport() const {
  for (const auto& sink : Sinks(sinks_)) sink->AfterImport();
}

void Events::ProgressBarChange(std::int16_t percent, std::string_view description) const {
  for (const auto& sink : Sinks(sinks_)) sink->ProgressBarChange(percent, description);
}

}  // namespace krnqb
