#include "spreadsheet/workbook_writer.h"

namespace krnqb::spreadsheet {

// Everything is linked into the program.
WorkbookWriter LoadWorkbookWriter() {
  return PutTogether;
}

}  // namespace krnqb::spreadsheet
