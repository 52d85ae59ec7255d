#include "plan_file/file.h"

#include <gtest/gtest.h>

#include "plan_file/fixture.h"

namespace krnqb::plan_file {
namespace {

namespace fs = std::filesystem;

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

std::string DescriptionOf(const std::optional<Error>& error) {
  return error ? error->Description() : std::string("no error");
}

TEST(PlanFile, HasProductStartAndTablesInOrder) {
  const TemporaryFolder folder;
  WriteText(folder / "garden.kpf", SmallPlanText());
  const auto plan = PlanFile::Open(folder / "garden.kpf");
  EXPECT_EQ(plan->Product(), QBKRN_ALD);
  EXPECT_EQ(plan->Start(), (YearMonth{2003, 4}));
  EXPECT_EQ(plan->TableIds(),
            (std::vector<std::string>{std::string(expenseTable), std::string(actualExpenseTable)}));
  EXPECT_EQ(plan->Path(), folder / "garden.kpf");
  EXPECT_EQ(plan->Table(expenseTable).Child("notes").Text(), "keep me");
  EXPECT_FALSE(plan->Changed());
}

TEST(PlanFile, NeedsNeitherProductNorStart) {
  const TemporaryFolder folder;
  WriteText(folder / "a.kpf", "<plan><tables/></plan>");
  const auto plan = PlanFile::Open(folder / "a.kpf");
  EXPECT_EQ(plan->Product(), std::nullopt);
  EXPECT_EQ(plan->Start(), std::nullopt);
  EXPECT_TRUE(plan->TableIds().empty());
}

TEST(PlanFile, IsReadInItsDeclaredEncoding) {
  const TemporaryFolder folder;
  WriteText(folder / "a.kpf",
            "<?xml version='1.0' encoding='windows-1252'?><plan><tables><tableitem id='1'>Caf\xE9</tableitem>"
            "</tables></plan>");
  const auto plan = PlanFile::Open(folder / "a.kpf");
  EXPECT_EQ(plan->Table("1").Text(), "Café");
}

struct BadPlan {
  const char* name;
  std::string text;
  std::string fault;
};

class UnreadablePlan : public testing::TestWithParam<BadPlan> {};

TEST_P(UnreadablePlan, IsRefusedNamingFileLineAndFault) {
  const TemporaryFolder folder;
  const fs::path file = folder / "bad.kpf";
  WriteText(file, GetParam().text);
  const std::string description = DescriptionOf(ErrorOf([&] { PlanFile::Open(file); }));
  EXPECT_EQ(description.find("cannot open the plan " + file.string() + ": " + GetParam().fault), 0U)
      << description;
}

INSTANTIATE_TEST_SUITE_P(
    PlanFile, UnreadablePlan,
    testing::Values(
        BadPlan{"Empty", "", "it is empty; check the path, or restore the plan from its .bak file"},
        BadPlan{"Text", "\nDear reader,", "it is not an XML document; check that the path is that of a plan"},
        BadPlan{"Blank", " \n", "it is not an XML document; check that the path is that of a plan"},
        BadPlan{"Binary", "SQLite format 3", "it is not an XML document; check"},
        BadPlan{"TextWithAMark", "\xEF\xBB\xBFplan", "it is not an XML document; check"},
        BadPlan{"BrokenWithAMark", "\xEF\xBB\xBF <plan>", "line 1: not well-formed XML ("},
        BadPlan{"BrokenUtf16", "\xFF\xFEp", "line 1: not well-formed XML ("},
        BadPlan{"Truncated", SmallPlanText().substr(0, SmallPlanText().find("<notes>")),
                "line 8: not well-formed XML ("},
        BadPlan{"DeclaringEntities", "<!DOCTYPE plan [<!ENTITY a 'b'>]>\n<plan><tables/></plan>",
                "line 1: not well-formed XML (the document declares entities)"},
        BadPlan{"AnotherDocument", "\n<QBXML/>",
                "line 2: the root element is \"QBXML\", not \"plan\"; check that"},
        BadPlan{"WithoutTables", "<plan/>", "line 1: the plan has no \"tables\""},
        BadPlan{"WithTwoTablesElements", "<plan><tables/>\n<tables/></plan>",
                "line 2: the plan has two \"tables\""},
        BadPlan{"WithATableWithoutId", "<plan><tables>\n<tableitem/></tables></plan>",
                "line 2: a table has no id"},
        BadPlan{"WithDuplicateTables",
                "<plan><tables><tableitem id='1'/>\n\n<tableitem id='2'/><tableitem id='1'/></tables></plan>",
                "line 3: the table 1 occurs twice"},
        BadPlan{"OfAnUnknownProduct", Replaced(SmallPlanText(), "\"ald\"", "\"xyz\""),
                "line 3: unknown product \"xyz\"; write ald, bri or cor"},
        BadPlan{"OfAnInvalidStart", Replaced(SmallPlanText(), "'2003-04'", "'2003-14'"),
                "line 3: the start \"2003-14\" is not a month; write it as YYYY-MM"}),
    [](const testing::TestParamInfo<BadPlan>& test) { return std::string(test.param.name); });

TEST(PlanFile, IgnoresElementsBesideItsTables) {
  const TemporaryFolder folder;
  WriteText(folder / "a.kpf", "<plan><tables><notes id='9'/><notes/><tableitem id='1'/></tables></plan>");
  EXPECT_EQ(PlanFile::Open(folder / "a.kpf")->TableIds(), std::vector<std::string>{"1"});
}

TEST(PlanFile, NamesALineBeyond65535) {
  const TemporaryFolder folder;
  WriteText(folder / "long.kpf", "<plan>" + std::string(70000, '\n') + "<tables></plan>");
  const std::string description = DescriptionOf(ErrorOf([&] { PlanFile::Open(folder / "long.kpf"); }));
  EXPECT_NE(description.find("line 70001:"), std::string::npos) << description;
}

TEST(PlanFile, MustExist) {
  const TemporaryFolder folder;
  const fs::path file = folder / "none.kpf";
  EXPECT_EQ(DescriptionOf(ErrorOf([&] { PlanFile::Open(file); })),
            "cannot open the plan " + file.string() + ": No such file or directory; check the path");
}

TEST(PlanFile, MustBeARegularFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(DescriptionOf(ErrorOf([&] { PlanFile::Open(folder.Path()); })),
            "cannot open the plan " + folder.Path().string() +
                ": Is a directory; give the path of a file, not of a folder");
  EXPECT_TRUE(ErrorOf([] { PlanFile::Open("/dev/null"); }));
}

TEST(PlanFile, OpensAnotherPlanInPlace) {
  const TemporaryFolder folder;
  WriteText(folder / "a.kpf", SmallPlanText());
  WriteText(folder / "b.kpf", "<plan product='cor'><tables><tableitem id='1'/></tables></plan>");
  const auto plan = PlanFile::Open(folder / "a.kpf");
  MarkVersion(*plan, 1);
  EXPECT_TRUE(plan->OpenPlan((folder / "b.kpf").string()));
  EXPECT_EQ(plan->Product(), QBKRN_COR);
  EXPECT_EQ(plan->Path(), folder / "b.kpf");
  EXPECT_EQ(plan->Data()->tables("1")->Serialize(), "<tableitem id=\"1\"/>");
  EXPECT_FALSE(plan->Changed());
  EXPECT_EQ(ReadText(folder / "a.kpf"), SmallPlanText());
}

TEST(PlanFile, StaysOpenWhenAnotherPlanCannotBeOpened) {
  const TemporaryFolder folder;
  WriteText(folder / "a.kpf", SmallPlanText());
  WriteText(folder / "b.kpf", "<plan>");
  const auto plan = PlanFile::Open(folder / "a.kpf");
  const auto opened = ErrorOf([&] { PlanFile::Open(folder / "b.kpf"); });
  const auto openedInPlace = ErrorOf([&] { plan->OpenPlan((folder / "b.kpf").string()); });
  EXPECT_EQ(DescriptionOf(openedInPlace), DescriptionOf(opened));
  EXPECT_TRUE(openedInPlace);
  EXPECT_EQ(plan->Path(), folder / "a.kpf");
  EXPECT_EQ(plan->Product(), QBKRN_ALD);
}

}  // namespace
}  // namespace krnqb::plan_file
