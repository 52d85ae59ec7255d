#pragma once

#include <krnqb/plan_object.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A plan that is kept in memory: the XML text of each table under the table's id.
class MemoryPlan : public krnqb::PlanObject {
 public:
  MemoryPlan();

  void AddTable(std::string_view id, std::string_view xml);
  /// The texts of the first cells of a block's rows, in order; empty when there is no such table or block.
  std::vector<std::string> RowNames(std::string_view tableId, std::string_view block) const;

  /// There are no files here to open.
  bool OpenPlan(std::string_view planFile) override;
  std::shared_ptr<krnqb::PlanData> Data() override;

 private:
  class Tables;
  std::shared_ptr<Tables> tables;
};
