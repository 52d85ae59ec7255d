#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "krnqb/variant.h"

namespace krnqb {

/// One table set of a plan.
class PlanTable {
 public:
  virtual ~PlanTable() = default;

  /// The table's present content as XML text in UTF-8.
  virtual std::string Serialize() = 0;
};

/// A plan's tables.
class PlanData {
 public:
  virtual ~PlanData() = default;

  /// The table with a 32-digit id; error 9 when the plan has none.
  virtual std::shared_ptr<PlanTable> tables(std::string_view id) = 0;

  /// Loads the changed tables of a "<tables>" document into the plan. A text that is empty or does not parse
  /// changes nothing. What the plan leaves in `document` is not read.
  virtual void Deserialize(std::string& document) = 0;
};

/// The host's plan. Every operation may throw Error, which the component treats as the plan's own failure.
class PlanObject : public Object {
 public:
  /// Opens another plan file in the host; `planFile` is a path in UTF-8.
  virtual bool OpenPlan(std::string_view planFile) = 0;

  virtual std::shared_ptr<PlanData> Data() = 0;
};

}  // namespace krnqb
