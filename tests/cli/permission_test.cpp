#include <gtest/gtest.h>

#include "build_paths.h"
#include "cli/workplace.h"
#include "files/unprivileged_user.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

using tests::ProgramRun;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;
using Words = std::vector<std::string>;

// Runs the program as a user who owns none of the files in a folder that anybody may read and change.
class MissingPermission : public testing::Test {
 protected:
  void SetUp() override {
    fs::permissions(place.Folder(), fs::perms::all);
    place.Nursery();
  }

  void Forbid(const std::string& name, fs::perms permissions = fs::perms::none) const {
    fs::permissions(place / name, permissions);
  }

  // Makes a folder that may be read but not changed, with copies of the given files, which may be changed.
  std::string ReadOnlyFolder(const Words& names) const {
    const fs::path folder = place / "fixed";
    fs::create_directory(folder);
    for (const std::string& name : names) {
      fs::copy_file(place / name, folder / name);
      fs::permissions(folder / name, fs::perms(0666));
    }
    fs::permissions(folder, fs::perms(0555));
    return folder.string() + '/';
  }

  void ExpectFailure(const Words& words, const std::string& error) {
    const files::UnprivilegedUser user;
    if (!user.Restricted()) GTEST_SKIP() << "permissions are not checked for this user";
    const ProgramRun run = RunProgram(words);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err, error);
  }

  const Workplace place;
  const std::string company = place / "nursery.qbw";
  const std::string document = krnqb::tests::SamplesFolder() + "/nursery/accounts.xml";
};

TEST_F(MissingPermission, ToReadACompanyIsReportedByEveryCommand) {
  Forbid("nursery.qbw");
  const std::string error =
      "krnqb: The company file " + company +
      " cannot be opened: Permission denied; make sure that you have permission to read "
      "it\n";
  ExpectFailure({"company", "info", company}, error);
  ExpectFailure({"company", "check", company}, error);
  ExpectFailure({"company", "load", company, document}, error);
  ExpectFailure({"accounts", "income", "--company", company}, error);
  ExpectFailure(place.ImportArguments("ald.kpf", {"--income"}), error);
}

TEST_F(MissingPermission, ToChangeACompanyIsReported) {
  Forbid("nursery.qbw", fs::perms(0444));
  ExpectFailure(
      {"company", "load", company, document},
      "krnqb: The company file " + company +
          " cannot be written: Permission denied; make sure that you have permission to change it\n");
}

TEST_F(MissingPermission, ToChangeTheFolderOfACompanyIsReported) {
  const std::string folder = ReadOnlyFolder({"nursery.qbw"});
  ExpectFailure({"company", "load", folder + "nursery.qbw", document},
                "krnqb: The company file " + folder +
                    "nursery.qbw cannot be written: no journal can be created in its folder " +
                    folder.substr(0, folder.size() - 1) +
                    ": Permission denied; make sure that you have permission to create files there\n");
}

TEST_F(MissingPermission, ToReadAPlanIsReportedAndLeavesNoLockFile) {
  Forbid("ald.kpf");
  ExpectFailure(
      place.ImportArguments("ald.kpf", {"--income"}),
      "krnqb: cannot open the plan " + (place / "ald.kpf") +
          ": Permission denied; make sure that you have permission to use the file and its folder\n");
  EXPECT_FALSE(fs::exists(place / "ald.kpf.lock"));
}

TEST_F(MissingPermission, ToChangeTheFolderOfAPlanIsReported) {
  const std::string folder = ReadOnlyFolder({"ald.kpf"});
  ExpectFailure({"import", "--company", company, "--plan", folder + "ald.kpf", "--income", "--quiet"},
                "krnqb: cannot lock the plan with " + folder +
                    "ald.kpf.lock: Permission denied; make sure that you have permission to use the file and "
                    "its folder\n");
  ExpectFailure({"plan", "new", folder + "new.kpf", "--product", "ald", "--start", "2003-01"},
                "krnqb: cannot create " + folder + "new.kpf: creating " + folder +
                    "new.kpf.tmp failed: Permission denied; there is no new file, make sure that you have "
                    "permission to use the file and its folder\n");
}

TEST_F(MissingPermission, ToReadARecordingIsReported) {
  WriteText(place / "exchange.jsonl", "");
  Forbid("exchange.jsonl");
  ExpectFailure({"import", "--replay", place / "exchange.jsonl", "--plan", place / "ald.kpf", "--income"},
                "krnqb: opening the recording failed: " + (place / "exchange.jsonl") +
                    ": Permission denied; check the path and its permissions\n");
}

TEST_F(MissingPermission, ToCreateARecordingOrAJournalIsReported) {
  const std::string folder = ReadOnlyFolder({});
  ExpectFailure(place.ImportArguments("ald.kpf", {"--income", "--dry-run", "--record", folder + "r"}),
                "krnqb: recording failed: " + folder +
                    "r: Permission denied; check the path and the permissions of its folder\n");
  ExpectFailure(place.ImportArguments("ald.kpf", {"--income", "--dry-run", "--journal", folder + "j"}),
                "krnqb: writing the journal failed: " + folder +
                    "j: Permission denied; choose a file in a folder that you can write to\n");
}

}  // namespace
}  // namespace krnqb::cli
