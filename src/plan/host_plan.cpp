#include "plan/host_plan.h"

#include "krnqb/error.h"

namespace krnqb {
namespace {

template <typename Held>
std::shared_ptr<Held> Required(std::shared_ptr<Held> object) {
  if (object == nullptr) throw Error(error_number::objectNotSet);
  return object;
}

}  // namespace

bool HostPlan::OpenPlan(std::string_view planFile) const {
  return Plan()->OpenPlan(planFile);
}

std::string HostPlan::TableText(std::string_view tableId) const {
  return Required(Data()->tables(tableId))->Serialize();
}

XmlElement HostPlan::ReadPlanTable(std::string_view tableId) const {
  const XmlElement table = XmlElement::Parse(TableText(tableId));
  XmlElement tableBlocks = table.Child("tableblocks");
  if (!tableBlocks) {
    observer_.Notify(Notice{.kind = NoticeKind::TableUnreadable,
                            .meaning = NoticeMeaning::Incomplete,
                            .place = {.operation = Operation::ReadPlanTable},
                            .description = std::string(tableId)});
  }
  return tableBlocks;
}

void HostPlan::Load(std::string tablesText) const {
  const std::shared_ptr<PlanData> data = Data();
  if (tablesText.empty()) {
    observer_.Notify(Notice{.kind = NoticeKind::TablesNotLoaded,
                            .meaning = NoticeMeaning::Incomplete,
                            .place = {.operation = Operation::Deserialize},
                            .description = "the import changed no tables"});
  }
  data->Deserialize(tablesText);
}

std::shared_ptr<PlanObject> HostPlan::Plan() const {
  if (plan_.IsEmpty() || plan_.IsNothing()) throw Error(error_number::objectNotSet);
  auto object = plan_.AsObject<PlanObject>();
  if (object == nullptr) throw Error(error_number::memberNotSupported);
  return object;
}

std::shared_ptr<PlanData> HostPlan::Data() const {
  return Required(Plan()->Data());
}

}  // namespace krnqb
