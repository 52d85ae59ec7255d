#include <fmt/format.h>

#include <new>

#include "files/module.h"
#include "krnqb/error.h"
#include "spreadsheet/workbook_writer.h"
#include "spreadsheet/writer_module.h"
#include "support/path_text.h"

namespace krnqb::spreadsheet {
namespace {

constexpr const char* ownVersion = KRNQB_MODULE_VERSION;

Error NotLoadable(const std::string& reason) {
  return {error_number::unspecified,
          fmt::format(
              "workbooks cannot be written: {}; install version {} of the package krnqb, or write CSV files "
              "with --csv",
              reason, ownVersion)};
}

PutTogetherFunction& Load() {
  try {
    const std::filesystem::path module = files::ModulePath(KRNQB_WORKBOOKS_MODULE);
    auto& putTogether =
        *reinterpret_cast<PutTogetherFunction*>(files::FunctionOfModule(module, putTogetherName));
    const std::string_view version = putTogether(ownVersion, nullptr);
    if (version == ownVersion) return putTogether;
    throw Error(error_number::unspecified, fmt::format("{} is of version {}", TextOfPath(module), version));
  } catch (const Error& failure) {
    throw NotLoadable(failure.Description());
  }
}

}  // namespace

WorkbookWriter LoadWorkbookWriter() {
  PutTogetherFunction& putTogether = Load();
  return [&putTogether](const Workbook& workbook, const std::string& file, const std::string& folder) {
    WorkbookTask task{.workbook = workbook, .file = file, .folder = folder};
    putTogether(ownVersion, &task);
    if (task.outOfMemory) throw std::bad_alloc();
    if (!task.failure.empty()) throw Error(error_number::unspecified, task.failure);
  };
}

}  // namespace krnqb::spreadsheet
