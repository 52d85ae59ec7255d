#include "events.h"

#include <cstdio>

#include "automation_object.h"
#include "errors.h"

namespace {

// The dispids of the events.
constexpr DISPID xmlProcessing = 1;
constexpr DISPID tableModified = 2;
constexpr DISPID afterImport = 3;
constexpr DISPID progressBarChange = 4;

using Arguments = std::vector<_variant_t>;

_variant_t Ignore(const Arguments&) {
  return {};
}

_variant_t PrintProgress(const Arguments& arguments) {
  const short percent = arguments.at(0);
  std::printf("%3d %% %s\n", percent, Utf8(_bstr_t(arguments.at(1))).c_str());
  return {};
}

}  // namespace

ProgressPrinting::ProgressPrinting(IUnknown* component, const IID& eventsId) {
  const IConnectionPointContainerPtr points(component);
  Check(points->FindConnectionPoint(eventsId, &point_), component);
  const IDispatchPtr sink = AutomationObject::Make({{xmlProcessing, Ignore},
                                                    {tableModified, Ignore},
                                                    {afterImport, Ignore},
                                                    {progressBarChange, PrintProgress}},
                                                   eventsId);
  Check(point_->Advise(sink, &cookie_), component);
}

ProgressPrinting::~ProgressPrinting() {
  point_->Unadvise(cookie_);
}
