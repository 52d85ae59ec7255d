#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "company/records/errors.h"
#include "company/testing.h"

namespace krnqb::company {
namespace {

using testing::Account;
using testing::Accounts;
using testing::Request;
using tests::ReadText;
using tests::ThrownError;
using tests::WriteText;

class CompanyFiles : public testing::CompanyTest {
 protected:
  Error OpenError(std::string_view name, FileAccess access = FileAccess::ReadOnly) const {
    return ThrownError([&] { CompanyFile::Open(folder / name, access); });
  }
  std::string PathText(std::string_view name) const { return (folder / name).string(); }
};

TEST_F(CompanyFiles, HaveTheSettingsTheyAreCreatedWith) {
  const CompanyInfo info = NewCompany("1.1").Info();
  EXPECT_EQ(info.path, PathText("company.qbw"));
  EXPECT_EQ(info.name, "Green Nursery");
  EXPECT_EQ(info.fiscalMonth, 4);
  EXPECT_EQ(info.processorVersion, "1.1");
  ASSERT_EQ(info.records.size(), 1U);
  EXPECT_EQ(info.records[0].kind, "CompanyRet");
}

TEST_F(CompanyFiles, CanBeOpenedByARelativePath) {
  NewCompany("1.1");
  const std::filesystem::path relative = std::filesystem::relative(folder / "company.qbw");
  EXPECT_TRUE(relative.is_relative());
  EXPECT_EQ(
      std::filesystem::path(CompanyFile::Open(relative, FileAccess::ReadOnly).Info().path).is_absolute(),
      true);
}

TEST_F(CompanyFiles, DoNotReplaceAnotherFile) {
  WriteText(folder / "company.qbw", "my diary");
  const Error error = ThrownError([&] { NewCompany("1.1"); });
  EXPECT_EQ(error.Number(), company_error::fileAlreadyExists);
  EXPECT_EQ(error.Description(), fmt::format("The file {} already exists.", PathText("company.qbw")));
  EXPECT_EQ(ReadText(folder / "company.qbw"), "my diary");
}

TEST_F(CompanyFiles, RefuseInvalidSettings) {
  struct Case {
    std::string_view name;
    std::int16_t month;
    std::string_view version;
  };
  const std::vector<Case> cases = {{"a", 0, "1.1"},     {"a", 13, "1.1"},  {"a", -1, "1.1"},
                                   {"a", 1, "1.2"},     {"a", 1, "1.10"},  {"a", 1, ""},
                                   {"a\x01", 1, "1.1"}, {"\xFF", 1, "1.1"}};
  for (const auto& [name, month, version] : cases) {
    SCOPED_TRACE(fmt::format("{} {}", month, version));
    EXPECT_EQ(ThrownError([&, n = name, m = month, v = version] {
                CompanyFile::Create(folder / "company.qbw", n, m, v);
              }).Number(),
              error_number::invalidProcedureCall);
    EXPECT_TRUE(folder.FileNames().empty());
  }
}

TEST_F(CompanyFiles, AreNotCreatedInAMissingFolder) {
  const Error error = ThrownError([&] { CompanyFile::Create(folder / "none/company.qbw", "a", 1, "1.1"); });
  EXPECT_EQ(error.Number(), company_error::cannotOpen);
  EXPECT_NE(error.Description().find("cannot be created: No such file or directory"), std::string::npos);
}

TEST_F(CompanyFiles, ThatAreMissingAreReported) {
  const Error error = OpenError("none.qbw");
  EXPECT_EQ(error.Number(), company_error::cannotOpen);
  EXPECT_EQ(error.Description(), fmt::format("There is no company file {}.", PathText("none.qbw")));
  EXPECT_EQ(OpenError("none.qbw", FileAccess::ReadWrite).Description(), error.Description());
  EXPECT_TRUE(folder.FileNames().empty());
}

TEST_F(CompanyFiles, AreRecognizedByTheirContents) {
  WriteText(folder / "text", std::string(2000, 'x'));
  WriteText(folder / "short", "x");
  WriteText(folder / "empty", "");
  std::filesystem::create_directory(folder / "folder");
  WriteText(folder / "database", "");
  Database(folder / "database", FileAccess::ReadWrite).Execute("CREATE TABLE record (id INTEGER)");
  for (const std::string_view name : {"text", "short", "empty", "folder", "database"}) {
    SCOPED_TRACE(name);
    for (const FileAccess access : {FileAccess::ReadOnly, FileAccess::ReadWrite}) {
      const Error error = OpenError(name, access);
      EXPECT_EQ(error.Number(), company_error::cannotOpen);
      EXPECT_EQ(error.Description(), fmt::format("The file {} is not a company file.", PathText(name)));
    }
  }
}

TEST_F(CompanyFiles, OfANewerLayoutAreRefused) {
  NewCompany("1.1");
  Database(folder / "company.qbw", FileAccess::ReadWrite).Execute("PRAGMA user_version = 99");
  EXPECT_EQ(OpenError("company.qbw").Number(), company_error::cannotOpen);
  EXPECT_NE(OpenError("company.qbw").Description().find("newer version of this program"), std::string::npos);
}

TEST_F(CompanyFiles, ThatAreLockedAreReported) {
  NewCompany("1.1");
  const Database other(folder / "company.qbw", FileAccess::ReadWrite);
  other.Execute("BEGIN EXCLUSIVE");
  for (const FileAccess access : {FileAccess::ReadOnly, FileAccess::ReadWrite}) {
    const Error error = OpenError("company.qbw", access);
    EXPECT_EQ(error.Number(), company_error::cannotOpen);
    EXPECT_EQ(error.Description(), fmt::format("The company file {} is locked: another program is using it.",
                                               PathText("company.qbw")));
  }
  other.Execute("ROLLBACK");
  EXPECT_EQ(CompanyFile::Open(folder / "company.qbw", FileAccess::ReadOnly).Info().name, "Green Nursery");
}

TEST_F(CompanyFiles, ThatAreUnreadableAreReported) {
  if (geteuid() == 0) GTEST_SKIP() << "root can read every file";
  NewCompany("1.1");
  ASSERT_EQ(chmod((folder / "company.qbw").c_str(), 0), 0);
  EXPECT_EQ(OpenError("company.qbw").Number(), company_error::cannotOpen);
  EXPECT_NE(OpenError("company.qbw").Description().find("cannot be opened"), std::string::npos);
}

TEST_F(CompanyFiles, AreUnchangedByReading) {
  NewCompany("1.1").Load("accounts.xml", Accounts(Account("a", "Income") + Account("b", "Income", "a")));
  const std::string before = ReadText(folder / "company.qbw");
  {
    const CompanyFile company = CompanyFile::Open(folder / "company.qbw", FileAccess::ReadOnly);
    company.Answer(Request("1.0", "<AccountQueryRq/><CompanyQueryRq/><BillQueryRq/>"));
    company.Info();
    EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"company.qbw"});
  }
  EXPECT_EQ(ReadText(folder / "company.qbw"), before);
  EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"company.qbw"});
}

TEST_F(CompanyFiles, CanBeReadInAReadOnlyFolder) {
  if (geteuid() == 0) GTEST_SKIP() << "root can write to every folder";
  NewCompany("1.1");
  std::filesystem::permissions(folder / "company.qbw", std::filesystem::perms::owner_read);
  std::filesystem::permissions(folder.Path(),
                               std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  EXPECT_EQ(CompanyFile::Open(folder / "company.qbw", FileAccess::ReadOnly).Info().name, "Green Nursery");
  std::filesystem::permissions(folder.Path(), std::filesystem::perms::owner_all);
}

TEST_F(CompanyFiles, OpenForReadingCannotBeLoadedInto) {
  NewCompany("1.1");
  CompanyFile company = CompanyFile::Open(folder / "company.qbw", FileAccess::ReadOnly);
  const Error error = ThrownError([&] { company.Load("a.xml", Accounts(Account("a", "Income"))); });
  EXPECT_EQ(error.Number(), company_error::unexpected);
  EXPECT_NE(error.Description().find("open for reading only"), std::string::npos);
}

TEST_F(CompanyFiles, ShowAReaderOneStateAndBlockLoading) {
  CompanyFile loader = NewCompany("1.1");
  {
    const CompanyFile reader = CompanyFile::Open(folder / "company.qbw", FileAccess::ReadOnly);
    const Error error = ThrownError([&] { loader.Load("a.xml", Accounts(Account("a", "Income"))); });
    EXPECT_EQ(error.Number(), company_error::cannotOpen);
    EXPECT_NE(error.Description().find("is locked: another program is using it"), std::string::npos);
    EXPECT_NE(reader.Answer(Request("1.0", "<AccountQueryRq/>")).find("statusCode=\"1\""), std::string::npos);
  }
  EXPECT_EQ(loader.Load("a.xml", Accounts(Account("a", "Income"))).added.at(0).count, 1);
}

TEST_F(CompanyFiles, ShowWhatAnotherProgramHasLoaded) {
  const CompanyFile first = NewCompany("1.1");
  EXPECT_EQ(first.Info().records.size(), 1U);
  CompanyFile::Open(folder / "company.qbw", FileAccess::ReadWrite)
      .Load("a.xml", Accounts(Account("a", "Income")));
  EXPECT_EQ(first.Info().records.size(), 2U);
}

TEST_F(CompanyFiles, ThatAreDamagedAreReported) {
  NewCompany("1.1");
  std::string bytes = ReadText(folder / "company.qbw");
  bytes.resize(bytes.size() / 2);
  WriteText(folder / "cut.qbw", bytes);
  const Error error =
      ThrownError([&] { CompanyFile::Open(folder / "cut.qbw", FileAccess::ReadOnly).Info(); });
  EXPECT_EQ(error.Number(), company_error::cannotOpen);
  EXPECT_NE(error.Description().find("is damaged"), std::string::npos) << error.Description();
}

TEST_F(CompanyFiles, ThatCannotBeFilledAreRemoved) {
  std::filesystem::create_directory(folder / "company.qbw-journal");  // where the database keeps its journal
  EXPECT_EQ(ThrownError([&] { NewCompany("1.1"); }).Number(), company_error::cannotOpen);
  EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"company.qbw-journal"});
}

}  // namespace
}  // namespace krnqb::company
