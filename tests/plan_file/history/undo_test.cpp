#include "plan_file/history/undo.h"

#include <gtest/gtest.h>

#include "plan_file/history/testing.h"

namespace krnqb::plan_file {
namespace {

namespace fs = std::filesystem;

std::string RefusalOf(const fs::path& plan, std::optional<std::int32_t> version = std::nullopt,
                      bool force = false) {
  const std::string before = ReadText(plan);
  const auto error = ErrorOf([&] { Undo(plan, version, force); });
  EXPECT_EQ(ReadText(plan), before);
  return error ? error->Description() : "";
}

TEST(Undo, GoesOneImportFurtherBackEachTime) {
  const ImportedPlan plan;
  EXPECT_EQ(Undo(plan.file).kept, 4);
  EXPECT_EQ(ReadText(plan.file), plan.texts[2]);
  EXPECT_EQ(Undo(plan.file).kept, 5);
  EXPECT_EQ(ReadText(plan.file), plan.texts[1]);
  EXPECT_EQ(Undo(plan.file).kept, 6);
  EXPECT_EQ(ReadText(plan.file), plan.texts[0]);
  EXPECT_EQ(
      RefusalOf(plan.file),
      "no import is left to undo in " + plan.file.string() +
          ": it is the version before the first one; list the versions with krnqb plan history and give the "
          "number of one");
}

TEST(Undo, IsUndoneByItsNumber) {
  const ImportedPlan plan;
  for (int undos = 0; undos < 3; ++undos) Undo(plan.file);
  EXPECT_EQ(Undo(plan.file, 4).kept, 7);
  EXPECT_EQ(ReadText(plan.file), plan.texts[3]);
  EXPECT_EQ(ReadText(plan.Kept("0007.kpf")), plan.texts[0]);
  // It is the result of the third import again.
  Undo(plan.file);
  EXPECT_EQ(ReadText(plan.file), plan.texts[2]);
}

TEST(Undo, GoesBackOverAnImportAfterAnUndo) {
  const ImportedPlan plan;
  Undo(plan.file);
  Undo(plan.file);
  ImportVersion(plan.file, 9);
  Undo(plan.file);
  EXPECT_EQ(ReadText(plan.file), plan.texts[1]);
  Undo(plan.file);
  EXPECT_EQ(ReadText(plan.file), plan.texts[0]);
}

TEST(Undo, KeepsTheBackupOfTheVersionThatItReplaces) {
  const ImportedPlan plan;
  Undo(plan.file, 1);
  EXPECT_EQ(ReadText(plan.file), plan.texts[0]);
  EXPECT_EQ(ReadText(plan.folder / "garden.kpf.bak"), plan.texts[3]);
}

TEST(Undo, RemovesNothingFromTheHistory) {
  const ImportedPlan plan;
  for (int version = 4; version <= 25; ++version) ImportVersion(plan.file, version);
  for (int undos = 0; undos < 20; ++undos) Undo(plan.file);
  EXPECT_EQ(WholeVersion(plan.file), 5);
  const std::string refusal = RefusalOf(plan.file);
  EXPECT_TRUE(refusal.starts_with("version 5, from before the last import, is no longer kept for "))
      << refusal;
  Undo(plan.file, 1);
  EXPECT_EQ(ReadText(plan.file), plan.texts[0]);
}

TEST(Undo, WritesNothingIfThePlanIsThatVersionAlready) {
  const ImportedPlan plan;
  Undo(plan.file);
  EXPECT_EQ(Undo(plan.file, 3).kept, 0);
  EXPECT_EQ(StateNow(plan.file).next, 5);
}

TEST(Undo, RefusesAPlanThatAnotherProgramHasChanged) {
  const ImportedPlan plan;
  const std::string edited = plan.texts[3] + "<!-- edited -->";
  WriteText(plan.file, edited);
  EXPECT_EQ(
      RefusalOf(plan.file),
      "cannot bring back an earlier version of " + plan.file.string() +
          ": another program has changed it since krnqb last wrote it; add --force to replace it all the "
          "same; the present version is kept as well");
  EXPECT_NE(RefusalOf(plan.file, 1), "");
  EXPECT_EQ(Undo(plan.file, std::nullopt, true).kept, 4);
  EXPECT_EQ(ReadText(plan.file), plan.texts[2]);
  EXPECT_EQ(ReadText(plan.Kept("0004.kpf")), edited);
  Undo(plan.file, 4);
  EXPECT_EQ(ReadText(plan.file), edited);
}

TEST(Undo, ReplacesAPlanThatIsNoLongerOne) {
  const ImportedPlan plan;
  WriteText(plan.file, "torn");
  Undo(plan.file, std::nullopt, true);
  EXPECT_EQ(ReadText(plan.file), plan.texts[2]);
}

TEST(Undo, NamesTheVersionsToChooseFrom) {
  const ImportedPlan plan;
  EXPECT_EQ(RefusalOf(plan.file, 9), "there is no version 9 in the history " + plan.file.string() +
                                         ".history: its versions are 1, 2, 3; choose one of them");
}

TEST(Undo, SaysThatThereIsNoHistory) {
  const TemporaryFolder folder;
  WriteText(folder / "garden.kpf", SmallPlanText());
  const std::string text = "there is no earlier version of " + (folder / "garden.kpf").string() +
                           ": no import has written it yet; import into it first";
  EXPECT_EQ(RefusalOf(folder / "garden.kpf"), text);
  EXPECT_FALSE(fs::exists(folder / "garden.kpf.history"));
}

TEST(Undo, LetsTheNextImportUseTheNumberOfOneThatDidNotHappen) {
  const ImportedPlan plan;
  WriteText(plan.file, plan.texts[2]);
  Undo(plan.file);
  EXPECT_EQ(ReadText(plan.file), plan.texts[1]);
  EXPECT_EQ(ReadText(plan.Kept("0003.kpf")), plan.texts[2]);
  EXPECT_FALSE(fs::exists(plan.Kept("0004.kpf")));
}

}  // namespace
}  // namespace krnqb::plan_file
