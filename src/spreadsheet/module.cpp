#include <new>
#include <string_view>

#include "krnqb/error.h"
#include "spreadsheet/workbook_writer.h"
#include "spreadsheet/writer_module.h"

// The function for which the program loads this library.
extern "C" [[gnu::visibility("default")]] krnqb::spreadsheet::PutTogetherFunction KrnqbPutWorkbookTogether;

const char* KrnqbPutWorkbookTogether(const char* programVersion,
                                     krnqb::spreadsheet::WorkbookTask* task) noexcept {
  constexpr const char* ownVersion = KRNQB_MODULE_VERSION;
  if (task == nullptr || std::string_view(programVersion) != ownVersion) return ownVersion;
  try {
    krnqb::spreadsheet::PutTogether(task->workbook, task->file, task->folder);
  } catch (const krnqb::Error& failure) {
    task->failure = failure.Description();
  } catch (const std::bad_alloc&) {
    task->outOfMemory = true;
  }
  return ownVersion;
}
