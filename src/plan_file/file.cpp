#include "plan_file/file.h"

#include <fmt/format.h>

#include "files/atomic_file.h"
#include "files/followed_path.h"
#include "krnqb/error.h"
#include "plan_file/layout.h"
#include "support/path_text.h"

namespace krnqb::plan_file {

PlanFile::PlanFile(const std::filesystem::path& plan) {
  Read(plan);
}

std::shared_ptr<PlanFile> PlanFile::Open(const std::filesystem::path& plan) {
  return std::shared_ptr<PlanFile>(new PlanFile(plan));
}

void PlanFile::Create(const std::filesystem::path& plan, QBKRNproduct product, YearMonth start) {
  if (ProductText(product).empty() || !PlanStartFromText(PlanStartText(start))) {
    throw Error(error_number::invalidProcedureCall);
  }
  files::SystemFileOperations operations;
  files::CreateFile(plan, NewPlanText(product, start), operations);
}

void PlanFile::Read(const std::filesystem::path& plan) {
  std::filesystem::path followed = files::FollowedPlanPath(plan);
  files::FileContents contents = files::ReadFile(followed, "cannot open the plan");
  auto read = std::make_shared<PlanTables>(ReadPlanDocument(contents.bytes, plan));
  path_ = std::move(followed);
  stamp_ = contents.stamp;
  tables_ = std::move(read);
}

std::vector<std::string> PlanFile::TableIds() const {
  std::vector<std::string> ids;
  for (const StoredTable& table : tables_->Document().tables) ids.push_back(table.id);
  return ids;
}

bool PlanFile::OpenPlan(std::string_view planFile) {
  Read(PathFrom(planFile));
  return true;
}

std::string PlanFile::Text() const {
  return PlanDocumentText(tables_->Document());
}

std::filesystem::path PlanFile::Save() {
  files::SystemFileOperations operations;
  return Save(operations);
}

std::filesystem::path PlanFile::Save(files::FileOperations& operations) {
  return Save(operations, [](std::string_view /*text*/, const auto& replaceFile) { replaceFile(); });
}

std::filesystem::path PlanFile::Save(files::FileOperations& operations, const Replacement& around) {
  if (files::StampOf(path_) != stamp_) {
    throw Error(
        error_number::unspecified,
        fmt::format("cannot save {}: another program has changed or moved it since it was opened; the file "
                    "is not overwritten, open the plan again and retry",
                    TextOfPath(path_)));
  }
  const std::string text = Text();
  std::filesystem::path backup;
  around(text, [&] { backup = files::ReplaceFile(path_, text, operations); });
  stamp_ = files::StampOf(path_).value_or(files::FileStamp{});
  tables_->Saved();
  return backup;
}

}  // namespace krnqb::plan_file
