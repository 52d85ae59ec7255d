#include <gtest/gtest.h>

#include <csignal>
#include <functional>

#include "plan_file/history/testing.h"
#include "plan_file/history/versions.h"
#include "plan_file/write_process.h"

namespace krnqb::plan_file {
namespace {

namespace fs = std::filesystem;

// Returns what is wrong with the history of a plan; empty if nothing is.
std::string FaultOf(const fs::path& plan) {
  files::SystemFileOperations operations;
  const HistoryFolder folder(plan, HistoryUse::Reading, operations);
  if (!folder.ForeignNames().empty()) return folder.ForeignNames().front();
  for (const ListedVersion& version : ListVersions(folder, StateNow(plan))) {
    if (!version.fault.empty()) return version.fault;
  }
  return {};
}

// Kills a process at one moment after another, each time with a fresh copy of a plan of three imports.
class KilledWithHistory : public testing::Test {
 protected:
  void KillEverywhere(const std::function<std::vector<std::string>(const std::string& plan)>& arguments,
                      const std::function<void(const fs::path& plan, const std::string& at)>& check) {
    int moment = 1;
    for (;; ++moment) {
      const fs::path folder = copies / std::to_string(moment);
      fs::create_directory(folder);
      fs::copy(plan.folder.Path(), folder, fs::copy_options::recursive);
      const fs::path copy = folder / "garden.kpf";
      std::vector<std::string> words = arguments(copy.string());
      words.push_back(std::to_string(moment));
      WriteProcess child(words);
      const int status = child.Wait();
      if (status == 0) break;
      ASSERT_EQ(status, -SIGKILL) << moment;
      check(copy, "moment " + std::to_string(moment));
    }
    EXPECT_GT(moment, 30);
  }

  const ImportedPlan plan;
  const TemporaryFolder copies;
};

TEST_F(KilledWithHistory, ImportLeavesAWholePlanAndAReadableHistory) {
  int replaced = 0;
  KillEverywhere(
      [](const std::string& file) {
        return std::vector<std::string>{"import", file, "4"};
      },
      [&](const fs::path& file, const std::string& at) {
        const std::optional<int> version = WholeVersion(file);
        ASSERT_TRUE(version == 3 || version == 4) << at;
        if (version == 4) ++replaced;
        EXPECT_TRUE(StateNow(file).asWritten) << at;
        const std::string fault = FaultOf(file);
        // Of a version that is being dropped the description goes last.
        EXPECT_TRUE(fault.empty() || fault.find("0002.kpf: No such file") != std::string::npos)
            << at << fault;
        EXPECT_EQ(Undo(file).restored.number, *version) << at;
        EXPECT_EQ(ReadText(file), plan.texts[*version - 1]) << at;
        ImportVersion(file, 5);
        Undo(file);
        EXPECT_EQ(ReadText(file), plan.texts[*version - 1]) << at;
      });
  EXPECT_GT(replaced, 0);
}

TEST_F(KilledWithHistory, UndoLeavesAWholePlanAndAReadableHistory) {
  int replaced = 0;
  KillEverywhere(
      [](const std::string& file) {
        return std::vector<std::string>{"undo", file};
      },
      [&](const fs::path& file, const std::string& at) {
        const std::optional<int> version = WholeVersion(file);
        ASSERT_TRUE(version == 3 || version == 2) << at;
        if (version == 2) ++replaced;
        EXPECT_TRUE(StateNow(file).asWritten) << at;
        EXPECT_EQ(FaultOf(file), "") << at;
        EXPECT_EQ(ReadText(file), plan.texts[*version]) << at;
        Undo(file);
        EXPECT_EQ(ReadText(file), plan.texts[*version - 1]) << at;
        if (version == 2) {
          Undo(file, 4);
          EXPECT_EQ(ReadText(file), plan.texts[3]) << at;
        }
        const std::int32_t next = StateNow(file).next;
        EXPECT_EQ(ImportVersion(file, 5).number, next) << at;
      });
  EXPECT_GT(replaced, 0);
}

TEST(KilledFirstImport, LeavesAWholePlanAndAReadableHistory) {
  const TemporaryFolder copies;
  int moment = 1;
  for (;; ++moment) {
    const fs::path folder = copies / std::to_string(moment);
    fs::create_directory(folder);
    const fs::path file = folder / "garden.kpf";
    WriteText(file, SmallPlanText());
    WriteProcess child({"import", file.string(), "1", std::to_string(moment)});
    if (child.Wait() == 0) break;
    EXPECT_EQ(FaultOf(file), "") << moment;
    EXPECT_TRUE(ReadText(file) == SmallPlanText() || WholeVersion(file) == 1) << moment;
    ImportVersion(file, 2);
    while (*StateNow(file).plan.import > 0) Undo(file);
    EXPECT_EQ(ReadText(file), SmallPlanText()) << moment;
  }
  EXPECT_GT(moment, 30);
}

}  // namespace
}  // namespace krnqb::plan_file
