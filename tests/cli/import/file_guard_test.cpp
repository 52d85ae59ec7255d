#include "cli/import/file_guard.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "cli/console/failure.h"
#include "cli/workplace.h"
#include "files/descriptor.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;

// Paths are relative to the folder of the test.
struct Case {
  const char* name;
  const char* plan = "real/plan.kpf";
  const char* company = "books.qbw";
  const char* replay = nullptr;
  const char* journal = nullptr;
  const char* record = nullptr;
  const char* ledger = nullptr;
  const char* report = nullptr;
  const char* first = nullptr;  // the files that are the same; null if the import may use them
  const char* second = nullptr;
};

std::ostream& operator<<(std::ostream& output, const Case& shown) {
  return output << shown.name;
}

class FileGuard : public testing::TestWithParam<Case> {
 protected:
  FileGuard() : before_(fs::current_path()) {
    fs::current_path(place_.Folder());
    fs::create_directory("real");
    WriteText("real/plan.kpf", "plan");
    WriteText("books.qbw", "company");
    WriteText("exchange.jsonl", "recording");
    WriteText("notes", "notes");
    fs::create_symlink("real/plan.kpf", "plan.kpf");
    fs::create_symlink("plan.kpf", "twice.kpf");
    fs::create_directory_symlink("real", "folder");
    fs::create_symlink("real/new", "new");
    fs::create_symlink("real/plan.kpf.bak", "backup");
    fs::create_hard_link("real/plan.kpf", "plan-hard");
    fs::create_hard_link("books.qbw", "books-hard");
    fs::create_hard_link("exchange.jsonl", "exchange-hard");
    fs::create_symlink("../books.qbw", "real/soft.kpf.bak");
    WriteText("real/soft.kpf", "plan");
    fs::create_directory("real/plan.kpf.history");
    WriteText("real/plan.kpf.history/0001.kpf", "version");
    fs::create_hard_link("real/plan.kpf.history/0001.kpf", "version-hard");
    fs::create_symlink("real/plan.kpf.history/new", "history-new");
  }
  ~FileGuard() override { fs::current_path(before_); }

  static std::string LineOf(const ImportCommand& options) {
    try {
      CheckImportFiles(options);
    } catch (const Failure& failure) {
      return failure.Line();
    }
    return "";
  }

 private:
  const Workplace place_;
  const fs::path before_;
};

TEST_P(FileGuard, RefusesTwoUsesOfOneFile) {
  const Case& tried = GetParam();
  const auto path = [](const char* text) {
    return text == nullptr ? std::nullopt : std::optional<std::string>(text);
  };
  ImportCommand options;
  options.planFile = tried.plan;
  options.companyFile = path(tried.company);
  options.replayFile = path(tried.replay);
  options.journalFile = path(tried.journal);
  options.recordFile = path(tried.record);
  options.ledgerFile = path(tried.ledger);
  options.reportFile = path(tried.report);
  EXPECT_EQ(LineOf(options), tried.first == nullptr
                                 ? std::string()
                                 : std::string("krnqb: wrong usage: ") + tried.first + " and " +
                                       tried.second + " are the same file; give another file");
}

INSTANTIATE_TEST_SUITE_P(
    Paths, FileGuard,
    testing::Values(
        Case{.name = "separate files", .journal = "journal", .record = "record"},
        Case{.name = "an existing file of neither", .journal = "notes"},
        Case{.name = "the same name in another folder", .journal = "plan.kpf.bak", .record = "real/new"},
        Case{.name = "devices, which hold nothing", .journal = "/dev/null", .record = "/dev/null"},
        Case{.name = "a symlinked plan with --journal PLAN.bak",
             .plan = "plan.kpf",
             .journal = "real/plan.kpf.bak",
             .first = "--journal real/plan.kpf.bak",
             .second = "the backup of --plan plan.kpf"},
        Case{.name = "a plan linked twice with --record PLAN.lock",
             .plan = "twice.kpf",
             .record = "folder/plan.kpf.lock",
             .first = "--record folder/plan.kpf.lock",
             .second = "the lock of --plan twice.kpf"},
        Case{.name = "a link to a backup that does not exist yet",
             .journal = "backup",
             .first = "--journal backup",
             .second = "the backup of --plan real/plan.kpf"},
        Case{.name = "the plan's temporary file",
             .journal = "real/plan.kpf.tmp",
             .first = "--journal real/plan.kpf.tmp",
             .second = "a temporary file of --plan real/plan.kpf"},
        Case{.name = "the plan through a folder's link",
             .record = "folder/plan.kpf",
             .first = "--record folder/plan.kpf",
             .second = "--plan real/plan.kpf"},
        Case{.name = "a hard link to the plan",
             .journal = "plan-hard",
             .first = "--journal plan-hard",
             .second = "--plan real/plan.kpf"},
        Case{.name = "a hard link to the company",
             .record = "books-hard",
             .first = "--record books-hard",
             .second = "--company books.qbw"},
        Case{.name = "the company's database journal",
             .journal = "./books.qbw-journal",
             .first = "--journal ./books.qbw-journal",
             .second = "the database journal of --company books.qbw"},
        Case{.name = "a hard link to the recording that is replayed",
             .company = nullptr,
             .replay = "exchange.jsonl",
             .record = "exchange-hard",
             .first = "--record exchange-hard",
             .second = "--replay exchange.jsonl"},
        Case{.name = "one new file twice",
             .journal = "real/new",
             .record = "new",
             .first = "--journal real/new",
             .second = "--record new"},
        Case{.name = "a ledger that is the plan's backup",
             .ledger = "backup",
             .first = "--ledger backup",
             .second = "the backup of --plan real/plan.kpf"},
        Case{.name = "a ledger that is the company",
             .ledger = "books-hard",
             .first = "--ledger books-hard",
             .second = "--company books.qbw"},
        Case{.name = "a journal in the place of the ledger while it is written",
             .journal = "new.kql.tmp",
             .ledger = "new.kql",
             .first = "--journal new.kql.tmp",
             .second = "a temporary file of --ledger new.kql"},
        Case{.name = "a ledger that is the recording",
             .record = "real/new",
             .ledger = "new",
             .first = "--record real/new",
             .second = "--ledger new"},
        Case{.name = "a report that is the company",
             .report = "books-hard",
             .first = "--report books-hard",
             .second = "--company books.qbw"},
        Case{.name = "a report that is the ledger",
             .ledger = "new",
             .report = "real/new",
             .first = "--ledger new",
             .second = "--report real/new"},
        Case{.name = "a journal in the place of the report while it is written",
             .journal = "new.html.tmp",
             .report = "new.html",
             .first = "--journal new.html.tmp",
             .second = "a temporary file of --report new.html"},
        Case{.name = "a version in the plan's history",
             .plan = "plan.kpf",
             .journal = "folder/plan.kpf.history/0001.kpf",
             .first = "--journal folder/plan.kpf.history/0001.kpf",
             .second = "the history of --plan plan.kpf"},
        Case{.name = "a hard link to such a version",
             .record = "version-hard",
             .first = "--record version-hard",
             .second = "the history of --plan real/plan.kpf"},
        Case{.name = "the folder of a history that does not exist yet",
             .plan = "real/soft.kpf",
             .journal = "real/soft.kpf.history",
             .first = "--journal real/soft.kpf.history",
             .second = "the history of --plan real/soft.kpf"},
        Case{.name = "a company that is the plan",
             .company = "plan-hard",
             .first = "--plan real/plan.kpf",
             .second = "--company plan-hard"},
        Case{.name = "a company in the backup's place",
             .plan = "real/soft.kpf",
             .first = "the backup of --plan real/soft.kpf",
             .second = "--company books.qbw"},
        Case{.name = "a recording in the backup's place",
             .company = nullptr,
             .replay = "backup",
             .first = "the backup of --plan real/plan.kpf",
             .second = "--replay backup"}));

TEST_F(FileGuard, RefusesANewFileInThePlansHistory) {
  ImportCommand options;
  options.planFile = "plan.kpf";
  options.companyFile = "books.qbw";
  for (const char* path :
       {"real/plan.kpf.history/journal", "folder/plan.kpf.history/0002.kpf", "history-new"}) {
    options.journalFile = path;
    EXPECT_EQ(LineOf(options), std::string("krnqb: wrong usage: --journal ") + path +
                                   " is in the history of --plan plan.kpf; give another file");
  }
}

TEST_F(FileGuard, RefusesToImportIntoAVersionOfAHistory) {
  ImportCommand options;
  options.companyFile = "books.qbw";
  fs::create_symlink("real/plan.kpf.history/0001.kpf", "version");
  for (const char* path : {"real/plan.kpf.history/0001.kpf", "version"}) {
    options.planFile = path;
    EXPECT_EQ(LineOf(options),
              std::string("krnqb: wrong usage: --plan ") + path +
                  " is a version in a plan's history; copy it to another folder and import into "
                  "the copy");
  }
  WriteText("real/plan.kpf.history/notes.kpf", "plan");
  options.planFile = "real/plan.kpf.history/notes.kpf";
  EXPECT_EQ(LineOf(options), "");
}

// Standard output is the file while the guard looks at it.
class RedirectedOutput {
 public:
  explicit RedirectedOutput(const fs::path& file) : kept_(::dup(STDOUT_FILENO)) {
    const files::FileDescriptor opened = files::FileDescriptor::Open(file, O_WRONLY | O_CREAT, 0600);
    ::dup2(opened.Number(), STDOUT_FILENO);
  }
  ~RedirectedOutput() { ::dup2(kept_.Number(), STDOUT_FILENO); }
  RedirectedOutput(const RedirectedOutput&) = delete;
  RedirectedOutput& operator=(const RedirectedOutput&) = delete;

 private:
  files::FileDescriptor kept_;
};

TEST(FileGuardForStandardOutput, RefusesAFileThatIsAlsoWrittenByAnOption) {
  const Workplace place;
  const auto lineOf = [](const ImportCommand& options) -> std::string {
    try {
      CheckImportFiles(options);
    } catch (const Failure& failure) {
      return failure.Line();
    }
    return "";
  };
  ImportCommand options;
  options.planFile = place / "ald.kpf";
  options.companyFile = place / "books.qbw";
  options.recordFile = place / "out.json";
  const RedirectedOutput redirected(place / "out.json");
  EXPECT_EQ(lineOf(options), "krnqb: wrong usage: --record " + (place / "out.json") +
                                 " and standard output are the same file; give another file");
  options.quiet = true;
  EXPECT_EQ(lineOf(options), "") << "nothing is printed";
  options.json = true;
  EXPECT_NE(lineOf(options), "") << "the object is printed";
  options.recordFile.reset();
  options.companyFile = place / "out.json";
  EXPECT_EQ(lineOf(options), "krnqb: wrong usage: standard output and --company " + (place / "out.json") +
                                 " are the same file; give another file");
}

TEST(GuardedImport, KeepsTheBackupOfASymlinkedPlan) {
  const Workplace place;
  place.Nursery();
  fs::create_directory(place / "real");
  fs::rename(place / "ald.kpf", place / "real/ald.kpf");
  fs::create_symlink("real/ald.kpf", place / "ald.kpf");
  ASSERT_EQ(RunProgram(place.ImportArguments("ald.kpf", {"--expenses"})).code, 0);
  const std::string backup = ReadText(place / "real/ald.kpf.bak");
  const auto run =
      RunProgram(place.ImportArguments("ald.kpf", {"--income", "--journal", place / "real/ald.kpf.bak"}));
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(ReadText(place / "real/ald.kpf.bak"), backup);
}

}  // namespace
}  // namespace krnqb::cli
