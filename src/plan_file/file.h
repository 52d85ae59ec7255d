#pragma once

#include <filesystem>
#include <functional>
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

/// A plan stored in an XML file (extension .kpf): the element `plan` with the attributes `product` (ald, bri
/// or cor) and `start` (YYYY-MM), its child `tables`, and in it one `tableitem` per table. The file is read
/// once, when it is opened, and not accessed again before `Save`.
class PlanFile : public PlanObject {
 public:
  /// Opens a plan; symbolic links are followed. Throws Error if the file is missing, cannot be read, is not
  /// well-formed or is not a plan; the description names the file and, if known, the line.
  static std::shared_ptr<PlanFile> Open(const std::filesystem::path& plan);

  /// Writes a new plan with the product's tables in the planning program's layout. Throws Error 5 if the
  /// product is not one of the three or the start is not a month, and Error if the file exists or cannot be
  /// written.
  static void Create(const std::filesystem::path& plan, QBKRNproduct product, YearMonth start);

  /// Returns the absolute path of the plan's file, with symbolic links resolved.
  const std::filesystem::path& Path() const noexcept { return path_; }
  /// nullopt if the plan does not declare it.
  std::optional<QBKRNproduct> Product() const { return tables_->Document().product; }
  std::optional<YearMonth> Start() const { return tables_->Document().start; }
  /// Returns the table ids in plan order.
  std::vector<std::string> TableIds() const;
  /// Returns the table's `tableitem` element in the plan's own document. Throws Error 9 if the plan has no
  /// such table.
  XmlElement Table(std::string_view id) const { return tables_->Element(id); }

  /// Opens another plan in place of this one, which is discarded without being saved. Returns true. Throws as
  /// `Open` does; this plan then stays open.
  bool OpenPlan(std::string_view planFile) override;
  /// Returns the tables of the open plan. They stay valid after another plan is opened, but are no longer
  /// saved.
  std::shared_ptr<PlanData> Data() override { return tables_; }

  /// Returns whether tables have been loaded since the plan was opened or last saved.
  bool Changed() const noexcept { return tables_->Changed(); }

  /// Returns the documents that were refused while loading since the plan was opened: for each the line and
  /// what is wrong with its XML.
  const std::vector<std::string>& RefusedLoads() const noexcept { return tables_->RefusedLoads(); }

  /// Returns the text that `Save` writes.
  std::string Text() const;

  /// Saves the plan atomically and returns the path of the .bak file with the previous version. Throws Error
  /// if a step fails or another program has changed the file since it was opened; the file is then unchanged.
  std::filesystem::path Save();
  /// Saves with the given file operations.
  std::filesystem::path Save(files::FileOperations& operations);
  /// Saves as part of a larger step: calls `around` with the text of the file and with the function that
  /// replaces the file by it, which `around` has to call once. What `around` throws is passed on.
  using Replacement = std::function<void(std::string_view text, const std::function<void()>& replaceFile)>;
  std::filesystem::path Save(files::FileOperations& operations, const Replacement& around);

 private:
  explicit PlanFile(const std::filesystem::path& plan);
  void Read(const std::filesystem::path& plan);

  std::filesystem::path path_;
  files::FileStamp stamp_;
  std::shared_ptr<PlanTables> tables_;
};

}  // namespace krnqb::plan_file
