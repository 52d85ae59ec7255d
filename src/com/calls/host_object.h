#pragma once

#include "com/values/com_pointer.h"
#include "com/values/variant_value.h"
#include "krnqb/plan_object.h"

namespace krnqb::com {

/// A host object that the component keeps: its plan, called by member name, or whatever the host stored in
/// its slot. Released on the thread that drops the last reference, which is the host's.
class HostObject final : public PlanObject {
 public:
  explicit HostObject(ComPointer<IUnknown> object) noexcept : object_(std::move(object)) {}

  bool OpenPlan(std::string_view planFile) override;
  std::shared_ptr<PlanData> Data() override;

  /// Returns the object as the host passed it.
  VariantValue Value() const;

 private:
  ComPointer<IUnknown> object_;
};

}  // namespace krnqb::com
