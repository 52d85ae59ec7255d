#include <gtest/gtest.h>

#include <string>

#include "faults/failing_memory.h"
#include "krnqb/import_report.h"

// A report that runs out of memory.

namespace krnqb::faults {
namespace {

// A text that needs an allocation.
const std::string longText(100, 'x');

// Returns how many allocations keeping the notice needs. Each of them fails once.
long Disturb(const Notice& notice) {
  for (long number = 1;; ++number) {
    ImportReport report;
    FailingMemory memory(Allocator::New, number);
    report.Notify(notice);
    memory.Stop();
    if (!FailingMemory::Struck()) return number - 1;
    EXPECT_FALSE(report.Complete()) << "allocation " << number;
  }
}

TEST(ReportWithoutMemory, MakesTheImportIncomplete) {
  Notice left{.kind = NoticeKind::AmountSkipped, .meaning = NoticeMeaning::LeftOut};
  left.skipped = Skipped{.account = longText};
  EXPECT_GE(Disturb(left), 3);
  Notice warned{.kind = NoticeKind::Warning};
  warned.finding = Finding{.name = longText};
  EXPECT_GE(Disturb(warned), 3);
  EXPECT_GE(Disturb({.kind = NoticeKind::AccountInSeveralRows, .description = longText}), 3);
}

}  // namespace
}  // namespace krnqb::faults
