#include "plan_file/file.h"

#include <fmt/format.h>

#include "files/atomic_file.h"
#include "files/followed_path.h"
#include "krnqb/error.h"
#include "plan_file/layout.h"

namespace krnqb::embedded {

PlanFile::PlanFile(const std::filesystem::path& plan) {
  Read(plan);
}

std::shared_ptr<PlanFile> PlanFile::Open(const std::filesystem::path& plan) {
  return std::shared_ptr<PlanFile>(new PlanFile(plan));
}

void PlanFile::Create(const std::filesystem::path& plan, QBKRNproduct product, PlanStart start) {
  if (ProductText(product).empty() || !PlanStartFromText(PlanStartText(start))) {
    throw Error(error_number::invalidProcedureCall);
  }
  SystemFileOperations operations;
  CreateFile(plan, NewPlanText(product, start), operations);
}

void PlanFile::Read(const std::filesystem::path& plan) {
  std::filesystem::path followed = FollowedPlanPath(plan);
  FileContents contents = ReadFile(followed, "cannot open the plan");
  auto read = std::make_shared<PlanTables>(ReadPlanDocument(contents.bytes, plan));
  path = std::move(followed);
  stamp = contents.stamp;
  tables = std::move(read);
}

std::vector<std::string> PlanFile::TableIds() const {
  std::vector<std::string> ids;
  for (const StoredTable& table : tables->Document().tables) ids.push_back(table.id);
  return ids;
}

bool PlanFile::OpenPlan(std::string_view planFile) {
  Read(std::filesystem::path(planFile));
  return true;
}

std::filesystem::path PlanFile::Save() {
  SystemFileOperations operations;
  return Save(operations);
}

std::filesystem::path PlanFile::Save(FileOperations& operations) {
  if (StampOf(path) != stamp) {
    throw Error(
        error_number::unspecified,
        fmt::format(
            "cannot save {}: another program has changed or moved it since it was opened; the file is "
            "as that program left it, open the plan anew and try again",
            path.string()));
  }
  std::filesystem::path backup = ReplaceFile(path, PlanDocumentText(tables->Document()), operations);
  stamp = StampOf(path).value_or(FileStamp{});
  tables->Saved();
  return backup;
}

}  // namespace krnqb::embedded
