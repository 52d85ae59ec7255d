#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "krnqb/variant.h"

namespace krnqb {

/// One table of a plan.
class PlanTable {
 public:
  virtual ~PlanTable() = default;

  /// Returns the table's current content as XML text in UTF-8.
  virtual std::string Serialize() = 0;
};

/// A plan's tables.
class PlanData {
 public:
  virtual ~PlanData() = default;

  /// Returns the table with a 32-digit id; throws Error 9 if the plan has no such table.
  virtual std::shared_ptr<PlanTable> tables(std::string_view id) = 0;

  /// Loads the changed tables of a "<tables>" document into the plan. An empty or malformed text leaves the
  /// plan unchanged. The plan may overwrite `document`; the component does not read it afterwards.
  virtual void Deserialize(std::string& document) = 0;
};

/// The host's plan. Every operation may throw Error; its number and description are reported unchanged.
class PlanObject : public Object {
 public:
  /// Opens another plan file in the host and returns whether it succeeded; `planFile` is a path in UTF-8.
  virtual bool OpenPlan(std::string_view planFile) = 0;

  /// Returns the plan's tables. Null is Error 91 in the operation that needs them.
  virtual std::shared_ptr<PlanData> Data() = 0;
};

}  // namespace krnqb
