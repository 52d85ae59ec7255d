#include "files/module.h"

#include <gtest/gtest.h>

#include "temporary_folder.h"
#include "thrown_error.h"

namespace krnqb::files {
namespace {

using krnqb::tests::TemporaryFolder;
using krnqb::tests::ThrownError;

TEST(Module, HasAPathThatBeginsInTheFolderOfTheProgram) {
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(ModulePath("parts/a.so"), program.parent_path() / "parts/a.so");
  EXPECT_EQ(ModulePath("../lib/a.so"), program.parent_path().parent_path() / "lib/a.so");
}

TEST(Module, ThatCannotBeLoadedIsAnErrorWithTheLoadersReason) {
  const TemporaryFolder folder;
  const std::string missing = folder / "missing.so";
  EXPECT_EQ(ThrownError([&] { FunctionOfModule(missing, "Do"); }).Description(),
            missing + ": cannot open shared object file: No such file or directory");
  const std::string text = folder / "text.so";
  krnqb::tests::WriteText(text, std::string(5000, 'x'));
  EXPECT_EQ(ThrownError([&] { FunctionOfModule(text, "Do"); }).Description(), text + ": invalid ELF header");
}

}  // namespace
}  // namespace krnqb::files
