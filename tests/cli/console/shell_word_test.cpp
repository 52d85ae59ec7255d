#include "cli/console/shell_word.h"

#include <gtest/gtest.h>

namespace krnqb::cli {
namespace {

TEST(ShellWord, IsQuotedOnlyIfNeeded) {
  EXPECT_EQ(ShellWord("plans/nursery-2003_a.kpf"), "plans/nursery-2003_a.kpf");
  EXPECT_EQ(ShellWord(""), "''");
  EXPECT_EQ(ShellWord("my plan.kpf"), "'my plan.kpf'");
  EXPECT_EQ(ShellWord("a$b*c"), "'a$b*c'");
  EXPECT_EQ(ShellWord("it's"), R"('it'\''s')");
  EXPECT_EQ(ShellWord("~/plan.kpf"), "'~/plan.kpf'");
  EXPECT_EQ(ShellWord("caf\xC3\xA9.kpf"), "'caf\xC3\xA9.kpf'");
}

}  // namespace
}  // namespace krnqb::cli
