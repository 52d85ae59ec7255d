#pragma once

#include <krnqb/plan_object.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A plan held in memory: the XML text of each table, keyed by the table's id.
class MemoryPlan : public krnqb::PlanObject {
 public:
  MemoryPlan();

  void AddTable(std::string_view id, std::string_view xml);
  /// Returns the text of the first cell of each of a block's rows, in order; empty if the table or the block
  /// is missing.
  std::vector<std::string> RowNames(std::string_view tableId, std::string_view block) const;

  /// Always returns false: an in-memory plan has no files to open.
  bool OpenPlan(std::string_view planFile) override;
  std::shared_ptr<krnqb::PlanData> Data() override;

 private:
  class Tables;
  std::shared_ptr<Tables> tables_;
};
