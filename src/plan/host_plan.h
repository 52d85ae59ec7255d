#pragma once

#include <string>
#include <string_view>

#include "krnqb/observer.h"
#include "krnqb/plan_object.h"
#include "krnqb/variant.h"

namespace krnqb {

/// The host's plan as `KRNPlanData` holds it. Every operation asks the plan object anew and fails with the
/// plan's own error, with 91 when there is no plan, or with 438 when the stored object is none.
class HostPlan {
 public:
  /// Both outlive the access.
  HostPlan(const Variant& plan, Observer& observer) noexcept : plan_(plan), observer_(observer) {}

  bool OpenPlan(std::string_view planFile) const;

  /// A table's present content as XML text.
  std::string TableText(std::string_view tableId) const;

  /// The "tableblocks" child of a table's root, in a document of its own; none, told to the observer, when
  /// the table's text is no document or has none.
  XmlElement ReadPlanTable(std::string_view tableId) const;

  /// Loads a "<tables>" document into the plan.
  void Load(std::string tablesText) const;

 private:
  std::shared_ptr<PlanObject> Plan() const;
  std::shared_ptr<PlanData> Data() const;

  const Variant& plan_;
  Observer& observer_;
};

}  // namespace krnqb
