#include <gtest/gtest.h>

#include <list>

#include "cli/program/child_process.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ChildProcess;
using tests::ReadText;
using tests::WithoutStamps;
using tests::Workplace;

// Imports into one plan at the same time.
TEST(ConcurrentImports, EachSucceedsOrNamesTheOtherAndThePlanIsWhole) {
  const Workplace place;
  place.Nursery();
  const std::string plan = place / "ald.kpf";
  const std::string oldText = ReadText(plan);
  const auto arguments = place.ImportArguments("ald.kpf", {"--expenses", "--income", "--quiet"});
  ASSERT_EQ(ChildProcess(arguments).Wait(), 0);
  const std::string newText = WithoutStamps(ReadText(plan));
  ASSERT_NE(newText, WithoutStamps(oldText));

  for (int round = 0; round < 3; ++round) {
    tests::WriteText(plan, oldText);
    std::list<ChildProcess> imports;
    for (int number = 0; number < 12; ++number) imports.emplace_back(arguments);
    int succeeded = 0;
    for (ChildProcess& import : imports) {
      const int code = import.Wait();
      const std::string errors = import.Errors();
      if (code == 0) {
        ++succeeded;
        EXPECT_EQ(errors, "");
      } else {
        EXPECT_EQ(code, 1);
        EXPECT_EQ(errors,
                  "krnqb: cannot change the plan " + plan +
                      ": another import or undo is changing it; wait until that has ended and try again\n");
      }
    }
    EXPECT_GE(succeeded, 1);
    EXPECT_EQ(WithoutStamps(ReadText(plan)), newText);
    EXPECT_EQ(ReadText(plan + ".bak").empty(), false);
    EXPECT_FALSE(std::filesystem::exists(plan + ".tmp"));
  }
}

}  // namespace
}  // namespace krnqb::cli
