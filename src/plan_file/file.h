#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/operations.h"
#include "files/reading.h"
#include "krnqb/plan_object.h"
#include "plan_file/attributes.h"
#include "plan_file/tables.h"

namespace krnqb::plan_file {

/// A plan kept as an XML file (extension .kpf): the element `plan` with the attributes `product` (ald, bri or
/// cor) and `start` (YYYY-MM), its child `tables`, and in it one `tableitem` per table. The file is read
/// once, when it is opened, and not touched again before `Save`.
class PlanFile : public PlanObject {
 public:
  /// Reads a plan; symbolic links are followed. Error when the file is missing, cannot be read, is not
  /// well-formed or is no plan; the description names the file and, where there is one, the line.
  static std::shared_ptr<PlanFile> Open(const std::filesystem::path& plan);

  /// Writes a new plan with the product's tables, laid out as the planning program lays them out. Error 5 for
  /// another product than the three or a start that is no month; Error when there is a file of that name or
  /// none can be written.
  static void Create(const std::filesystem::path& plan, QBKRNproduct product, PlanStart start);

  /// The plan's file, absolute, symbolic links followed.
  const std::filesystem::path& Path() const noexcept { return path_; }
  /// None when the plan does not say.
  std::optional<QBKRNproduct> Product() const { return tables_->Document().product; }
  std::optional<PlanStart> Start() const { return tables_->Document().start; }
  /// The ids in the plan's order.
  std::vector<std::string> TableIds() const;
  /// The table's `tableitem` element in the plan's own document; error 9 when the plan has no such table.
  XmlElement Table(std::string_view id) const { return tables_->Element(id); }

  /// Reads another plan in place of this one, which is dropped without being saved. Errors as `Open`; this
  /// plan stays then. Gives true.
  bool OpenPlan(std::string_view planFile) override;
  /// The tables of the plan that is open now; they outlive the opening of another plan, but are saved no more
  /// then.
  std::shared_ptr<PlanData> Data() override { return tables_; }

  /// Whether tables have been loaded since the plan was opened or last saved.
  bool Changed() const noexcept { return tables_->Changed(); }

  /// Returns why documents were refused that were to be loaded since the plan was opened: for each the line
  /// and what is wrong with its XML.
  const std::vector<std::string>& RefusedLoads() const noexcept { return tables_->RefusedLoads(); }

  /// Writes the plan to its file at once, old or new at every instant, and gives the path of the .bak that
  /// holds the previous version. Error when a step fails or when another program has changed the file since
  /// it was opened: the file is as it was then.
  std::filesystem::path Save();
  /// The same by other steps than the system's.
  std::filesystem::path Save(files::FileOperations& operations);

 private:
  explicit PlanFile(const std::filesystem::path& plan);
  void Read(const std::filesystem::path& plan);

  std::filesystem::path path_;
  files::FileStamp stamp_;
  std::shared_ptr<PlanTables> tables_;
};

}  // namespace krnqb::plan_file
