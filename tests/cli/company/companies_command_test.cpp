#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>

#include "build_paths.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;
using tests::ProgramRun;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;

struct CompaniesCommand : testing::Test {
  CompaniesCommand() {
    fs::create_directory(place / "typed");
    WriteText(place / "typed/b.QBW", "");
    WriteText(place / "typed/a.qbw", "");
    WriteText(place / "typed/notes.txt", "");
  }

  ProgramRun List(const std::vector<std::string>& more) const {
    std::vector<std::string> arguments{"companies"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    Surroundings surroundings;
    surroundings.environment = [this](const std::string& name) -> std::optional<std::string> {
      const auto value = environment.find(name);
      return value == environment.end() ? std::nullopt : std::optional(value->second);
    };
    return RunProgram(arguments, surroundings);
  }

  // Makes a folder that holds one company of that name.
  std::string FolderWith(const std::string& company) const {
    std::string folder = place / ("folder of " + company);
    fs::create_directory(folder);
    WriteText(folder + "/" + company, "");
    return folder;
  }

  void Configure(const std::string& lines) const {
    fs::create_directories(place / ".config/krnqb");
    WriteText(place / ".config/krnqb/config.ini", lines);
  }

  const Workplace place;
  std::map<std::string, std::string> environment{{"HOME", place.Folder().string()}};
};

TEST_F(CompaniesCommand, PrintsOnePathPerLine) {
  const ProgramRun run = List({"--quickbooks-folder", place / "typed"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out, place / "typed/a.qbw" + "\n" + (place / "typed/b.QBW") + "\n");
}

TEST_F(CompaniesCommand, PrintsNothingForAFolderWithoutCompanies) {
  fs::create_directory(place / "empty");
  const ProgramRun run = List({"--quickbooks-folder", place / "empty"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out + run.err, "");
}

TEST_F(CompaniesCommand, PrintsJson) {
  const auto json = nlohmann::json::parse(List({"--quickbooks-folder", place / "typed", "--json"}).out);
  EXPECT_EQ(json["result"], "done");
  ASSERT_EQ(json["companies"].size(), 2U);
  EXPECT_EQ(json["companies"][0]["name"], "a.qbw");
  EXPECT_EQ(json["companies"][0]["path"], place / "typed/a.qbw");
  EXPECT_EQ(json["companies"][1]["name"], "b.QBW");
}

TEST_F(CompaniesCommand, PrefersTheOptionToTheVariableToTheConfiguration) {
  Configure("quickbooks-folder = \"" + FolderWith("configured.qbw") + "\"\n");
  EXPECT_TRUE(List({}).out.ends_with("/configured.qbw\n"));
  environment["KRNQB_QUICKBOOKS_FOLDER"] = FolderWith("variable.qbw");
  EXPECT_TRUE(List({}).out.ends_with("/variable.qbw\n"));
  EXPECT_TRUE(List({"--quickbooks-folder", FolderWith("typed.qbw")}).out.ends_with("/typed.qbw\n"));
  environment["KRNQB_QUICKBOOKS_FOLDER"] = "";
  EXPECT_TRUE(List({}).out.ends_with("/configured.qbw\n")) << "an empty variable counts as unset";
}

TEST_F(CompaniesCommand, IgnoresOtherConfigurationLines) {
  Configure("; of this machine\n[other]\nquickbooks-folder = /nowhere\n");
  EXPECT_EQ(List({}).code, 1) << "the line belongs to another section";
  Configure("# of this machine\nname = x\nquickbooks-folder=\"" + FolderWith("a b.qbw") + "\"\n[other]\n");
  EXPECT_TRUE(List({}).out.ends_with("/a b.qbw\n"));
}

TEST_F(CompaniesCommand, ReportsThatNoFolderIsSet) {
  const ProgramRun run = List({});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err,
            "krnqb: listing companies failed: the folder of the QuickBooks program is unknown; give "
            "--quickbooks-folder DIR, set KRNQB_QUICKBOOKS_FOLDER, or add quickbooks-folder = DIR to "
            "~/.config/krnqb/config.ini\n");
  environment.clear();
  EXPECT_EQ(List({}).err, run.err) << "also without a home directory";
}

TEST_F(CompaniesCommand, ReportsAFolderThatCannotBeRead) {
  const ProgramRun run = List({"--quickbooks-folder", place / "missing"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "krnqb: listing companies failed: the folder " + (place / "missing") +
                         " cannot be read; check the path and its permissions\n");
}

TEST_F(CompaniesCommand, ListsTheOtherFilesIfSomeCannotBeListed) {
  WriteText(place / "typed/c]]>.qbw", "");
  WriteText(place / "typed/d\xE9.qbw", "");
  const ProgramRun run = List({"--quickbooks-folder", place / "typed"});
  EXPECT_EQ(run.code, 3);
  EXPECT_EQ(run.out, place / "typed/a.qbw" + "\n" + (place / "typed/b.QBW") + "\n");
  EXPECT_EQ(run.err.find("krnqb: warning: " + (place / "typed/c]]>.qbw") +
                         " is not listed: its path contains \"]]>\"; rename the file\n"
                         "krnqb: warning: " +
                         (place / "typed/d\xE9.qbw") +
                         " is not listed: its path contains bytes that are not text: "),
            0U)
      << run.err;
  const auto json = nlohmann::json::parse(List({"--quickbooks-folder", place / "typed", "--json"}).out);
  EXPECT_EQ(json["result"], "incomplete");
  EXPECT_EQ(json["companies"].size(), 2U);
  ASSERT_EQ(json["unlisted"].size(), 2U);
  EXPECT_EQ(json["unlisted"][0]["path"], place / "typed/c]]>.qbw");
  EXPECT_EQ(json["unlisted"][0]["reason"], "its path contains \"]]>\"");
}

TEST_F(CompaniesCommand, SaysSoIfNoFileCanBeListed) {
  const ProgramRun run = List({"--quickbooks-folder", FolderWith("c]]>.qbw")});
  EXPECT_EQ(run.code, 3);
  EXPECT_EQ(run.out, "");
  EXPECT_NE(run.err.find("c]]>.qbw is not listed: "), std::string::npos) << run.err;
}

TEST_F(CompaniesCommand, PrintsNamesWithoutControlCharacters) {
  WriteText(place /
                "typed/c\xC2\x9B"
                "31m.qbw",
            "");
  EXPECT_EQ(
      List({"--quickbooks-folder", place / "typed"}).out,
      place / "typed/a.qbw" + "\n" + (place / "typed/b.QBW") + "\n" + (place / "typed/c 31m.qbw") + "\n");
  EXPECT_NE(List({"--quickbooks-folder", place / "typed", "--json"}).out.find("c\\u009b31m.qbw"),
            std::string::npos);
}

TEST_F(CompaniesCommand, RefusesAConfigurationThatIsNoSmallFile) {
  const std::string file = place / ".config/krnqb/config.ini";
  const std::string advice = "; make it a text file of your own, or give --quickbooks-folder DIR\n";
  Configure("");
  fs::resize_file(file, 65536);
  EXPECT_EQ(List({}).err, "krnqb: listing companies failed: " + file + ": it holds 64 KiB or more" + advice);
  fs::remove(file);
  fs::create_directory(file);
  EXPECT_EQ(List({}).err, "krnqb: listing companies failed: " + file + ": Is a directory" + advice);
  fs::remove(file);
  fs::create_symlink("/dev/zero", file);
  EXPECT_EQ(List({}).err, "krnqb: listing companies failed: " + file + ": it is a device" + advice);
}

TEST_F(CompaniesCommand, MakesPathsAbsolute) {
  const ProgramRun run =
      List({"--quickbooks-folder", krnqb::tests::SamplesFolder() + "/../samples/plans/.."});
  EXPECT_EQ(run.code, 0) << run.err;
  const auto current = fs::current_path();
  fs::current_path(place.Folder());
  EXPECT_EQ(List({"--quickbooks-folder", "typed/"}).out,
            place / "typed/a.qbw" + "\n" + (place / "typed/b.QBW") + "\n");
  EXPECT_EQ(List({"--quickbooks-folder", "./typed/../typed"}).out.rfind(place / "typed/a.qbw", 0), 0U);
  fs::current_path(current);
}

}  // namespace
}  // namespace krnqb::cli
