#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/workplace.h"
#include "company/crafted_files.h"
#include "company/earlier_file.h"

namespace krnqb::cli {
namespace {

using company::testing::EmptyJournal;
using company::testing::pageSize;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;

class CheckCommand : public testing::Test {
 protected:
  CheckCommand() { place.Nursery(); }

  std::size_t Pages() const { return ReadText(file).size() / pageSize; }

  void Damage(std::size_t page) const {
    std::string bytes = ReadText(file);
    char& byte = bytes.at((page - 1) * pageSize + 3000);
    byte = static_cast<char>(byte ^ 1);
    WriteText(file, bytes);
  }

  // Replaces the company with one of layout 1.
  void MakeLayout1() const {
    std::filesystem::rename(file, file + ".present");
    company::testing::WriteEarlierFile(file + ".present", file);
    std::filesystem::remove(file + ".present");
  }

  const Workplace place;
  const std::string file = place / "nursery.qbw";
};

TEST_F(CheckCommand, CountsWhatIsWhole) {
  const ProgramRun run = RunProgram({"company", "check", file});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out.find(file + " is whole: " + std::to_string(Pages()) + " pages, "), 0U) << run.out;
  EXPECT_TRUE(run.out.ends_with(" records and 0 postings.\n")) << run.out;
  EXPECT_EQ(RunProgram({"company", "check", "--fix", file}).out, run.out);
}

TEST_F(CheckCommand, ListsDamagedPages) {
  ASSERT_GE(Pages(), 4U);
  Damage(2);
  Damage(4);
  const ProgramRun run = RunProgram({"company", "check", file});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "page 2 does not match its checksum\npage 4 does not match its checksum\n");
  EXPECT_EQ(run.err, "krnqb: checking the company failed: The company file " + file +
                         " is damaged (2 findings); restore a copy of the file\n");
  const ProgramRun json = RunProgram({"company", "check", "--fix", "--json", file});
  EXPECT_EQ(json.code, 1);
  const auto object = nlohmann::json::parse(json.out);
  EXPECT_EQ(object.at("result"), "failed");
  EXPECT_EQ(object.at("checksums"), true);
  EXPECT_EQ(object.at("finding_count"), 2);
  EXPECT_EQ(object.at("findings").at(1), "page 4 does not match its checksum");
}

TEST_F(CheckCommand, IsNamedByEveryCommandThatFindsDamage) {
  Damage(1);
  const std::string line =
      "krnqb: The company file " + file +
      " is damaged: page 1 does not match its checksum; restore a copy of the file (krnqb company check " +
      file + " lists all damage)\n";
  WriteText(place / "a.xml", "<QBXML><QBXMLMsgsRs/></QBXML>");
  for (const auto& arguments :
       std::vector<std::vector<std::string>>{{"company", "info", file},
                                             {"company", "load", file, place / "a.xml"},
                                             {"accounts", "income", "--company", file},
                                             {"supports", "1.1", "--company", file},
                                             place.ImportArguments("ald.kpf", {"--expenses"})}) {
    const ProgramRun run = RunProgram(arguments);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, line);
  }
}

TEST_F(CheckCommand, UndoesAnInterruptedLoad) {
  WriteText(file + "-journal", EmptyJournal(static_cast<std::uint32_t>(Pages())));
  const ProgramRun run = RunProgram({"company", "check", "--fix", file});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.out.find("Undid a load that was interrupted.\n" + file + " is whole: "), 0U) << run.out;
  EXPECT_FALSE(std::filesystem::exists(file + "-journal"));
}

TEST_F(CheckCommand, AddsChecksumsOfWhichReadersWarn) {
  MakeLayout1();
  const std::string warning = "krnqb: warning: the company file " + file +
                              " has no checksums, so damage may go unnoticed; add them with krnqb company "
                              "check --fix " +
                              file + "\n";
  for (const auto& arguments :
       std::vector<std::vector<std::string>>{{"company", "info", file},
                                             {"company", "check", file},
                                             {"accounts", "income", "--company", file},
                                             {"supports", "1.1", "--company", file},
                                             place.ImportArguments("ald.kpf", {"--expenses", "--dry-run"})}) {
    const ProgramRun run = RunProgram(arguments);
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, warning);
  }
  const std::string info = RunProgram({"company", "info", file}).out;
  const ProgramRun fixed = RunProgram({"company", "check", "--fix", file});
  EXPECT_EQ(fixed.code, 0);
  EXPECT_EQ(fixed.err, "");
  EXPECT_TRUE(
      fixed.out.ends_with("\nWrote it anew with checksums; the previous version is " + file + ".bak.\n"))
      << fixed.out;
  const ProgramRun after = RunProgram({"company", "info", file});
  EXPECT_EQ(after.err, "");
  EXPECT_EQ(after.out, info);
}

TEST_F(CheckCommand, ReportsAMissingCompany) {
  const ProgramRun run = RunProgram({"company", "check", place / "none.qbw"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "krnqb: checking the company failed: There is no company file " + (place / "none.qbw") +
                         "; check the path, its permissions and the programs that use the file\n");
}

}  // namespace
}  // namespace krnqb::cli
