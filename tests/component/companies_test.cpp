#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "fakes/memory_files.h"
#include "fakes/memory_registry.h"
#include "fakes/recording_observer.h"
#include "krnqb/qb_data_exchange.h"
#include "support/system_files.h"

namespace krnqb {
namespace {

namespace fs = std::filesystem;

constexpr const char* programKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\qbw32.exe";

// A machine whose registry may name the QuickBooks program.
struct Machine {
  XmlElement Companies() const {
    OutsideWorld world;
    world.registry = registry;
    world.files = files;
    world.observer = observer;
    world.quickBooksFolder = givenFolder;
    QBDataExchange component(world);
    const XmlElement companies = component.QBCompanies();
    errorNumber = component.ErrorNumber();
    return companies;
  }
  std::string Document() const {
    const XmlElement companies = Companies();
    return companies ? companies.Xml() : "none";
  }
  void Program(const std::string& path) const { registry->values[{programKey, ""}] = path; }

  std::shared_ptr<fakes::MemoryRegistry> registry = std::make_shared<fakes::MemoryRegistry>();
  std::shared_ptr<fakes::MemoryFiles> files = std::make_shared<fakes::MemoryFiles>();
  std::shared_ptr<fakes::RecordingObserver> observer = std::make_shared<fakes::RecordingObserver>();
  std::optional<std::string> givenFolder;
  mutable std::int32_t errorNumber = 0;
};

std::string Record(const std::string& name, const std::string& path) {
  return "<company><name><![CDATA[" + name + "]]></name><fullpath><![CDATA[" + path +
         "]]></fullpath></company>";
}

std::vector<std::string> NamesIn(const XmlElement& companies) {
  std::vector<std::string> names;
  for (const XmlElement& company : companies.Children()) names.push_back(company.Child("name").Text());
  return names;
}

TEST(QBCompanies, ListsTheFilesNextToTheRegisteredProgram) {
  Machine machine;
  machine.Program("C:\\Program Files\\QuickBooks\\qbw32.exe");
  machine.files->folders["C:\\Program Files\\QuickBooks\\"] = {"B.QBW", "a.qbw"};
  EXPECT_EQ(machine.Document(), "<qbcompanies>" + Record("a.qbw", "C:\\Program Files\\QuickBooks\\a.qbw") +
                                    Record("B.QBW", "C:\\Program Files\\QuickBooks\\B.QBW") +
                                    "</qbcompanies>");
  EXPECT_TRUE(machine.observer->notices.empty());
}

TEST(QBCompanies, ReadsTheUnnamedValueWithAllRights) {
  Machine machine;
  machine.Program("C:\\qbw32.exe");
  machine.files->folders["C:\\"] = {};
  EXPECT_EQ(machine.Document(), "<qbcompanies/>");
  EXPECT_EQ(machine.registry->rights, std::vector<std::uint32_t>{0x3F});
}

TEST(QBCompanies, AcceptsAProgramInTheRootOfADrive) {
  Machine machine;
  machine.Program("D:\\qbw32.exe");
  machine.files->folders["D:\\"] = {"a.qbw"};
  EXPECT_EQ(machine.Document(), "<qbcompanies>" + Record("a.qbw", "D:\\a.qbw") + "</qbcompanies>");
}

TEST(QBCompanies, SortsCaseInsensitively) {
  Machine machine;
  machine.Program("C:\\QB\\qbw32.exe");
  machine.files->folders["C:\\QB\\"] = {"c.QBW",           "Zebra.qbw", "a.qbw", "\xC3\x84rger.qbw",
                                        "\xC3\xA4hre.qbw", "B.Qbw",     "A.qbw"};
  EXPECT_EQ(NamesIn(machine.Companies()),
            (std::vector<std::string>{"A.qbw", "a.qbw", "B.Qbw", "c.QBW", "Zebra.qbw", "\xC3\xA4hre.qbw",
                                      "\xC3\x84rger.qbw"}));
}

TEST(QBCompanies, OmitsEveryOtherFile) {
  Machine machine;
  machine.Program("C:\\QB\\qbw32.exe");
  machine.files->folders["C:\\QB\\"] = {"qbw32.exe", "a.qbw.bak", "a.qbwx", "aqbw", ".qbw", "b.qbw", "c.qb"};
  EXPECT_EQ(NamesIn(machine.Companies()), (std::vector<std::string>{".qbw", "b.qbw"}));
}

TEST(QBCompanies, ListsNothingInAFolderWithoutCompanies) {
  Machine machine;
  machine.Program("C:\\QB\\qbw32.exe");
  machine.files->folders["C:\\QB\\"] = {"readme.txt"};
  const XmlElement companies = machine.Companies();
  ASSERT_TRUE(companies);
  EXPECT_EQ(companies.Name(), "qbcompanies");
  EXPECT_EQ(companies.Text(), "");
  EXPECT_FALSE(companies.FirstChild());
}

TEST(QBCompanies, IsNothingWhenTheRegistryNamesNoFolder) {
  for (const char* program : {"", "qbw32.exe", "C:/QB/qbw32.exe"}) {
    Machine machine;
    machine.Program(program);
    machine.files->folders[""] = {"a.qbw"};
    EXPECT_EQ(machine.Document(), "none") << program;
    EXPECT_TRUE(machine.observer->Reported(NoticeKind::OperationEnded, 5)) << program;
    EXPECT_EQ(machine.errorNumber, 0) << "no import failed";
  }
}

TEST(QBCompanies, IsNothingForAMissingOrNumericValue) {
  Machine machine;
  EXPECT_EQ(machine.Document(), "none");
  machine.registry->values[{programKey, ""}] = std::uint32_t{7};
  EXPECT_EQ(machine.Document(), "none");
}

TEST(QBCompanies, IsNothingWithoutARegistry) {
  QBDataExchange component{OutsideWorld{}};
  EXPECT_FALSE(component.QBCompanies());
}

TEST(QBCompanies, IsNothingWhenTheFolderIsMissing) {
  Machine machine;
  machine.Program("C:\\Gone\\qbw32.exe");
  EXPECT_EQ(machine.Document(), "none");
  EXPECT_TRUE(machine.observer->Reported(NoticeKind::OperationEnded, 76));
}

TEST(QBCompanies, PrefersTheGivenFolderAndItsSeparator) {
  Machine machine;
  machine.Program("C:\\QB\\qbw32.exe");
  machine.files->folders["/srv/companies/"] = {"a.qbw"};
  for (const char* folder : {"/srv/companies", "/srv/companies/", "/srv/companies//"}) {
    machine.givenFolder = folder;
    EXPECT_EQ(machine.Document(),
              "<qbcompanies>" + Record("a.qbw", "/srv/companies/a.qbw") + "</qbcompanies>");
  }
  EXPECT_TRUE(machine.registry->rights.empty());
}

TEST(QBCompanies, ListsTheRootOfTheFileSystem) {
  Machine machine;
  machine.givenFolder = "/";
  machine.files->folders["/"] = {"a.qbw"};
  EXPECT_EQ(machine.Document(), "<qbcompanies>" + Record("a.qbw", "/a.qbw") + "</qbcompanies>");
}

TEST(QBCompanies, KeepsMarkupCharacters) {
  Machine machine;
  machine.givenFolder = "/srv/R&D";
  machine.files->folders["/srv/R&D/"] = {"<Smith & Sons>.qbw", "]].qbw"};
  EXPECT_EQ(NamesIn(machine.Companies()), (std::vector<std::string>{"<Smith & Sons>.qbw", "]].qbw"}));
}

struct BreakingCase {
  const char* name;
  const char* reason;
};

class NameThatBreaksTheList : public testing::TestWithParam<BreakingCase> {};

TEST_P(NameThatBreaksTheList, LeavesNoListAndIsReported) {
  Machine machine;
  machine.givenFolder = "/srv";
  const std::string name = GetParam().name;
  machine.files->folders["/srv/"] = {"a.qbw", name, "z.qbw"};
  EXPECT_EQ(machine.Document(), "none");
  ASSERT_EQ(machine.observer->notices.size(), 1U);
  const Notice& notice = machine.observer->notices.front();
  EXPECT_EQ(notice.kind, NoticeKind::CompanyFileUnlisted);
  EXPECT_EQ(notice.place.operation, Operation::QBCompanies);
  EXPECT_EQ(notice.file, "/srv/" + name);
  EXPECT_EQ(notice.description.find(GetParam().reason), 0U) << notice.description;
}

constexpr const char* noText = "its path contains bytes that are not text: ";
constexpr const char* endOfText = "its path contains \"]]>\"";

INSTANTIATE_TEST_SUITE_P(Names, NameThatBreaksTheList,
                         testing::Values(BreakingCase{"b]]>.qbw", endOfText},
                                         // In a document it would end the text of the element.
                                         BreakingCase{"b]]><![CDATA[c.qbw", endOfText},
                                         BreakingCase{"caf\xE9.qbw", noText},
                                         BreakingCase{"\xC3.qbw", noText},
                                         BreakingCase{"\xED\xA0\x80.qbw", noText},
                                         BreakingCase{"bell\x07.qbw", noText}));

TEST(QBCompanies, ReportsEveryNameThatBreaksTheList) {
  Machine machine;
  machine.givenFolder = "/srv";
  machine.files->folders["/srv/"] = {"c]]>.qbw", "a.qbw", "b]]>.qbw"};
  EXPECT_EQ(machine.Document(), "none");
  ASSERT_EQ(machine.observer->notices.size(), 2U);
  EXPECT_EQ(machine.observer->notices[0].file, "/srv/b]]>.qbw");
  EXPECT_EQ(machine.observer->notices[1].file, "/srv/c]]>.qbw");
}

TEST(QBCompanies, IgnoresSuchNamesOfOtherFiles) {
  Machine machine;
  machine.givenFolder = "/srv";
  machine.files->folders["/srv/"] = {"b]]>.txt", "\xE9", "a.qbw"};
  EXPECT_EQ(NamesIn(machine.Companies()), std::vector<std::string>{"a.qbw"});
}

// A folder on disk, listed through the system's file access.
class RealFolder : public testing::Test {
 protected:
  RealFolder() {
    std::string name = (fs::temp_directory_path() / "krnqb-companies-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder = name;
  }
  ~RealFolder() override {
    std::error_code ignored;
    fs::permissions(folder, fs::perms::owner_all, ignored);
    fs::remove_all(folder, ignored);
  }

  void Touch(const std::string& name) const { std::ofstream(folder / name).put('x'); }
  XmlElement Companies(const fs::path& from) const {
    OutsideWorld world;
    world.quickBooksFolder = from.string();
    return QBDataExchange(world).QBCompanies();
  }

  fs::path folder;
};

TEST_F(RealFolder, ListsFilesButNotFolders) {
  Touch("B.QBW");
  Touch("a.qbw");
  Touch("notes.txt");
  fs::create_directory(folder / "folder.qbw");
  fs::create_directory(folder / "more");
  Touch("more/hidden.qbw");
  fs::create_symlink(folder / "a.qbw", folder / "link.qbw");
  fs::create_symlink(folder / "gone", folder / "broken.qbw");
  const XmlElement companies = Companies(folder);
  ASSERT_TRUE(companies);
  EXPECT_EQ(NamesIn(companies), (std::vector<std::string>{"a.qbw", "B.QBW", "link.qbw"}));
  EXPECT_EQ(companies.FirstChild().Child("fullpath").Text(), (folder / "a.qbw").string());
}

TEST_F(RealFolder, ContainsFilesButIsNone) {
  Touch("a.qbw");
  EXPECT_TRUE(SystemFiles()->FileExists((folder / "a.qbw").string()));
  EXPECT_FALSE(SystemFiles()->FileExists((folder / "b.qbw").string()));
  EXPECT_FALSE(SystemFiles()->FileExists(folder.string()));
}

TEST_F(RealFolder, IsNothingWhenMissingOrNotAFolder) {
  Touch("a.qbw");
  EXPECT_FALSE(Companies(folder / "missing"));
  EXPECT_FALSE(Companies(folder / "a.qbw"));
}

TEST_F(RealFolder, IsNothingWhenItCannotBeRead) {
  Touch("a.qbw");
  fs::permissions(folder, fs::perms::none);
  if (::access(folder.c_str(), R_OK) == 0) GTEST_SKIP() << "this user may read everything";
  EXPECT_FALSE(Companies(folder));
}

TEST_F(RealFolder, IsNothingForANameThatIsNotUtf8) {
  Touch("caf\xE9.qbw");
  EXPECT_FALSE(Companies(folder));
}

}  // namespace
}  // namespace krnqb
