#pragma once

#include <string>
#include <string_view>

#include "krnqb/observer.h"
#include "krnqb/plan_object.h"
#include "krnqb/variant.h"

namespace krnqb {

/// The plan that the host set as `KRNPlanData`. Every operation reads the plan object again and throws the
/// plan's own Error, Error 91 if no plan is set, or Error 438 if the object is not a plan.
class HostPlan {
 public:
  /// Plan and observer must outlive this object.
  HostPlan(const Variant& plan, Observer& observer) noexcept : plan_(plan), observer_(observer) {}

  /// Opens another plan file in the host; `planFile` is a path in UTF-8. Returns the plan's answer.
  bool OpenPlan(std::string_view planFile) const;

  /// Returns a table's current content as XML text in UTF-8. Throws Error 9 if the plan has no such table.
  std::string TableText(std::string_view tableId) const;

  /// Returns the "tableblocks" child of a table's root, in a document that the caller may change. Returns an
  /// empty element, and reports it to the observer, if the table's text does not parse or has no such child.
  XmlElement ReadPlanTable(std::string_view tableId) const;

  /// Loads the text of a "<tables>" document into the plan. An empty text leaves the plan unchanged and is
  /// reported to the observer.
  void Load(std::string tablesText) const;

 private:
  std::shared_ptr<PlanObject> Plan() const;
  std::shared_ptr<PlanData> Data() const;

  const Variant& plan_;
  Observer& observer_;
};

}  // namespace krnqb
