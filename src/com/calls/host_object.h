#pragma once

#include "com/values/com_pointer.h"
#include "com/values/variant_value.h"
#include "krnqb/plan_object.h"

namespace krnqb::com {

/// An object of the host's that the component keeps: its plan, called by the names of its members, or
/// whatever the host has put into its slot. Released on the thread that drops it, which is the host's.
class HostObject final : public PlanObject {
 public:
  explicit HostObject(ComPointer<IUnknown> hostObject) noexcept : object(std::move(hostObject)) {}

  bool OpenPlan(std::string_view planFile) override;
  std::shared_ptr<PlanData> Data() override;

  /// The object as it was handed in.
  VariantValue Value() const;

 private:
  ComPointer<IUnknown> object;
};

}  // namespace krnqb::com
