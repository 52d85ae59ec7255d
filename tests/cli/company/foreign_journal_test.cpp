#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "cli/workplace.h"
#include "company/crafted_files.h"

// A file beside a company that poses as its journal makes no command remove, change or wait for another file.

namespace krnqb::cli {
namespace {

using company::testing::EmptyJournal;
using company::testing::JournalNaming;
using company::testing::pageSize;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;

class ForeignJournal : public testing::Test {
 protected:
  ForeignJournal() {
    place.Nursery();
    WriteText(victim, "precious");
    before = ReadText(company);
  }

  std::uint32_t Pages() const { return static_cast<std::uint32_t>(before.size() / pageSize); }

  // Every command that opens a company.
  std::vector<std::vector<std::string>> Commands() const {
    const std::string document = place / "accounts.xml";
    WriteText(document, "<QBXML><QBXMLMsgsRs/></QBXML>");
    return {{"company", "info", company},
            {"company", "info", company, "--json"},
            {"accounts", "expense", "--company", company},
            {"supports", "1.1", "--company", company},
            place.ImportArguments("ald.kpf", {"--expenses", "--dry-run"}),
            place.ImportArguments("ald.kpf", {"--expenses"}),
            {"company", "check", company},
            {"company", "check", "--fix", company},
            {"company", "load", company, document}};
  }

  const Workplace place;
  const std::string company = place / "nursery.qbw";
  const std::string journal = company + "-journal";
  const std::string victim = place / "victim";
  std::string before;
};

TEST_F(ForeignJournal, ThatNamesAnotherFileRemovesNothing) {
  for (const auto& command : Commands()) {
    SCOPED_TRACE(testing::PrintToString(command));
    WriteText(journal, JournalNaming(victim, Pages()));
    const ProgramRun run = RunProgram(command);
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("The journal " + journal + " names another file"), std::string::npos) << run.err;
    EXPECT_TRUE(std::filesystem::exists(journal));
    ASSERT_TRUE(std::filesystem::exists(victim));
    EXPECT_EQ(ReadText(victim), "precious");
    EXPECT_EQ(ReadText(company), before);
  }
}

TEST_F(ForeignJournal, ThatIsALinkChangesNothing) {
  for (const auto& command : Commands()) {
    SCOPED_TRACE(testing::PrintToString(command));
    std::filesystem::remove(journal);
    std::filesystem::create_symlink(victim, journal);
    EXPECT_EQ(RunProgram(command).code, 1);
    EXPECT_EQ(ReadText(victim), "precious");
    EXPECT_EQ(ReadText(company), before);
  }
}

TEST_F(ForeignJournal, ThatIsAPipeBlocksNoCommand) {
  ASSERT_EQ(::mkfifo(journal.c_str(), 0600), 0);
  for (const auto& command : Commands()) {
    SCOPED_TRACE(testing::PrintToString(command));
    EXPECT_EQ(RunProgram(command).code, 1);
    EXPECT_EQ(ReadText(company), before);
  }
}

TEST_F(ForeignJournal, OfAWriteAheadLogIsNotMade) {
  std::string marked = before;
  marked[18] = marked[19] = 2;
  const auto names = [&] {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(place.Folder())) {
      if (entry.path().filename().string().starts_with("nursery")) found.push_back(entry.path().filename());
    }
    std::ranges::sort(found);
    return found;
  };
  for (const auto& command : Commands()) {
    SCOPED_TRACE(testing::PrintToString(command));
    WriteText(company, marked);
    EXPECT_EQ(RunProgram(command).code, 1);
    EXPECT_EQ(names(), std::vector<std::string>{"nursery.qbw"});
    EXPECT_EQ(ReadText(company), marked);
  }
}

TEST_F(ForeignJournal, OfAnInterruptedLoadIsLeftToCheckAndLoad) {
  for (const auto& command : Commands()) {
    SCOPED_TRACE(testing::PrintToString(command));
    WriteText(journal, EmptyJournal(Pages()));
    const ProgramRun run = RunProgram(command);
    const bool undoes = command[1] == "load" || command[2] == "--fix";
    EXPECT_EQ(run.code, undoes ? 0 : 1) << run.err;
    EXPECT_EQ(std::filesystem::exists(journal), !undoes);
    if (undoes) continue;
    EXPECT_NE((run.out + run.err).find("krnqb company check --fix " + company), std::string::npos) << run.err;
    EXPECT_EQ(ReadText(company), before);
  }
}

}  // namespace
}  // namespace krnqb::cli
