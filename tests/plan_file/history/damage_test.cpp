#include <gtest/gtest.h>
#include <sys/stat.h>

#include "plan_file/history/testing.h"
#include "plan_file/history/versions.h"

namespace krnqb::plan_file {
namespace {

namespace fs = std::filesystem;

struct Damage {
  const char* name;
  std::function<void(const ImportedPlan& plan)> inflict;
  const char*
      fault;  // of the version 2, after "cannot use version 2 of the history: "; HISTORY is the folder
  bool unknownLast = false;  // whether the last description is unreadable
};

std::ostream& operator<<(std::ostream& output, const Damage& damage) {
  return output << damage.name;
}

std::string InFolder(std::string text, const ImportedPlan& plan) {
  constexpr std::string_view name = "HISTORY";
  for (std::size_t place = 0; (place = text.find(name)) != std::string::npos;) {
    text.replace(place, name.size(), plan.folder / "garden.kpf.history");
  }
  return text;
}

class DamagedHistory : public testing::TestWithParam<Damage> {
 protected:
  DamagedHistory() { GetParam().inflict(plan); }

  const ImportedPlan plan;
};

TEST_P(DamagedHistory, IsNamedAndPreventsNoImport) {
  files::SystemFileOperations operations;
  const HistoryFolder folder(plan.file, HistoryUse::Reading, operations);
  const std::vector<ListedVersion> versions = ListVersions(folder, StateNow(plan.file));
  ASSERT_EQ(versions.size(), 3U);
  EXPECT_EQ(versions[0].fault, "");
  EXPECT_EQ(versions[1].fault,
            InFolder("cannot use version 2 of the history: " + std::string(GetParam().fault), plan));
  EXPECT_EQ(versions[2].fault, "");
  const auto error = ErrorOf([&] { Undo(plan.file, 2); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Description(), versions[1].fault);
  EXPECT_EQ(ReadText(plan.file), plan.texts[3]);

  EXPECT_EQ(ImportVersion(plan.file, 4).number, 4);
  EXPECT_EQ(WholeVersion(plan.file), 4);
  Undo(plan.file);
  EXPECT_EQ(ReadText(plan.file), plan.texts[3]);
  Undo(plan.file, 1);
  EXPECT_EQ(ReadText(plan.file), plan.texts[0]);
}

constexpr const char* noDescription =
    "its description is missing or damaged (HISTORY/0002.json: No such file or directory); if you need the "
    "version, copy HISTORY/0002.kpf over the plan yourself";

INSTANTIATE_TEST_SUITE_P(
    OfAVersion, DamagedHistory,
    testing::Values(
        Damage{"a missing description", [](const ImportedPlan& plan) { fs::remove(plan.Kept("0002.json")); },
               noDescription},
        Damage{"a description that is not JSON",
               [](const ImportedPlan& plan) { WriteText(plan.Kept("0002.json"), "{\"number\": 2"); },
               "its description is missing or damaged (HISTORY/0002.json: it is not a JSON object); if you "
               "need the "
               "version, copy HISTORY/0002.kpf over the plan yourself"},
        Damage{
            "the description of another version",
            [](const ImportedPlan& plan) {
              fs::copy_file(plan.Kept("0001.json"), plan.Kept("0002.json"),
                            fs::copy_options::overwrite_existing);
            },
            "its description is missing or damaged (HISTORY/0002.json: it describes version 1); if you need "
            "the version, copy HISTORY/0002.kpf over the plan yourself"},
        Damage{"a description that is a folder",
               [](const ImportedPlan& plan) {
                 fs::remove(plan.Kept("0002.json"));
                 fs::create_directory(plan.Kept("0002.json"));
               },
               "its description is missing or damaged (HISTORY/0002.json: Is a directory); if you need the "
               "version, copy HISTORY/0002.kpf over the plan yourself"},
        Damage{"a description that is a pipe",
               [](const ImportedPlan& plan) {
                 fs::remove(plan.Kept("0002.json"));
                 ::mkfifo(plan.Kept("0002.json").c_str(), 0600);
               },
               "its description is missing or damaged (HISTORY/0002.json: it is not a regular file); if you "
               "need "
               "the version, copy HISTORY/0002.kpf over the plan yourself"},
        Damage{"a missing version", [](const ImportedPlan& plan) { fs::remove(plan.Kept("0002.kpf")); },
               "HISTORY/0002.kpf: No such file or directory; choose another version"},
        Damage{
            "a version that was changed",
            [](const ImportedPlan& plan) { WriteText(plan.Kept("0002.kpf"), plan.texts[1] + "\n"); },
            "another program has changed HISTORY/0002.kpf; choose another version, or copy the file over the "
            "plan yourself"}),
    [](const testing::TestParamInfo<Damage>& test) { return std::to_string(test.index); });

TEST(DamagedLastEntry, LeavesThePlanUnlessForced) {
  const ImportedPlan plan;
  WriteText(plan.Kept("0003.json"), "");
  const auto error = ErrorOf([&] { Undo(plan.file); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Description(),
            "cannot bring back an earlier version of " + plan.file.string() + ": " +
                plan.Kept("0003.json").string() +
                " is missing or damaged, so it is unknown whether another program has changed the plan; add "
                "--force "
                "and choose a version with --to N; the present version is kept as well");
  const auto forced = ErrorOf([&] { Undo(plan.file, std::nullopt, true); });
  ASSERT_TRUE(forced);
  EXPECT_EQ(
      forced->Description(),
      "the version before the last import is unknown for " + plan.file.string() +
          ": its history is damaged; list the versions with krnqb plan history and give the number of one");
  EXPECT_EQ(Undo(plan.file, 2, true).kept, 4);
  EXPECT_EQ(ReadText(plan.file), plan.texts[1]);
  EXPECT_EQ(ReadText(plan.Kept("0004.kpf")), plan.texts[3]);
}

TEST(DamagedLastEntry, PreventsNoImport) {
  const ImportedPlan plan;
  WriteText(plan.Kept("0003.json"), "[]");
  EXPECT_EQ(ImportVersion(plan.file, 4).number, 4);
  Undo(plan.file);
  EXPECT_EQ(ReadText(plan.file), plan.texts[3]);
  const auto error = ErrorOf([&] { Undo(plan.file); });
  ASSERT_TRUE(error);
  EXPECT_NE(error->Description().find("the version before the last import is unknown"), std::string::npos);
}

TEST(HistoryWithAGap, IsUsedAsFarAsItGoes) {
  const ImportedPlan plan;
  for (const char* name : {"0002.kpf", "0002.json"}) fs::remove(plan.Kept(name));
  Undo(plan.file);
  EXPECT_EQ(ReadText(plan.file), plan.texts[2]);
  const auto error = ErrorOf([&] { Undo(plan.file); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Description(), "version 2, from before the last import, is no longer kept for " +
                                      plan.file.string() +
                                      ": its versions are 1, 3, 4; give the number of one of them");
}

TEST(ForeignFiles, AreLeftAlone) {
  const ImportedPlan plan;
  const std::vector<std::string> names{"1.kpf",        "0001.txt", "00002.kpf", "0000.kpf",
                                       "9999999.json", "notes",    "-1.kpf"};
  for (const std::string& name : names) WriteText(plan.Kept(name), name);
  WriteText(plan.Kept("0004.kpf.tmp"), "left by a killed import");
  files::SystemFileOperations operations;
  const HistoryFolder folder(plan.file, HistoryUse::Reading, operations);
  EXPECT_EQ(folder.Numbers(), (std::vector<std::int32_t>{1, 2, 3}));
  std::vector<std::string> sorted = names;
  std::ranges::sort(sorted);
  EXPECT_EQ(folder.ForeignNames(), sorted);
  ImportVersion(plan.file, 4, 1);
  for (const std::string& name : names) EXPECT_EQ(ReadText(plan.Kept(name)), name);
  EXPECT_FALSE(fs::exists(plan.Kept("0004.kpf.tmp")));
}

struct Unusable {
  const char* name;
  std::function<void(const fs::path& history)> make;
  const char* message;
};

TEST(UnusableHistoryFolder, KeepsThePlanFromBeingWritten) {
  const Unusable cases[] = {
      {"a file", [](const fs::path& history) { WriteText(history, "notes"); },
       ": it is not a folder; the plan is unchanged, move it away and try again"},
      {"a link",
       [](const fs::path& history) { fs::create_directory_symlink(history.parent_path(), history); },
       ": it is a symbolic link; the plan is unchanged, move it away and try again"},
      {"a link to nothing", [](const fs::path& history) { fs::create_symlink("nowhere", history); },
       ": it is a symbolic link; the plan is unchanged, move it away and try again"},
  };
  for (const Unusable& tried : cases) {
    const TemporaryFolder folder;
    const fs::path file = folder / "garden.kpf";
    WriteText(file, SmallPlanText());
    tried.make(folder / "garden.kpf.history");
    const auto error = ErrorOf([&] { ImportVersion(file, 1); });
    ASSERT_TRUE(error) << tried.name;
    EXPECT_EQ(error->Description(),
              "cannot keep the plan's version in " + file.string() + ".history" + tried.message);
    EXPECT_EQ(ReadText(file), SmallPlanText());
    EXPECT_FALSE(fs::exists(folder / "garden.kpf.bak"));
  }
}

TEST(UsedUpNumbers, KeepThePlanFromBeingWritten) {
  const ImportedPlan plan;
  WriteText(plan.Kept("999999.kpf"), "");
  const auto error = ErrorOf([&] { ImportVersion(plan.file, 4); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Description(),
            "cannot keep the plan's version in " + (plan.folder / "garden.kpf.history").string() +
                ": the number 999999 is used already; the plan is unchanged, move it away and try again");
  EXPECT_EQ(ReadText(plan.file), plan.texts[3]);
}

}  // namespace
}  // namespace krnqb::plan_file
